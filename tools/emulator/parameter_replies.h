#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Reply bodies of the parameter queries as a receiver sends them. The emulator frames and
// sends them; the layouts here are the ones the parameter conversion reads.
namespace sonalyx::emulator {

struct ParameterProfile {
    int configCode = 10;           // 5, 6, 7, 9, 10, 11
    int bandSelector = 0;          // 0: nine EQ bands, 1 or 2: six
    int speakerSettingLength = 9;  // SP body: 5, 6 or 9 bytes
    int subwooferMode = 0;         // SP attribute byte
    int distanceUnit = 0;          // 0 cm, 1 1/100 ft, 2 1/10 mm, 3 1/100 in
    bool distanceOneByte = false;  // 12-byte distance items instead of 16-bit values
    int levelItemLength = 10;      // LVALL item body length
    int memoryCount = 6;           // items per list reply
    int xCurveCode = 2;
    int crossoverCode = 1;
    int surrBackSize = -1;  // SP byte 3; -1: what the configuration has (5: 0, 6: 2, else 1)
    int subwooferCode = 1;  // SP byte 4
};

struct Reply {
    int attribute = 0;
    std::vector<std::uint8_t> body;
};

// One record of an "?EQALL" group: its prefix byte and its framed reply.
struct PrefixedReply {
    std::uint8_t prefix = 0;
    Reply reply;
};

Reply systemInfoReply(const ParameterProfile& profile);      // "?SI"
Reply speakerSettingReply(const ParameterProfile& profile);  // "?SP"
// "?EQALL": the groups in order, each with its records (the count byte is groups.size()).
std::vector<std::vector<PrefixedReply>> eqAllReply(const ParameterProfile& profile);
std::vector<Reply> distanceAllReply(const ParameterProfile& profile);      // "?DLALL"
std::vector<Reply> levelAllReply(const ParameterProfile& profile);         // "?LVALL"
std::vector<Reply> standingWaveAllReply(const ParameterProfile& profile);  // "?STALL"
// The single-channel fallback: "?DL", "?LV", "?EQ<code>" (code as in "FL", "CT", "EXSL").
Reply singleDistanceReply(const ParameterProfile& profile);
Reply singleLevelReply(const ParameterProfile& profile);
Reply singleEqReply(const ParameterProfile& profile, const std::string& channelCode);

}  // namespace sonalyx::emulator
