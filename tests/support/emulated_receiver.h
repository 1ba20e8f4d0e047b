#pragma once

#include <gtest/gtest.h>

#include <atomic>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "emulator/emulator_options.h"
#include "emulator/pty_server.h"
#include "emulator/receiver_emulator.h"

namespace sonalyx::test {

// The receiver emulator on a pseudo-terminal, served from its own thread for as long as the
// object lives. Give it the emulator program's arguments ("--config", "5", "--no-after") or a
// profile; portPath() is the device a serial link opens (empty when the terminal failed).
class EmulatedReceiver {
  public:
    explicit EmulatedReceiver(const std::vector<std::string>& arguments) {
        std::string error;
        const auto options = emulator::EmulatorOptions::parse(arguments, error);
        EXPECT_TRUE(options.has_value()) << error;
        serve(options ? options->profile : emulator::ReceiverProfile{});
    }
    explicit EmulatedReceiver(const emulator::ReceiverProfile& profile) { serve(profile); }
    ~EmulatedReceiver() {
        stop_.store(true);
        if (thread_.joinable())
            thread_.join();
        server_.close();
    }
    EmulatedReceiver(const EmulatedReceiver&) = delete;
    EmulatedReceiver& operator=(const EmulatedReceiver&) = delete;

    std::string portPath() const { return serving_ ? server_.portPath() : std::string(); }

  private:
    void serve(const emulator::ReceiverProfile& profile) {
        std::string error;
        serving_ = server_.open(error);
        EXPECT_TRUE(serving_) << error;
        if (!serving_)
            return;
        emulator_.emplace(profile);
        thread_ = std::thread([this] { server_.serve(*emulator_, false, false, stop_); });
    }

    emulator::PtyServer server_;
    std::optional<emulator::ReceiverEmulator> emulator_;
    std::atomic<bool> stop_{false};
    std::thread thread_;
    bool serving_ = false;
};

}  // namespace sonalyx::test
