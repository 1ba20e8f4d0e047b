#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

namespace sonalyx {

// Channel groups (pairs), by group identity: name and abbreviation.
inline constexpr int kGroupIdCount = 7;
enum GroupId : int {
    kGroupFront = 0,
    kGroupCenter = 1,
    kGroupSpeakerB = 2,
    kGroupSurroundA = 3,
    kGroupSurroundB = 4,
    kGroupSurrBack = 5,
    kGroupTopSurr = 6,
};
std::string_view groupName(int groupId);
std::string_view groupAbbreviation(int groupId);
// Identity of a group name ("Surround A"), or -1.
int groupIdByName(std::string_view name);

// The fixed order in which group delay rows are written.
inline constexpr std::array<int, 6> kGroupDelayOrder = {
    kGroupFront, kGroupCenter, kGroupSurroundA, kGroupSurroundB, kGroupSurrBack, kGroupTopSurr};

struct ChannelGroup {
    int groupId;    // GroupId
    int firstPos;   // positions count from 0 in the [CHANNEL] order
    int secondPos;  // equal to firstPos for a single-speaker group
};

// A speaker layout: 5, 6, 7, 9, 10 or 11.
struct SpeakerLayout {
    int number;
    std::vector<int> channelIds;       // position order
    std::vector<ChannelGroup> groups;  // group order
    std::string channelLine() const;   // short names joined by ","
};

// The layout with that number, or nullptr.
const SpeakerLayout* layoutByNumber(int number);
// Layout 9: what a document without a [CHANNEL] line has.
const SpeakerLayout& defaultLayout();
// The group table a document uses: its own layout's, or layout 10's for a channel count that
// is not a defined layout (such a document has six groups).
const SpeakerLayout& groupTableFor(int layoutNumber);
// Group count from the channel count: 5 -> 3, 6 -> 4, 7 -> 4, 9 -> 5, 10 -> 6, others 6.
int groupCountForChannelCount(int channelCount);
// Layout number from a channel list: the count, or 11 for nine channels naming a B surround.
int layoutNumberFor(const std::vector<std::string>& shortNames);

}  // namespace sonalyx
