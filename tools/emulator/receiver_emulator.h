#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "emulator/receiver_profile.h"

namespace sonalyx::emulator {

// The receiver's side of the serial dialogue, without any device: bytes from the computer go
// in, the receiver's reply bytes come out. Commands end with CR; each gets one reply.
class ReceiverEmulator {
  public:
    struct Output {
        std::vector<std::uint8_t> bytes;
        bool closeLine = false;  // the receiver goes away after these bytes
    };

    explicit ReceiverEmulator(ReceiverProfile profile);

    Output feed(const std::vector<std::uint8_t>& input);
    // Every command received so far, without '?' and CR.
    const std::vector<std::string>& commands() const { return commands_; }

  private:
    Output answer(const std::string& command);
    std::vector<std::uint8_t> replyBytes(const std::string& command);
    bool refuses(const std::string& command);
    std::vector<std::uint8_t> reverbReply(const std::string& command);
    std::vector<std::uint8_t> infoReply() const;
    std::vector<std::uint8_t> groupDelayReply(const std::string& code) const;
    std::vector<std::uint8_t> parameterReply(const std::string& command) const;
    std::vector<std::uint8_t> singleReply(const std::string& command, Reply reply) const;
    void appendFrame(std::vector<std::uint8_t>& bytes, const Reply& reply) const;
    std::vector<std::uint8_t> listReply(const std::vector<Reply>& items) const;
    std::vector<std::uint8_t> eqListReply() const;
    int configCode() const;
    int bandSelector() const;

    ReceiverProfile profile_;
    std::string pending_;
    std::vector<std::string> commands_;
    bool probeSpoiled_ = false;
    bool stalled_ = false;
    bool lineClosed_ = false;
};

}  // namespace sonalyx::emulator
