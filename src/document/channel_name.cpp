#include "channel_name.h"

namespace sonalyx {

namespace {
// Identity 11 carries "SBL" as its abbreviation like identity 9: a single surround-back
// speaker is reported under the left one's abbreviation.
constexpr std::array<ChannelName, kChannelIdCount> kNames = {{
    {"L", "Left", "FL", "FL"},
    {"R", "Right", "FR", "FR"},
    {"C", "Center", "CT", "CT"},
    {"SPBL", "Speaker-B L", "SPBL", "SPBL"},
    {"SPBR", "Speaker-B R", "SPBR", "SPBR"},
    {"SL A", "Surround L A", "SL", "SL"},
    {"SR A", "Surround R A", "SR", "SR"},
    {"SL B", "Surround L B", "EXSL", "EXSL"},
    {"SR B", "Surround R B", "EXSR", "EXSR"},
    {"SBL", "Surr Back L", "SBL", "SBL"},
    {"SBR", "Surr Back R", "SBR", "SBR"},
    {"SB", "Surr Back", "SBL", "SBL"},
    {"", "Sub Woofer 1", "", ""},
    {"", "Sub Woofer 2", "", ""},
    {"", "Sub Woofer", "", ""},
    {"TS", "Top Surround", "TS", "TS"},
}};
}  // namespace

const std::array<ChannelName, kChannelIdCount>& channelNames() {
    return kNames;
}

const ChannelName& channelName(int id) {
    return kNames.at(static_cast<size_t>(id));
}

int channelIdByShortName(std::string_view shortName) {
    if (shortName.empty())
        return -1;
    for (int id = 0; id < kChannelIdCount; ++id) {
        if (kNames[id].shortName == shortName)
            return id;
    }
    return -1;
}

int channelIdByAnyName(std::string_view name) {
    int id = channelIdByShortName(name);
    if (id >= 0 || name.empty())
        return id;
    for (int i = 0; i < kChannelIdCount; ++i) {
        if (kNames[i].abbreviation == name)
            return i;
    }
    return -1;
}

}  // namespace sonalyx
