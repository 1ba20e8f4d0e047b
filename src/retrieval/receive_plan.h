#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sonalyx {

// What is known about a run, from which the whole list of its commands follows. The list is
// rebuilt whenever one of these facts changes, and always from the first command, so that a
// run's position can be found in it by the commands already sent.
struct PlanFacts {
    bool reverb = true;
    bool groupDelay = true;
    bool parameters = true;
    bool extended = true;
    // The reverb query codes of the configuration, front left first.
    std::vector<std::string> channelCodes;
    int configCode = 0;
    // False once "?RAFL" has been refused for good: no other after-calibration query follows.
    bool afterData = true;
    // The group delay command whose refusal ended that phase; empty while it goes on.
    std::string groupDelayEndedAt;
    // The EQ list was refused: the parameters are asked channel by channel, for these codes.
    bool fallback = false;
    std::vector<std::string> fallbackEqCodes;
};

// Every command of the run in order, without the closing carriage return ("?RVFL", "?EI",
// ...). Repeats after an error reply are not in it.
std::vector<std::string> planCommands(const PlanFacts& facts);

// What a command fetches, for people: "Reverb, Left, measured", "Group delay",
// "Parameters: distances".
std::string describeCommand(std::string_view command);

// The part of the dialogue a command belongs to: "probe", "information", "reverb",
// "group delay", "parameters", "parameters by channel".
std::string_view stepOfCommand(std::string_view command);

}  // namespace sonalyx
