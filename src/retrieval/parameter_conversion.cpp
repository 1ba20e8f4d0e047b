#include "parameter_conversion.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <optional>

#include "document/channel_name.h"
#include "document/speaker_layout.h"
#include "document/text_format.h"

// Row layout of the "TORVE Parameters" groups, as the parameter sheets read them back:
//
//   "* Speaker Distance" / "* Channel Level" (list replies)
//       the group line, an empty line, the memory heading ",,[M1],[M2]..." (so "[M1]" stands in
//       field 2 two rows below the group line), one row per channel of the configuration's
//       order and then the subwoofer(s): the channel's long name, an empty field, one cell per
//       memory ("Left,,3.45m,3.40m"); an empty line ends the group.
//   The same groups from the single-channel fallback have no memory heading: the channel rows
//       follow the group line directly ("Left,,3.45m"), which is how memory-less data looks.
//   "* Acoustic Cal EQ" (list reply)
//       the group line, an empty line, then per memory: "[M%d]" joined with the band heading
//       ("[M1],,63Hz,...,16kHz,Trim"), the memory's curve row ("All Ch Adjust,,"), one row per
//       channel of the configuration's order ("Left,,+1.0dB,...,-0.5dB": bands from field 2,
//       trim last) and an empty line.
//   In the fallback: the group line, an empty line, the band heading with an empty label
//       (",,63Hz,...,Trim"), one row per channel asked, an empty line.
//
// Reply bodies:
//   EQALL record r of a memory: channel r of the configuration's order; the reply's attribute
//       is the memory's curve (0 All Ch Adjust, 1 Front Ch Align, 2 Custom1, 3 Custom2); the
//       body holds one signed half-decibel byte per band (nine, or five for the six-value band
//       sets) followed by the trim byte. "?EQ<code>" answers one such record. Below
//       configuration 8 the surround rows read "Surround L" and "Surround R".
//   DLALL item / "?DL": byte 0 signed multiplier, byte 1 unit code, then the distances (one
//       byte each in a 12-byte item, big-endian 16-bit values otherwise); a raw value of 0xFF
//       (one-byte layout) or 0xFFFF (16-bit layout) marks a distance as absent, and so do an
//       unknown unit code and a negative product.
//   LVALL item / "?LV": one signed half-decibel byte per channel at the index table's offsets,
//       whatever the item length; an index beyond the body reads as absent.
namespace sonalyx {

namespace {

using Bytes = std::span<const std::uint8_t>;

std::optional<int> byteAt(Bytes body, std::size_t index) {
    if (index >= body.size())
        return std::nullopt;
    return body[index];
}

std::optional<int> signedByteAt(Bytes body, std::size_t index) {
    if (index >= body.size())
        return std::nullopt;
    return static_cast<int>(static_cast<std::int8_t>(body[index]));
}

std::string upperHex(int value) {
    static constexpr char kDigits[] = "0123456789ABCDEF";
    auto v = static_cast<unsigned>(value);
    std::string text;
    do {
        text.insert(text.begin(), kDigits[v % 16]);
        v /= 16;
    } while (v != 0);
    return text;
}

// "%02d" of a value that is never negative.
void appendTwoDigits(std::string& out, long long value) {
    if (value < 10)
        out += '0';
    appendInt(out, value);
}

std::string codedText(int value, std::initializer_list<const char*> texts) {
    if (value >= 0 && value < static_cast<int>(texts.size()))
        return *(texts.begin() + value);
    return upperHex(value);
}

std::string sizeText(int value) {
    return codedText(value, {"No", "Large", "Small"});
}

// "-1.5dB", " 0.0dB", "+2.0dB": half-decibel steps.
std::string signedDecibels(int halfSteps) {
    std::string text = halfSteps < 0 ? "-" : (halfSteps == 0 ? " " : "+");
    appendFixed(text, 0.5 * std::abs(halfSteps), 1);
    text += "dB";
    return text;
}

std::string magnitudeDecibels(int halfSteps) {
    std::string text;
    appendFixed(text, 0.5 * std::abs(halfSteps), 1);
    text += "dB";
    return text;
}

constexpr std::string_view kAbsentCell = ",---";

// Distance byte offsets by channel id; 0 means the layout carries no value for the channel.
constexpr std::array<int, kChannelIdCount> kOneByteDistanceOffsets = {2, 3, 6, 10, 11, 4, 5, 0,
                                                                      0, 7, 8, 7,  9,  0, 9, 0};
constexpr std::array<int, kChannelIdCount> kWordDistanceOffsets = {2,  4,  10, 0,  0,  6,  8,  22,
                                                                   24, 12, 14, 12, 16, 30, 16, 28};
constexpr std::array<int, kChannelIdCount> kLevelIndexes = {0,  1, 4, 8, 9, 2,  3, 10,
                                                            11, 5, 6, 5, 7, 14, 7, 13};

constexpr std::array<int, 33> kStandingWaveHertz = {
    63,  65,  68,  71,  74,  78,  81,  85,  88,  92,  96,  101, 105, 110, 115, 120, 125,
    131, 136, 142, 149, 155, 162, 169, 177, 185, 193, 201, 210, 220, 229, 239, 250};

// The fallback's single-channel codes by index (FL, FR, SL, SR, CT, SBL, SBR, SPBL, SPBR, -, -,
// EXSL, EXSR, -, TS) as channel ids; index 5 is the lone surround back in configuration 6.
constexpr std::array<int, ParameterConverter::kFallbackChannelCount> kFallbackChannelIds = {
    kLeft,
    kRight,
    kSurroundLeftA,
    kSurroundRightA,
    kCenter,
    kSurrBackLeft,
    kSurrBackRight,
    kSpeakerBLeft,
    kSpeakerBRight,
    -1,
    -1,
    kSurroundLeftB,
    kSurroundRightB,
    -1,
    kTopSurround};

constexpr std::string_view kNineBandHeading =
    "63Hz,125Hz,250Hz,500Hz,1kHz,2kHz,4kHz,8kHz,16kHz,Trim";
constexpr std::string_view kSixValueHeadingA = "63Hz,125Hz,250Hz,4kHz,11.3kHz,Trim";
constexpr std::string_view kSixValueHeadingB = "40Hz,125Hz,250Hz,4kHz,13kHz,Trim";

}  // namespace

void ParameterConverter::reset() {
    *this = ParameterConverter();
}

void ParameterConverter::setConfiguration(int configCode, int bandSelector) {
    configCode_ = configCode;
    bandSelector_ = bandSelector;
}

void ParameterConverter::convertSystemInfo(std::span<const std::uint8_t> body) {
    crossoverCode_ = byteAt(body, 0).value_or(0);
    xCurveCode_ = byteAt(body, 1).value_or(0);
}

// ---- speaker setting ---------------------------------------------------------------------

int ParameterConverter::settingByte(int index) const {
    if (index < 0 || index >= static_cast<int>(speakerSetting_.size()))
        return 0;
    return speakerSetting_[static_cast<std::size_t>(index)];
}

int ParameterConverter::frontSize() const {
    return settingByte(0);
}
int ParameterConverter::surroundSize() const {
    return settingByte(1);
}
int ParameterConverter::centerSize() const {
    return settingByte(2);
}
int ParameterConverter::surrBackSize() const {
    return settingByte(3);
}
int ParameterConverter::subwooferCode() const {
    return settingByte(4);
}
int ParameterConverter::speakerBSize() const {
    return speakerSetting_.size() == 6 ? settingByte(5) : 0;
}
int ParameterConverter::surroundBSize() const {
    return speakerSetting_.size() >= 9 ? settingByte(6) : 0;
}
int ParameterConverter::topSurrSize() const {
    return speakerSetting_.size() >= 9 ? settingByte(8) : 0;
}

std::string ParameterConverter::subwooferText() const {
    if (subwooferMode_ == 1)
        return codedText(subwooferCode(), {"Plus x 2", "Plus x 1", "Yes x 2", "Yes x 1", "No"});
    return codedText(subwooferCode(), {"No", "Yes", "Plus"});
}

bool ParameterConverter::subwooferPresent() const {
    return subwooferMode_ == 1 ? subwooferCode() != 4 : subwooferCode() != 0;
}

bool ParameterConverter::twoSubwoofers() const {
    return subwooferMode_ != 0 && (subwooferCode() == 0 || subwooferCode() == 2);
}

void ParameterConverter::convertSpeakerSetting(int attribute, std::span<const std::uint8_t> body,
                                               std::vector<std::string>& lines) {
    subwooferMode_ = attribute;
    speakerSetting_.assign(body.begin(), body.end());

    lines.emplace_back("* Speaker Setting");
    lines.emplace_back();
    lines.push_back("Front,," + sizeText(frontSize()));
    lines.push_back("Center,," + sizeText(centerSize()));
    lines.push_back((configCode_ < 8 ? "Surround,," : "Surround A,,") + sizeText(surroundSize()));
    if (configCode_ == 11)
        lines.push_back("Surround B,," + sizeText(surroundBSize()));
    if (configCode_ >= 6)
        lines.push_back("Surr Back,," + codedText(surrBackSize(), {"No", "Large x 2", "Large x 1",
                                                                   "Small x 2", "Small x 1"}));
    lines.push_back("Sub Woofer,," + subwooferText());
    if (configCode_ == 9)
        lines.push_back("Speaker-B,," + sizeText(speakerBSize()));
    if (configCode_ == 10) {
        lines.push_back("Surround B,," + sizeText(surroundBSize()));
        lines.push_back("Top Surr,," + sizeText(topSurrSize()));
    }
    lines.emplace_back();
    lines.push_back("Crossover,," + (crossoverCode_ >= 0 && crossoverCode_ <= 4
                                         ? std::string(std::array{
                                               "50Hz", "80Hz", "100Hz", "150Hz",
                                               "200Hz"}[static_cast<std::size_t>(crossoverCode_)])
                                         : upperHex(crossoverCode_)));
    lines.emplace_back();
}

bool ParameterConverter::channelPresent(int channelId) const {
    switch (channelId) {
        case kLeft:
        case kRight:
            return frontSize() != 0;
        case kCenter:
            return centerSize() != 0;
        case kSurroundLeftA:
        case kSurroundRightA:
            return surroundSize() != 0;
        case kSpeakerBLeft:
        case kSpeakerBRight:
            return speakerBSize() != 0;
        case kSurroundLeftB:
        case kSurroundRightB:
            return surroundBSize() != 0;
        case kSurrBackLeft:
        case kSurrBack:
            return surrBackSize() != 0;
        case kSurrBackRight:
            return surrBackSize() == 1 || surrBackSize() == 3;
        case kSubWoofer1:
        case kSubWoofer2:
        case kSubWoofer:
            return subwooferPresent();
        case kTopSurround:
            return topSurrSize() != 0;
        default:
            return false;
    }
}

bool ParameterConverter::fallbackChannelPresent(int channelIndex) const {
    const int id = fallbackChannelId(channelIndex);
    return id >= 0 && channelPresent(id);
}

int ParameterConverter::fallbackChannelId(int channelIndex) const {
    if (channelIndex < 0 || channelIndex >= static_cast<int>(kFallbackChannelIds.size()))
        return -1;
    const int id = kFallbackChannelIds[static_cast<std::size_t>(channelIndex)];
    return id == kSurrBackLeft && configCode_ == 6 ? static_cast<int>(kSurrBack) : id;
}

std::string_view ParameterConverter::fallbackChannelCode(int channelIndex) {
    static constexpr std::array<std::string_view, kFallbackChannelCount> kCodes = {
        "FL",   "FR", "SL", "SR",   "CT",   "SBL", "SBR", "SPBL",
        "SPBR", "",   "",   "EXSL", "EXSR", "",    "TS"};
    if (channelIndex < 0 || channelIndex >= kFallbackChannelCount)
        return {};
    return kCodes[static_cast<std::size_t>(channelIndex)];
}

std::vector<int> ParameterConverter::mainChannels() const {
    const SpeakerLayout* layout = layoutByNumber(configCode_);
    return (layout != nullptr ? *layout : defaultLayout()).channelIds;
}

std::vector<int> ParameterConverter::channelsWithSubwoofers() const {
    std::vector<int> ids = mainChannels();
    if (twoSubwoofers()) {
        ids.push_back(kSubWoofer1);
        ids.push_back(kSubWoofer2);
    } else {
        ids.push_back(kSubWoofer);
    }
    return ids;
}

// ---- distances -----------------------------------------------------------------------------

std::string ParameterConverter::distanceCell(int channelId, std::span<const std::uint8_t> body) {
    const bool oneByte = body.size() == 12;
    const int offset = (oneByte ? kOneByteDistanceOffsets
                                : kWordDistanceOffsets)[static_cast<std::size_t>(channelId)];
    const auto multiplier = signedByteAt(body, 0);
    const auto unit = byteAt(body, 1);
    if (offset == 0 || !multiplier || !unit)
        return std::string(kAbsentCell);
    std::optional<int> raw;
    if (oneByte) {
        raw = byteAt(body, static_cast<std::size_t>(offset));
        if (raw == 0xFF)
            raw.reset();
    } else {
        const auto high = byteAt(body, static_cast<std::size_t>(offset));
        const auto low = byteAt(body, static_cast<std::size_t>(offset) + 1);
        if (high && low && (*high != 0xFF || *low != 0xFF))
            raw = *high * 256 + *low;
    }
    if (!raw)
        return std::string(kAbsentCell);
    const auto v = static_cast<long long>(std::trunc(double(*raw) * double(*multiplier)));
    return formatDistance(v, *unit);
}

std::string ParameterConverter::formatDistance(long long v, int unit) {
    // Only a negative multiplier gets here; no unit has a text for a negative distance.
    if (v < 0)
        return std::string(kAbsentCell);
    std::string cell = ",";
    switch (unit) {
        case 0:
            appendInt(cell, v / 100);
            cell += '.';
            appendTwoDigits(cell, v % 100);
            cell += 'm';
            return cell;
        case 1: {
            const long long scaled = (v % 100) * 12;
            long long inches = scaled / 100;
            if (scaled % 100 >= 50)
                ++inches;
            appendInt(cell, v / 100);
            cell += '\'';
            appendTwoDigits(cell, inches);
            cell += '"';
            return cell;
        }
        case 2:
            appendInt(cell, v / 10000);
            cell += '.';
            appendTwoDigits(cell, (v % 10000) / 100);
            cell += 'm';
            return cell;
        case 3:
            appendInt(cell, (v / 100) / 12);
            cell += '\'';
            appendTwoDigits(cell, (v / 100) % 12);
            cell += v % 100 < 50 ? "\"" : "-1/2\"";
            return cell;
        default:
            // A unit this program does not know: a number without its unit would mislead.
            return std::string(kAbsentCell);
    }
}

void ParameterConverter::convertDistanceList(const std::vector<ReplyItem>& items,
                                             std::vector<std::string>& lines) {
    lines.emplace_back("* Speaker Distance");
    lines.emplace_back();
    lines.push_back(memoryHeading(items));
    for (int id : channelsWithSubwoofers()) {
        std::string row(channelName(id).longName);
        row += ',';
        for (const ReplyItem& item : items)
            row += channelPresent(id) ? distanceCell(id, item.body) : std::string(kAbsentCell);
        lines.push_back(std::move(row));
    }
    lines.emplace_back();
}

void ParameterConverter::convertSingleDistance(const ReplyItem& reply,
                                               std::vector<std::string>& lines) {
    lines.emplace_back("* Speaker Distance");
    for (int id : channelsWithSubwoofers()) {
        std::string row(channelName(id).longName);
        row += ',';
        row += channelPresent(id) ? distanceCell(id, reply.body) : std::string(kAbsentCell);
        lines.push_back(std::move(row));
    }
    lines.emplace_back();
}

// ---- levels --------------------------------------------------------------------------------

std::string ParameterConverter::levelCell(int channelId, std::span<const std::uint8_t> body) const {
    if (!channelPresent(channelId))
        return std::string(kAbsentCell);
    const auto index = static_cast<std::size_t>(kLevelIndexes[static_cast<std::size_t>(channelId)]);
    const auto raw = byteAt(body, index);
    if (!raw)
        return std::string(kAbsentCell);
    if (*raw == 0xFF)
        return {};
    return "," + signedDecibels(*signedByteAt(body, index));
}

void ParameterConverter::convertLevelList(const std::vector<ReplyItem>& items,
                                          std::vector<std::string>& lines) {
    lines.emplace_back("* Channel Level");
    lines.emplace_back();
    lines.push_back(memoryHeading(items));
    for (int id : channelsWithSubwoofers()) {
        std::string row(channelName(id).longName);
        row += ',';
        for (const ReplyItem& item : items)
            row += levelCell(id, item.body);
        lines.push_back(std::move(row));
    }
    lines.emplace_back();
}

void ParameterConverter::convertSingleLevel(const ReplyItem& reply,
                                            std::vector<std::string>& lines) {
    lines.emplace_back("* Channel Level");
    for (int id : channelsWithSubwoofers())
        lines.push_back(std::string(channelName(id).longName) + "," + levelCell(id, reply.body));
    lines.emplace_back();
}

std::string ParameterConverter::memoryHeading(const std::vector<ReplyItem>& items) {
    std::string row = ",";
    for (const ReplyItem& item : items) {
        row += ",[M";
        appendInt(row, item.attribute);
        row += ']';
    }
    return row;
}

// ---- standing wave control -----------------------------------------------------------------

void ParameterConverter::convertStandingWaveList(const std::vector<ReplyItem>& items,
                                                 std::vector<std::string>& lines) {
    lines.emplace_back("* Standing Wave Control");
    lines.emplace_back();
    for (const ReplyItem& item : items)
        appendStandingWaveBlock(item, lines);
}

void ParameterConverter::appendStandingWaveBlock(const ReplyItem& item,
                                                 std::vector<std::string>& lines) {
    const Bytes body = item.body;
    std::string memory = "[M";
    appendInt(memory, item.attribute);
    lines.push_back(memory + "]");

    const auto trim = signedByteAt(body, 27);
    lines.push_back("Main,,,,,Center,,,,,Sub Woofer,,Trim," +
                    (trim ? signedDecibels(*trim) : std::string("---")));
    lines.emplace_back(
        "No.,Filter 1,Filter 2,Filter 3,,No.,Filter 1,Filter 2,Filter 3,,No.,Filter 1,Filter "
        "2,Filter 3");
    lines.push_back(filterRow("Freq", body, 1, [](Bytes b, std::size_t i) {
        const auto index = byteAt(b, i);
        if (!index || *index >= static_cast<int>(kStandingWaveHertz.size()))
            return std::string("---");
        std::string text;
        appendInt(text, kStandingWaveHertz[static_cast<std::size_t>(*index)]);
        return text + "Hz";
    }));
    lines.push_back(filterRow("Q", body, 2, [](Bytes b, std::size_t i) {
        const auto code = signedByteAt(b, i);
        return code ? formatFixed(*code * 0.2 + 2.0, 1) : std::string("---");
    }));
    lines.push_back(filterRow("ATT", body, 0, [](Bytes b, std::size_t i) {
        const auto att = signedByteAt(b, i);
        return att ? magnitudeDecibels(*att) : std::string("---");
    }));
    lines.emplace_back();
}

std::string ParameterConverter::filterRow(std::string_view label,
                                          std::span<const std::uint8_t> body, int byteInFilter,
                                          FilterCellText cellText) {
    std::string row;
    for (int group = 0; group < 3; ++group) {
        if (group > 0)
            row += ",,";
        row += label;
        for (int filter = 0; filter < 3; ++filter) {
            const auto index = static_cast<std::size_t>(3 * (3 * group + filter) + byteInFilter);
            row += ',';
            row += cellText(body, index);
        }
    }
    return row;
}

// ---- acoustic calibration EQ ---------------------------------------------------------------

std::string_view ParameterConverter::bandHeading() const {
    switch (bandSelector_) {
        case 1:
            return kSixValueHeadingA;
        case 2:
            return kSixValueHeadingB;
        default:
            return kNineBandHeading;
    }
}

int ParameterConverter::eqBandCount() const {
    return bandSelector_ == 1 || bandSelector_ == 2 ? 5 : 9;
}

std::string ParameterConverter::eqChannelLabel(int channelId) const {
    if (configCode_ < 8 && channelId == kSurroundLeftA)
        return "Surround L";
    if (configCode_ < 8 && channelId == kSurroundRightA)
        return "Surround R";
    return std::string(channelName(channelId).longName);
}

std::string ParameterConverter::eqRow(int channelId, std::span<const std::uint8_t> body) const {
    std::string row = eqChannelLabel(channelId) + ",";
    const bool present = channelPresent(channelId);
    for (int i = 0; i <= eqBandCount(); ++i) {
        const auto value = signedByteAt(body, static_cast<std::size_t>(i));
        row += present && value ? "," + signedDecibels(*value) : std::string(kAbsentCell);
    }
    return row;
}

void ParameterConverter::convertEqList(const std::vector<ReplyItem>& records, int recordsPerGroup,
                                       const std::vector<int>& groupAttributes,
                                       std::vector<std::string>& lines) {
    lines.emplace_back("* Acoustic Cal EQ");
    lines.emplace_back();
    const std::vector<int> channels = mainChannels();
    for (std::size_t g = 0; g < groupAttributes.size(); ++g) {
        std::string heading = "[M";
        appendInt(heading, groupAttributes[g]);
        heading += "],,";
        heading += bandHeading();
        lines.push_back(std::move(heading));
        const std::size_t first = g * static_cast<std::size_t>(std::max(recordsPerGroup, 0));
        if (first < records.size())
            lines.push_back(curveRow(records[first].attribute));
        for (int r = 0; r < recordsPerGroup && r < static_cast<int>(channels.size()); ++r) {
            const std::size_t slot = first + static_cast<std::size_t>(r);
            const ReplyItem empty;
            const ReplyItem& record = slot < records.size() ? records[slot] : empty;
            lines.push_back(eqRow(channels[static_cast<std::size_t>(r)], record.body));
        }
        lines.emplace_back();
    }
    appendXCurve(lines);
}

std::string ParameterConverter::curveRow(int curveCode) {
    return codedText(curveCode, {"All Ch Adjust", "Front Ch Align", "Custom1", "Custom2"}) + ",,";
}

void ParameterConverter::convertSingleEq(int channelIndex, const ReplyItem& reply,
                                         std::vector<std::string>& lines) {
    const int id = fallbackChannelId(channelIndex);
    if (id < 0)
        return;
    startFallbackEq(lines);
    lines.push_back(eqRow(id, reply.body));
}

void ParameterConverter::startFallbackEq(std::vector<std::string>& lines) {
    if (fallbackEqStarted_)
        return;
    fallbackEqStarted_ = true;
    lines.emplace_back("* Acoustic Cal EQ");
    lines.emplace_back();
    lines.push_back(",," + std::string(bandHeading()));
}

void ParameterConverter::finishFallback(std::vector<std::string>& lines) {
    startFallbackEq(lines);
    lines.emplace_back();
    appendXCurve(lines);
}

void ParameterConverter::appendXCurve(std::vector<std::string>& lines) const {
    if (xCurveCode_ == 7)
        return;
    lines.emplace_back("* X-Curve");
    lines.push_back(",," + codedText(xCurveCode_, {"OFF", "-0.5dB/oct", "-1.0dB/oct", "-1.5dB/oct",
                                                   "-2.0dB/oct", "-2.5dB/oct", "-3.0dB/oct"}));
    lines.emplace_back();
}

}  // namespace sonalyx
