#pragma once

#include <array>
#include <string_view>

namespace sonalyx {

// One channel identity of the shared vocabulary.
struct ChannelName {
    std::string_view shortName;     // in [CHANNEL] lists and data header rows; empty for 12..14
    std::string_view longName;      // in legends and on screen
    std::string_view abbreviation;  // in the parameter rows; empty for 12..14
    std::string_view queryCode;     // reverb query code of the receiver; empty for 12..14
};

inline constexpr int kChannelIdCount = 16;

enum ChannelId : int {
    kLeft = 0,
    kRight = 1,
    kCenter = 2,
    kSpeakerBLeft = 3,
    kSpeakerBRight = 4,
    kSurroundLeftA = 5,
    kSurroundRightA = 6,
    kSurroundLeftB = 7,
    kSurroundRightB = 8,
    kSurrBackLeft = 9,
    kSurrBackRight = 10,
    kSurrBack = 11,
    kSubWoofer1 = 12,
    kSubWoofer2 = 13,
    kSubWoofer = 14,
    kTopSurround = 15,
};

const std::array<ChannelName, kChannelIdCount>& channelNames();
const ChannelName& channelName(int id);

// Identity of a short name ("SL A"), or -1.
int channelIdByShortName(std::string_view shortName);
// Identity of a short name, else of a parameter abbreviation ("EXSL"), or -1.
int channelIdByAnyName(std::string_view name);

}  // namespace sonalyx
