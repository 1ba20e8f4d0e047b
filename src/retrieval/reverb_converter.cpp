#include "reverb_converter.h"

#include <cstdlib>
#include <string_view>

#include "document/channel_name.h"
#include "document/text_format.h"

namespace sonalyx {

namespace {

constexpr int kBandRecordBytes = 64;

constexpr std::string_view kTimeRow =
    "Time[msec],5,10,15,20,25,30,35,40,45,50,55,60,65,70,75,80,85,90,95,100,105,110,115,120,125,"
    "130,135,140,145,150,155,160";

constexpr std::string_view kFrequencyRow =
    "Freq[Hz],200,215,231,249,268,288,310,334,359,386,415,447,481,517,557,599,644,693,746,802,"
    "863,928,999,1074,1156,1244,1338,1439,1549,1666,1792,1928,2074,2232,2401,2583,2779,2990,"
    "3216,3460,3723,4005,4309,4636,4987,5365,5772,6210,6681,7188,7733,8319,8950,9629,10359,"
    "11145,11990,12899,13877,14930,16062,17280,18590,20000";

const std::vector<std::string_view>& bandRowNames(int bandSelector) {
    static const std::vector<std::string_view> nine = {"63Hz", "125Hz", "250Hz", "500Hz", "1kHz",
                                                       "2kHz", "4kHz",  "8kHz",  "16kHz"};
    static const std::vector<std::string_view> sixHigh = {"63Hz", "125Hz", "250Hz",
                                                          "1kHz", "4kHz",  "11.3kHz"};
    static const std::vector<std::string_view> sixLow = {"40Hz", "125Hz", "250Hz",
                                                         "1kHz", "4kHz",  "13kHz"};
    switch (bandSelector) {
        case 1:
            return sixHigh;
        case 2:
            return sixLow;
        default:
            return nine;
    }
}

std::string_view bandLine(int bandSelector) {
    switch (bandSelector) {
        case 1:
            return "63,125,250,1k,4k,11.3k";
        case 2:
            return "40,125,250,1k,4k,13k";
        default:
            return "63,125,250,500,1k,2k,4k,8k,16k";
    }
}

// Types 3 and 4 are both written as FRONT ALIGN; the document keeps no other words.
std::string reverbTypeLine(int reverbType) {
    if (reverbType == 0)
        return "EQ OFF";
    std::string line = "EQ ON,";
    switch (reverbType) {
        case 1:
            line += "SYMMETRY";
            break;
        case 2:
            line += "ALL CH ADJUST";
            break;
        case 3:
        case 4:
            line += "FRONT ALIGN";
            break;
        case 5:
            line += "CUSTOM";
            break;
        default:
            break;
    }
    return line;
}

const SpeakerLayout& layoutFor(int configCode) {
    const SpeakerLayout* layout = layoutByNumber(configCode);
    return layout ? *layout : defaultLayout();
}

// The speaker group a "?FB" reply's attribute names, or -1 for the unnamed values.
int groupDelayGroup(int attribute) {
    switch (attribute) {
        case 0:
            return kGroupFront;
        case 1:
            return kGroupSurroundA;
        case 2:
            return kGroupCenter;
        case 3:
            return kGroupSurrBack;
        case 5:
            return kGroupSurroundB;
        case 7:
            return kGroupTopSurr;
        default:
            return -1;
    }
}

void appendReverbValue(std::string& out, int raw) {
    if (raw < 0) {
        out += ",-";
        appendFixed(out, std::abs(raw) * 0.01, 2);
    } else {
        out += ',';
        appendFixed(out, raw * 0.01, 2);
    }
}

std::string indexRow(std::string_view label, int count) {
    std::string row(label);
    for (int i = 0; i < count; ++i) {
        row += ',';
        appendInt(row, i);
    }
    return row;
}

// Short replies are not refused by the protocol; missing bytes read as 0.
std::int8_t signedByteAt(std::span<const std::uint8_t> body, size_t index) {
    return index < body.size() ? static_cast<std::int8_t>(body[index]) : 0;
}

// Every step is rounded to single precision, so the sixth decimal never depends on the
// compiler's choice of intermediate precision; the after rows add the offset last.
std::string groupDelayRow(std::string_view name, std::span<const std::uint8_t> body, size_t first,
                          float scale, float base, std::optional<float> offset) {
    std::string row(name);
    for (size_t i = first; i < first + 64; ++i) {
        float value = static_cast<float>(signedByteAt(body, i)) / 255.0f * scale - base;
        if (offset)
            value += *offset;
        row += ',';
        appendFixed(row, value, 6);
    }
    return row;
}

}  // namespace

void ReverbConverter::reset() {
    *this = ReverbConverter();
}

void ReverbConverter::setConfiguration(int configCode, int bandSelector, int reverbType) {
    configCode_ = configCode;
    bandSelector_ = bandSelector;
    reverbType_ = reverbType;
}

void ReverbConverter::writeHeader(std::vector<std::string>& lines) const {
    lines.emplace_back("[CHANNEL]");
    lines.push_back(layoutFor(configCode_).channelLine());
    lines.emplace_back();
    lines.emplace_back("[BAND]");
    lines.emplace_back(bandLine(bandSelector_));
    lines.emplace_back();
    lines.emplace_back("[REVERB TYPE]");
    lines.push_back(reverbTypeLine(reverbType_));
    lines.emplace_back();
}

void ReverbConverter::writeDataBlock(int dataNumber, bool after, bool valid,
                                     std::span<const std::uint8_t> body,
                                     std::vector<std::string>& lines) {
    if (dataNumber != lastDataNumber_)
        memoHeadingWritten_ = false;
    if (!memoHeadingWritten_) {
        lines.push_back("[MEMO" + std::to_string(dataNumber) + "]");
        lines.emplace_back();
        memoHeadingWritten_ = true;
    }
    lines.push_back("[DATA" + std::to_string(dataNumber) + (after ? "A]" : "]"));
    if (valid) {
        lines.push_back(indexRow(channelLabel(dataNumber), 32));
        lines.emplace_back(kTimeRow);
        writeBandRows(body, lines);
    }
    lines.emplace_back();
    lastDataNumber_ = dataNumber;
}

void ReverbConverter::writeBandRows(std::span<const std::uint8_t> body,
                                    std::vector<std::string>& lines) const {
    const auto& names = bandRowNames(bandSelector_);
    const size_t records = std::min(body.size() / kBandRecordBytes, names.size());
    for (size_t r = 0; r < records; ++r) {
        std::string row(names[r]);
        const auto record = body.subspan(r * kBandRecordBytes, kBandRecordBytes);
        for (size_t i = 0; i < kBandRecordBytes; i += 2) {
            const auto raw = static_cast<std::int16_t>((record[i] << 8) | record[i + 1]);
            appendReverbValue(row, raw);
        }
        lines.push_back(std::move(row));
    }
}

std::string ReverbConverter::channelLabel(int dataNumber) const {
    const auto& ids = layoutFor(configCode_).channelIds;
    const size_t position = static_cast<size_t>(dataNumber - 1);
    if (dataNumber < 1 || position >= ids.size())
        return {};
    return std::string(channelName(ids[position]).shortName);
}

void ReverbConverter::convertGroupDelay(int attribute, std::span<const std::uint8_t> body) {
    const int group = groupDelayGroup(attribute);
    if (group < 0)
        return;
    // Scale, base and offset are tenths of a millisecond in signed bytes.
    const float scale = static_cast<float>(0.1 * signedByteAt(body, 128));
    const float base = static_cast<float>(0.1 * signedByteAt(body, 129));
    offset_ = static_cast<float>(0.1 * signedByteAt(body, 130));
    const std::string_view name = groupName(group);
    before_[group] = groupDelayRow(name, body, 0, scale, base, std::nullopt);
    after_[group] = groupDelayRow(name, body, 64, scale, base, offset_);
}

bool ReverbConverter::hasGroupDelay() const {
    for (const auto& row : before_) {
        if (row)
            return true;
    }
    return false;
}

void ReverbConverter::writeGroupDelaySection(std::vector<std::string>& lines) const {
    std::string names;
    for (int group : kGroupDelayOrder) {
        if (!before_[group])
            continue;
        if (!names.empty())
            names += ',';
        names += groupName(group);
    }
    lines.emplace_back("[CHANNEL]");
    lines.push_back(std::move(names));
    lines.emplace_back();
    lines.emplace_back("[Before]");
    writeGroupRows(before_, lines);
    lines.emplace_back();
    lines.emplace_back("[After]");
    writeGroupRows(after_, lines);
    std::string offsetLine = "(Offset = +";
    appendFixed(offsetLine, offset_, 1);
    offsetLine += "ms)";
    lines.push_back(std::move(offsetLine));
}

void ReverbConverter::writeGroupRows(
    const std::array<std::optional<std::string>, kGroupIdCount>& rows,
    std::vector<std::string>& lines) const {
    lines.push_back(indexRow("", 64));
    lines.emplace_back(kFrequencyRow);
    for (int group : kGroupDelayOrder) {
        if (rows[group])
            lines.push_back(*rows[group]);
    }
}

}  // namespace sonalyx
