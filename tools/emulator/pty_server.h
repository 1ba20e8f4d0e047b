#pragma once

#include <atomic>
#include <chrono>
#include <cstdint>
#include <deque>
#include <string>

#include "emulator/receiver_emulator.h"

namespace sonalyx::emulator {

// A pseudo-terminal whose far end behaves like the receiver. The server keeps a descriptor of
// the port side open itself, so that the computer can close and reopen the port at will.
class PtyServer {
  public:
    PtyServer() = default;
    ~PtyServer();
    PtyServer(const PtyServer&) = delete;
    PtyServer& operator=(const PtyServer&) = delete;

    // Creates the pseudo-terminal; false with a message in error.
    bool open(std::string& error);
    const std::string& portPath() const { return portPath_; }
    // Points linkPath at the port (replacing an earlier symlink there).
    bool makeLink(const std::string& linkPath, std::string& error);
    // Serves until stop is set or the emulator closes the line; returns at once then.
    void serve(ReceiverEmulator& emulator, bool pace, bool verbose, const std::atomic<bool>& stop);
    void close();

  private:
    using Clock = std::chrono::steady_clock;

    bool readCommands(ReceiverEmulator& emulator, bool verbose);
    void queueReply(const ReceiverEmulator::Output& output);
    void writePending(bool pace);
    std::size_t bytesAllowed(bool pace) const;

    int master_ = -1;
    int portSide_ = -1;
    std::string portPath_;
    std::string linkPath_;
    std::deque<std::uint8_t> outgoing_;
    bool closeAfterWrite_ = false;
    Clock::time_point paceStart_{};
    std::size_t pacedSent_ = 0;
};

}  // namespace sonalyx::emulator
