#pragma once

#include <map>
#include <set>
#include <string>

#include "emulator/parameter_replies.h"

namespace sonalyx::emulator {

// What kind of receiver the emulator plays, and which faults it shows. Commands are named
// without the leading '?' and the closing CR ("RVFL", "EQALL", "FBS").
struct ReceiverProfile {
    enum class BadProbe { Never, Once, Always };

    ParameterProfile parameters;  // configuration code, band selector, parameter layouts
    bool extended = true;         // false: an old receiver (no "?EI", configuration 9)
    bool afterData = true;        // false: every "?RA..." is refused
    int infoLength = 4;           // "?EI" body: 2 or 4 bytes
    int infoA = 2;                // reverb type (EQ ON, ALL CH ADJUST)
    int infoB = 0;
    bool silent = false;                     // answers nothing at all
    std::map<std::string, int> refusals;     // E04 to these commands, n times (-1: always)
    BadProbe badProbe = BadProbe::Never;     // a probe body of 500 bytes
    std::set<std::string> oversizeCommands;  // bodies of 2049 bytes
    std::set<std::string> invalidCommands;   // replies with attribute 0xF0 (not measured)
    bool badInfoLength = false;              // "?EI" body of 3 bytes
    std::string cutOffCommand;               // its reply stops half-way and the line is closed
    std::string stallCommand;                // its first reply stops half-way, the line stays
};

}  // namespace sonalyx::emulator
