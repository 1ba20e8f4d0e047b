#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <vector>

#include "retrieval/serial_link.h"

namespace sonalyx::test {

// A serial line without hardware. Each command's reply comes from the responder and is "in
// flight" until deliver() moves it (or a part of it) into the input queue, as a tick's worth
// of time would. Opens, sends and reads can be made to fail.
class FakeSerialLink : public SerialLink {
  public:
    using Responder = std::function<std::vector<std::uint8_t>(const std::string& command)>;

    void setResponder(Responder responder) { responder_ = std::move(responder); }

    bool open(const std::string& portName, bool monitor) override;
    bool send(const std::vector<std::uint8_t>& bytes) override;
    bool receive(std::size_t count, std::vector<std::uint8_t>& out) override;
    void close() override;

    // Moves in-flight bytes into the input queue: all, or at most bytesPerDelivery.
    void deliver();

    // Commands as sent, without their carriage return.
    const std::vector<std::string>& commands() const { return commands_; }
    int openCount() const { return openCount_; }
    int closeCount() const { return closeCount_; }
    bool isOpen() const { return open_; }
    bool monitorRequested() const { return monitorRequested_; }
    const std::string& portName() const { return portName_; }
    bool everSentWhileClosed() const { return sentWhileClosed_; }

    std::size_t bytesPerDelivery = 0;  // 0: everything at once
    int failOpenAt = -1;               // index of the open call that fails
    int failSendAt = -1;               // index of the send that fails
    bool failReceive = false;

  private:
    Responder responder_;
    std::deque<std::uint8_t> inFlight_;
    std::deque<std::uint8_t> waiting_;
    std::vector<std::string> commands_;
    std::string portName_;
    int openCount_ = 0;
    int closeCount_ = 0;
    int sendCount_ = 0;
    bool open_ = false;
    bool monitorRequested_ = false;
    bool sentWhileClosed_ = false;
};

}  // namespace sonalyx::test
