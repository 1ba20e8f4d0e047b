#pragma once

#include <optional>
#include <string>
#include <vector>

#include "emulator/receiver_profile.h"

namespace sonalyx::emulator {

// The emulator's command line.
struct EmulatorOptions {
    ReceiverProfile profile;
    std::string linkPath;  // a stable symlink to the pseudo-terminal
    bool pace = false;     // send at the speed of a 9600-baud line
    bool verbose = false;  // log every command on stderr
    bool help = false;

    // Reads the arguments after the program name; nullopt with a message in error when an
    // argument is wrong.
    static std::optional<EmulatorOptions> parse(const std::vector<std::string>& arguments,
                                                std::string& error);
    static std::string usage();
};

}  // namespace sonalyx::emulator
