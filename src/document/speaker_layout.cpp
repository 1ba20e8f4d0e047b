#include "speaker_layout.h"

#include <algorithm>

#include "channel_name.h"

namespace sonalyx {

namespace {
struct GroupName {
    std::string_view name;
    std::string_view abbreviation;
};
constexpr std::array<GroupName, kGroupIdCount> kGroupNames = {{
    {"Front", "F"},
    {"Center", "C"},
    {"Speaker-B", "SPB"},
    {"Surround A", "S A"},
    {"Surround B", "S B"},
    {"Surr Back", "SB"},
    {"Top Surr", "TS"},
}};

const std::vector<SpeakerLayout>& layouts() {
    static const std::vector<SpeakerLayout> all = {
        {5,
         {kLeft, kCenter, kRight, kSurroundRightA, kSurroundLeftA},
         {{kGroupFront, 0, 2}, {kGroupCenter, 1, 1}, {kGroupSurroundA, 3, 4}}},
        {6,
         {kLeft, kCenter, kRight, kSurroundRightA, kSurrBack, kSurroundLeftA},
         {{kGroupFront, 0, 2},
          {kGroupCenter, 1, 1},
          {kGroupSurroundA, 3, 5},
          {kGroupSurrBack, 4, 4}}},
        {7,
         {kLeft, kCenter, kRight, kSurroundRightA, kSurrBackRight, kSurrBackLeft, kSurroundLeftA},
         {{kGroupFront, 0, 2},
          {kGroupCenter, 1, 1},
          {kGroupSurroundA, 3, 6},
          {kGroupSurrBack, 4, 5}}},
        {9,
         {kLeft, kCenter, kRight, kSurroundRightA, kSurrBackRight, kSurrBackLeft, kSurroundLeftA,
          kSpeakerBLeft, kSpeakerBRight},
         {{kGroupFront, 0, 2},
          {kGroupCenter, 1, 1},
          {kGroupSurroundA, 3, 6},
          {kGroupSurrBack, 4, 5},
          {kGroupSpeakerB, 7, 8}}},
        {10,
         {kLeft, kCenter, kRight, kSurroundRightA, kSurrBackRight, kSurrBackLeft, kSurroundLeftA,
          kSurroundLeftB, kSurroundRightB, kTopSurround},
         {{kGroupFront, 0, 2},
          {kGroupCenter, 1, 1},
          {kGroupSurroundA, 3, 6},
          {kGroupSurrBack, 4, 5},
          {kGroupSurroundB, 7, 8},
          {kGroupTopSurr, 9, 9}}},
        {11,
         {kLeft, kCenter, kRight, kSurroundRightA, kSurrBackRight, kSurrBackLeft, kSurroundLeftA,
          kSurroundLeftB, kSurroundRightB},
         {{kGroupFront, 0, 2},
          {kGroupCenter, 1, 1},
          {kGroupSurroundA, 3, 6},
          {kGroupSurrBack, 4, 5},
          {kGroupSurroundB, 7, 8}}},
    };
    return all;
}
}  // namespace

std::string_view groupName(int groupId) {
    return kGroupNames.at(static_cast<size_t>(groupId)).name;
}

std::string_view groupAbbreviation(int groupId) {
    return kGroupNames.at(static_cast<size_t>(groupId)).abbreviation;
}

int groupIdByName(std::string_view name) {
    for (int g = 0; g < kGroupIdCount; ++g) {
        if (kGroupNames[g].name == name)
            return g;
    }
    return -1;
}

std::string SpeakerLayout::channelLine() const {
    std::string line;
    for (size_t i = 0; i < channelIds.size(); ++i) {
        if (i)
            line += ',';
        line += channelName(channelIds[i]).shortName;
    }
    return line;
}

const SpeakerLayout* layoutByNumber(int number) {
    for (const auto& layout : layouts()) {
        if (layout.number == number)
            return &layout;
    }
    return nullptr;
}

const SpeakerLayout& defaultLayout() {
    return *layoutByNumber(9);
}

const SpeakerLayout& groupTableFor(int layoutNumber) {
    const SpeakerLayout* layout = layoutByNumber(layoutNumber);
    return layout ? *layout : *layoutByNumber(10);
}

int groupCountForChannelCount(int channelCount) {
    switch (channelCount) {
        case 5:
            return 3;
        case 6:
            return 4;
        case 7:
            return 4;
        case 9:
            return 5;
        case 10:
            return 6;
        default:
            return 6;
    }
}

int layoutNumberFor(const std::vector<std::string>& shortNames) {
    const int count = static_cast<int>(shortNames.size());
    if (count != 9)
        return count;
    const bool hasB = std::any_of(shortNames.begin(), shortNames.end(), [](const std::string& n) {
        return n == "SL B" || n == "SR B" || n == "EXSL" || n == "EXSR";
    });
    return hasB ? 11 : 9;
}

}  // namespace sonalyx
