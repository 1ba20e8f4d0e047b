#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "emulator/receiver_emulator.h"

namespace sonalyx::test {

// The receiver side of the protocol for the engine tests: the receiver emulator of the chosen
// configuration, built on the first command, with per-command faults on top.
struct FakeReceiver {
    int configCode = 5;
    int bandSelector = 0;
    int reverbType = 0;
    bool extended = true;
    bool afterData = true;
    int memoryCount = 2;

    // Commands (without "\r") answered with E04 this many more times; -1 for always.
    std::map<std::string, int> refusals;
    // Commands never answered.
    std::set<std::string> silent;
    // Raw replies used instead of the normal one, once each, in order.
    std::map<std::string, std::deque<std::vector<std::uint8_t>>> scripted;

    std::vector<std::uint8_t> reply(const std::string& command);

    // The reverb body the receiver sends for a channel code; the after variant differs.
    std::vector<std::uint8_t> reverbBody(const std::string& code, bool after) const;
    // Header + body, with the extended flag in bit 7 of byte 1 when the receiver has it.
    std::vector<std::uint8_t> frame(int attribute, const std::vector<std::uint8_t>& body) const;

  private:
    std::optional<emulator::ReceiverEmulator> emulator_;
};

// A header announcing `length` body bytes, and that many filler bytes.
std::vector<std::uint8_t> replyOfLength(int length, bool extended);

}  // namespace sonalyx::test
