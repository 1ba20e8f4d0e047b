#include "parameter_replies.h"

#include <algorithm>
#include <array>
#include <cmath>

// The receiver's side of the parameter replies. Layouts (the parameter conversion reads them):
//   SI     crossover code, X-curve code.
//   SP     attribute = subwoofer mode; front, surround, center, surround back, subwoofer sizes;
//          a 6-byte body adds Speaker-B, a 9-byte body adds surround B (byte 6), an unused byte
//          and top surround (byte 8).
//   EQALL  per memory, one record per main channel in the configuration's order (nine for
//          configuration 11); prefix byte and nothing else = the memory number; the record's
//          attribute is the memory's curve (0 All Ch Adjust, 1 Front Ch Align, 2 Custom1,
//          3 Custom2); body: one signed half-decibel byte per band (nine, or five when the band
//          selector is 1 or 2) and the trim byte.
//   DLALL  per memory (attribute = memory number): signed multiplier, unit code, then one byte
//          per channel (12-byte item) or big-endian 16-bit values (32-byte item) at the
//          receiver's offsets; 0xFF / 0xFFFF where the receiver has no distance.
//   LVALL  per memory: one signed half-decibel byte per channel at the level index table's
//          offsets; 0xFF (not applicable) in the slots the configuration does not use.
//   STALL  per memory: nine filters of attenuation, frequency index and signed Q code, then the
//          trim byte (28 bytes).
//   DL, LV, EQ<code>: memory 1's item, or the record of that channel.
namespace sonalyx::emulator {

namespace {

// Channel ids of the shared vocabulary.
enum : int {
    kL = 0,
    kR = 1,
    kC = 2,
    kSpbl = 3,
    kSpbr = 4,
    kSla = 5,
    kSra = 6,
    kSlb = 7,
    kSrb = 8,
    kSbl = 9,
    kSbr = 10,
    kSb = 11,
    kSw1 = 12,
    kSw2 = 13,
    kSw = 14,
    kTs = 15,
};
constexpr int kChannelIds = 16;

constexpr std::array<int, kChannelIds> kOneByteDistanceOffsets = {2, 3, 6, 10, 11, 4, 5, 0,
                                                                  0, 7, 8, 7,  9,  0, 9, 0};
constexpr std::array<int, kChannelIds> kWordDistanceOffsets = {2,  4,  10, 0,  0,  6,  8,  22,
                                                               24, 12, 14, 12, 16, 30, 16, 28};
constexpr std::array<int, kChannelIds> kLevelIndexes = {0,  1, 4, 8, 9, 2,  3, 10,
                                                        11, 5, 6, 5, 7, 14, 7, 13};
constexpr std::size_t kWordDistanceItemLength = 32;
constexpr std::size_t kStandingWaveItemLength = 28;

std::vector<int> mainChannels(int configCode) {
    switch (configCode) {
        case 5:
            return {kL, kC, kR, kSra, kSla};
        case 6:
            return {kL, kC, kR, kSra, kSb, kSla};
        case 7:
            return {kL, kC, kR, kSra, kSbr, kSbl, kSla};
        case 10:
            return {kL, kC, kR, kSra, kSbr, kSbl, kSla, kSlb, kSrb, kTs};
        case 11:
            return {kL, kC, kR, kSra, kSbr, kSbl, kSla, kSlb, kSrb};
        default:
            return {kL, kC, kR, kSra, kSbr, kSbl, kSla, kSpbl, kSpbr};
    }
}

bool twoSubwoofers(const ParameterProfile& p) {
    return p.subwooferMode != 0 && (p.subwooferCode == 0 || p.subwooferCode == 2);
}

std::vector<int> channelsWithSubwoofers(const ParameterProfile& p) {
    std::vector<int> ids = mainChannels(p.configCode);
    if (twoSubwoofers(p)) {
        ids.push_back(kSw1);
        ids.push_back(kSw2);
    } else {
        ids.push_back(kSw);
    }
    return ids;
}

int surrBackSize(const ParameterProfile& p) {
    if (p.surrBackSize >= 0)
        return p.surrBackSize;
    return p.configCode == 5 ? 0 : (p.configCode == 6 ? 2 : 1);
}

std::uint8_t asByte(int value) {
    return static_cast<std::uint8_t>(value & 0xFF);
}

bool sixValueBands(const ParameterProfile& p) {
    return p.bandSelector == 1 || p.bandSelector == 2;
}

// ---- values -------------------------------------------------------------------------------

// A plausible room: every channel a little further away, each memory a few centimetres apart.
double distanceCentimetres(int slot, int memory) {
    return 210.0 + 23.0 * slot + 6.0 * memory;
}

struct DistanceCoding {
    int multiplier;
    double rawPerCentimetre;
};

DistanceCoding distanceCoding(int unit, bool oneByte) {
    switch (unit) {
        case 1:  // hundredths of a foot
            return oneByte ? DistanceCoding{5, 100.0 / 30.48 / 5}
                           : DistanceCoding{1, 100.0 / 30.48};
        case 2:  // tenths of a millimetre
            return oneByte ? DistanceCoding{100, 1.0} : DistanceCoding{1, 100.0};
        case 3:  // hundredths of an inch
            return oneByte ? DistanceCoding{100, 1.0 / 2.54} : DistanceCoding{1, 100.0 / 2.54};
        default:  // centimetres
            return oneByte ? DistanceCoding{2, 0.5} : DistanceCoding{1, 1.0};
    }
}

// Memory 1's left and right speakers carry the values whose text needs care: 350 and 349
// hundredths of an inch (with and without the half inch) and 1234 hundredths of a foot.
int distanceRaw(const ParameterProfile& p, int channelId, int slot, int memory) {
    if (!p.distanceOneByte && memory == 1 && p.distanceUnit == 3 && channelId == kL)
        return 350;
    if (!p.distanceOneByte && memory == 1 && p.distanceUnit == 3 && channelId == kR)
        return 349;
    if (!p.distanceOneByte && memory == 1 && p.distanceUnit == 1 && channelId == kL)
        return 1234;
    const DistanceCoding coding = distanceCoding(p.distanceUnit, p.distanceOneByte);
    const int raw =
        static_cast<int>(std::lround(distanceCentimetres(slot, memory) * coding.rawPerCentimetre));
    return std::min(raw, p.distanceOneByte ? 0xFE : 0xFFFE);
}

// Memory 1's left speaker sits at 0 dB, the case written with a leading blank. Whole decibels
// only: -0.5 dB would be the byte 0xFF, which means "not applicable".
int levelHalfSteps(int channelId, int slot, int memory) {
    if (memory == 1 && channelId == kL)
        return 0;
    return (slot * 5 + memory * 3) % 13 * 2 - 12;
}

int eqHalfSteps(int memory, int record, int band) {
    return (memory * 5 + record * 7 + band * 3) % 25 - 12;
}
int eqTrimHalfSteps(int memory, int record) {
    return (memory + record) % 7 - 3;
}
int eqCurve(int memory) {
    return (memory - 1) % 4;
}

int channelSlot(const ParameterProfile& p, int channelId) {
    const std::vector<int> ids = channelsWithSubwoofers(p);
    const auto it = std::find(ids.begin(), ids.end(), channelId);
    return it == ids.end() ? static_cast<int>(ids.size()) : static_cast<int>(it - ids.begin());
}

// ---- bodies --------------------------------------------------------------------------------

Reply distanceItem(const ParameterProfile& p, int memory) {
    const DistanceCoding coding = distanceCoding(p.distanceUnit, p.distanceOneByte);
    const std::size_t length = p.distanceOneByte ? 12 : kWordDistanceItemLength;
    Reply item{memory, std::vector<std::uint8_t>(length, 0xFF)};
    item.body[0] = asByte(coding.multiplier);
    item.body[1] = asByte(p.distanceUnit);
    for (int id : channelsWithSubwoofers(p)) {
        const auto offset = static_cast<std::size_t>(
            (p.distanceOneByte ? kOneByteDistanceOffsets : kWordDistanceOffsets)[id]);
        if (offset == 0)
            continue;
        const int raw = distanceRaw(p, id, channelSlot(p, id), memory);
        if (p.distanceOneByte) {
            item.body[offset] = asByte(raw);
        } else {
            item.body[offset] = asByte(raw >> 8);
            item.body[offset + 1] = asByte(raw);
        }
    }
    return item;
}

Reply levelItem(const ParameterProfile& p, int memory) {
    Reply item{memory, std::vector<std::uint8_t>(
                           static_cast<std::size_t>(std::max(p.levelItemLength, 0)), 0xFF)};
    for (int id : channelsWithSubwoofers(p)) {
        const auto index = static_cast<std::size_t>(kLevelIndexes[id]);
        if (index < item.body.size())
            item.body[index] = asByte(levelHalfSteps(id, channelSlot(p, id), memory));
    }
    return item;
}

Reply eqRecord(const ParameterProfile& p, int memory, int record) {
    const int bands = sixValueBands(p) ? 5 : 9;
    Reply reply{eqCurve(memory), {}};
    for (int b = 0; b < bands; ++b)
        reply.body.push_back(asByte(eqHalfSteps(memory, record, b)));
    reply.body.push_back(asByte(eqTrimHalfSteps(memory, record)));
    return reply;
}

Reply standingWaveItem(int memory) {
    Reply item{memory, std::vector<std::uint8_t>(kStandingWaveItemLength, 0)};
    for (int k = 0; k < 9; ++k) {
        const auto base = static_cast<std::size_t>(3 * k);
        item.body[base] = asByte(-((k * 3 + memory) % 24));
        item.body[base + 1] = asByte((k * 4 + memory * 3) % 33);
        item.body[base + 2] = asByte((k * 5 + memory) % 21 - 10);
    }
    item.body[27] = asByte(memory * 3 % 9 - 4);
    return item;
}

int eqRecordsPerMemory(const ParameterProfile& p) {
    return p.configCode == 11 ? 9 : static_cast<int>(mainChannels(p.configCode).size());
}

int channelIdForCode(const ParameterProfile& p, const std::string& code) {
    struct Code {
        const char* text;
        int id;
    };
    static constexpr std::array<Code, 12> kCodes = {{{"FL", kL},
                                                     {"FR", kR},
                                                     {"SL", kSla},
                                                     {"SR", kSra},
                                                     {"CT", kC},
                                                     {"SBL", kSbl},
                                                     {"SBR", kSbr},
                                                     {"SPBL", kSpbl},
                                                     {"SPBR", kSpbr},
                                                     {"EXSL", kSlb},
                                                     {"EXSR", kSrb},
                                                     {"TS", kTs}}};
    for (const Code& c : kCodes) {
        if (code == c.text)
            return c.id == kSbl && p.configCode == 6 ? kSb : c.id;
    }
    return -1;
}

}  // namespace

Reply systemInfoReply(const ParameterProfile& profile) {
    return {0, {asByte(profile.crossoverCode), asByte(profile.xCurveCode)}};
}

Reply speakerSettingReply(const ParameterProfile& profile) {
    const int length = profile.speakerSettingLength;
    Reply reply{profile.subwooferMode,
                {1, 2, 2, asByte(surrBackSize(profile)), asByte(profile.subwooferCode)}};
    if (length == 6)
        reply.body.push_back(profile.configCode == 9 ? 2 : 0);
    if (length >= 9) {
        const bool surroundB = profile.configCode == 10 || profile.configCode == 11;
        reply.body.push_back(0);
        reply.body.push_back(surroundB ? 2 : 0);
        reply.body.push_back(0);
        reply.body.push_back(profile.configCode == 10 ? 1 : 0);
    }
    reply.body.resize(static_cast<std::size_t>(std::max(length, 0)), 0);
    return reply;
}

std::vector<std::vector<PrefixedReply>> eqAllReply(const ParameterProfile& profile) {
    std::vector<std::vector<PrefixedReply>> groups;
    for (int m = 1; m <= profile.memoryCount; ++m) {
        std::vector<PrefixedReply> records;
        for (int r = 0; r < eqRecordsPerMemory(profile); ++r)
            records.push_back({asByte(m), eqRecord(profile, m, r)});
        groups.push_back(std::move(records));
    }
    return groups;
}

std::vector<Reply> distanceAllReply(const ParameterProfile& profile) {
    std::vector<Reply> items;
    for (int m = 1; m <= profile.memoryCount; ++m)
        items.push_back(distanceItem(profile, m));
    return items;
}

std::vector<Reply> levelAllReply(const ParameterProfile& profile) {
    std::vector<Reply> items;
    for (int m = 1; m <= profile.memoryCount; ++m)
        items.push_back(levelItem(profile, m));
    return items;
}

std::vector<Reply> standingWaveAllReply(const ParameterProfile& profile) {
    std::vector<Reply> items;
    for (int m = 1; m <= profile.memoryCount; ++m)
        items.push_back(standingWaveItem(m));
    return items;
}

Reply singleDistanceReply(const ParameterProfile& profile) {
    return distanceItem(profile, 1);
}

Reply singleLevelReply(const ParameterProfile& profile) {
    return levelItem(profile, 1);
}

Reply singleEqReply(const ParameterProfile& profile, const std::string& channelCode) {
    const int id = channelIdForCode(profile, channelCode);
    if (id < 0)
        return {};
    return eqRecord(profile, 1, channelSlot(profile, id));
}

}  // namespace sonalyx::emulator
