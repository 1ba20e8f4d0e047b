#include "sample_documents.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "document/channel_name.h"
#include "document/document_loader.h"
#include "document/document_writer.h"
#include "document/speaker_layout.h"
#include "document/text_format.h"
#include "emulator/parameter_feed.h"

namespace sonalyx {

namespace {

// A small deterministic noise source: the samples must not change between machines.
class Noise {
  public:
    explicit Noise(std::uint32_t seed) : state_(seed * 2654435761u + 1u) {}
    // Uniform in [-1, 1).
    double next() {
        state_ = state_ * 1664525u + 1013904223u;
        return static_cast<double>(state_ >> 8) / static_cast<double>(1u << 23) - 1.0;
    }

  private:
    std::uint32_t state_;
};

struct SampleStyle {
    int bandSelector;  // 0 nine bands, 1 and 2 six
    int reverbType;
    const char* date;
    const char* room;
};

SampleStyle styleFor(int layout) {
    switch (layout) {
        case 5:
            return {1, 0, "2026.03.14 10:05", "Small study, desk speakers"};
        case 7:
            return {0, 2, "2026.05.02 20:41", "Basement cinema, 7 channels"};
        case 9:
            return {0, 1, "2026.06.21 16:12", "Living room with second zone speakers"};
        case 10:
            return {0, 3, "2026.09.08 21:30", "Dedicated home theatre, full set"};
        default:
            return {2, 5, "2026.10.30 18:55", "Media room, B surrounds"};
    }
}

std::vector<std::string> bandLabelsFor(int bandSelector) {
    switch (bandSelector) {
        case 1:
            return {"63", "125", "250", "1k", "4k", "11.3k"};
        case 2:
            return {"40", "125", "250", "1k", "4k", "13k"};
        default:
            return {"63", "125", "250", "500", "1k", "2k", "4k", "8k", "16k"};
    }
}

// The layout whose levels and group delays run past the default axes: the one sample that
// shows the view cutting curves, and gives Fit to Data something to do.
constexpr int kHotLayout = 11;

// Level in dB relative to 58 dB at time point t, the way a receiver reports a room: a straight
// decay in dB that bends into the noise floor, slower in the low bands, with a little ripple.
// Most curves stay within the default axis (levels 53 to 63 dB); the calibration EQ makes the
// low bands decay faster and lowers every curve a little.
float decayValue(int band, int bandCount, int t, int variant, int position, int layout,
                 Noise& noise) {
    const double lowness = 1.0 - static_cast<double>(band) / std::max(1, bandCount - 1);
    const double ms = 5.0 * (t + 1);
    // A channel's own loudness and a room mode that rings on in one low band of some channels.
    const double start =
        3.3 + 0.9 * lowness - 0.35 * ((position * 7 + band) % 5) - (variant == 1 ? 0.4 : 0.0);
    const bool ringing = variant == 0 && band == position % 3 && position % 2 == 0;
    double fall = (6.5 + 7.0 * (1.0 - lowness)) / 160.0;  // dB per ms
    if (variant == 1)
        fall *= 1.0 + 0.5 * lowness;
    if (ringing)
        fall *= 0.8;
    const double floor = -3.8 + 0.15 * ((position + 2 * band) % 4) - (variant == 1 ? 0.4 : 0.0);
    const double straight = start - fall * ms;
    // A soft knee, one dB wide, from the straight decay into the floor.
    const double level = floor + std::log1p(std::exp(straight - floor));
    const double ripple = 0.15 * noise.next() + 0.2 * std::sin(ms / (9.0 + band) + 0.7 * position);
    double value = std::clamp(level + ripple, -4.9, 4.9);
    if (layout == kHotLayout) {
        // A loud room measured with the microphone close: everything sits higher and spreads.
        value = 1.35 * value + (variant == 0 ? 4.5 : 2.5);
    }
    return static_cast<float>(std::round(value * 100.0) / 100.0);
}

void fillReverb(MeasurementDocument& doc, int layout, const SampleStyle& style) {
    const SpeakerLayout& sl = *layoutByNumber(layout);
    for (int id : sl.channelIds) {
        const std::string name(channelName(id).shortName);
        doc.channelNames.push_back(name);
    }
    doc.channelCount = static_cast<int>(doc.channelNames.size());
    doc.layoutNumber = layout;
    doc.bandLabels = bandLabelsFor(style.bandSelector);
    doc.bandCount = static_cast<int>(doc.bandLabels.size());
    doc.reverbType = style.reverbType;
    doc.variant1BlocksPresent = true;
    Noise noise(static_cast<std::uint32_t>(layout));
    for (int p = 0; p < doc.channelCount; ++p) {
        for (int v = 0; v < kVariants; ++v) {
            // Speaker-B speakers are not calibrated: they have no after-calibration curve.
            if (v == 1 && layout == 9 && p >= 7)
                continue;
            doc.positionHasData[v][p] = true;
            for (int b = 0; b < doc.bandCount; ++b) {
                for (int t = 0; t < kTimePoints; ++t) {
                    doc.reverbValues[v][p][b][t] =
                        decayValue(b, doc.bandCount, t, v, p, layout, noise);
                }
            }
        }
    }
    doc.fileMemos[kReverbSection] = {style.room, "Microphone at the main listening position"};
    doc.channelMemos[0] = {"Front left, 2.9 m from the listener"};
    doc.channelMemos[1] = {"Centre under the screen"};
}

// One group's 64 group delays in ms. Before calibration the delay is long at the bottom of
// the range and settles above a few hundred Hz; after it, the groups are nearly flat and close
// together. The section's last blank line sets the span back to 1.8 ms, whose default axis
// shows 0.425 to 1.375 ms.
std::string groupDelayRow(std::string_view name, int group, int variant, bool hot, Noise& noise) {
    std::string row(name);
    for (int i = 0; i < kGroupDelayBands; ++i) {
        double value = 0;
        if (variant == 0) {
            const double settled = 0.53 + 0.04 * group;
            const double peak = (hot ? 1.9 : 1.25) - 0.05 * group;
            value = settled + (peak - settled) * std::exp(-i / 10.0) +
                    0.05 * std::sin(i / 5.0 + group) + 0.02 * noise.next();
        } else {
            value = 0.84 + 0.03 * group + 0.12 * std::exp(-i / 8.0) +
                    (hot ? 0.45 : 0.03) * std::sin(i / 4.0 + group) + 0.015 * noise.next();
        }
        row += ',';
        appendFixed(row, value, 6);
    }
    return row;
}

std::vector<std::string> groupDelayLines(int layout) {
    static constexpr const char* kFrequencies =
        "Freq[Hz],200,215,231,249,268,288,310,334,359,386,415,447,481,517,557,599,644,693,746,"
        "802,863,928,999,1074,1156,1244,1338,1439,1549,1666,1792,1928,2074,2232,2401,2583,2779,"
        "2990,3216,3460,3723,4005,4309,4636,4987,5365,5772,6210,6681,7188,7733,8319,8950,9629,"
        "10359,11145,11990,12899,13877,14930,16062,17280,18590,20000";
    std::string indices;
    for (int i = 0; i < kGroupDelayBands; ++i) {
        indices += ',';
        appendInt(indices, i);
    }
    std::vector<std::string> names;
    const SpeakerLayout& sl = *layoutByNumber(layout);
    for (int id : kGroupDelayOrder) {
        for (const ChannelGroup& g : sl.groups) {
            if (g.groupId == id)
                names.emplace_back(groupName(id));
        }
    }
    std::string channelLine;
    for (size_t i = 0; i < names.size(); ++i)
        channelLine += (i ? "," : "") + names[i];
    std::vector<std::string> lines = {"", "[FILEMEMO]", "",      "[CHANNEL]", channelLine,
                                      "", "[Before]",   indices, kFrequencies};
    Noise noise(static_cast<std::uint32_t>(100 + layout));
    const double offset = 1.5;
    const bool hot = layout == kHotLayout;
    for (size_t i = 0; i < names.size(); ++i) {
        lines.push_back(groupDelayRow(names[i], static_cast<int>(i), 0, hot, noise));
    }
    lines.insert(lines.end(), {"", "[After]", indices, kFrequencies});
    for (size_t i = 0; i < names.size(); ++i) {
        lines.push_back(groupDelayRow(names[i], static_cast<int>(i), 1, hot, noise));
    }
    std::string offsetLine = "(Offset = +";
    appendFixed(offsetLine, offset, 1);
    offsetLine += "ms)";
    lines.insert(lines.end(), {offsetLine, "", ""});
    return lines;
}

// The parameter rows as the receive conversion writes them for the emulator's receiver.
std::vector<std::string> parameterLines(int layout, const SampleStyle& style) {
    emulator::ParameterProfile profile;
    profile.configCode = layout;
    profile.bandSelector = style.bandSelector;
    profile.speakerSettingLength = layout == 5 ? 5 : (layout == 9 ? 6 : 9);
    profile.distanceUnit = layout == 7 ? 3 : (layout == 9 ? 1 : 0);
    profile.xCurveCode = layout == 11 ? 7 : 2;
    profile.levelItemLength = layout >= 10 ? 15 : 10;
    return emulator::convertListReplies(profile);
}

}  // namespace

std::string sampleFileName(int layout) {
    return "sample-layout-" + std::to_string(layout) + ".csv";
}

std::vector<std::string> makeSampleDocument(int layout) {
    const SampleStyle style = styleFor(layout);
    MeasurementDocument doc;
    doc.fileName = sampleFileName(layout);
    doc.date = style.date;
    fillReverb(doc, layout, style);
    doc.groupDelayLines = groupDelayLines(layout);
    doc.groupDelayChannelLine = doc.groupDelayLines[4];
    doc.parameterLines = parameterLines(layout, style);
    doc.fileMemos[kGroupDelaySection] = {"Measured after moving the subwoofer"};
    doc.fileMemos[kParametersSection] = {"Receiver firmware 1.42"};

    // Written once, read back and written again: the reader computes the groups and turns
    // distances into display text, and the shipped file is the writer's fixed point.
    std::vector<std::string> first;
    DocumentWriter::write(doc, first);
    MeasurementDocument reread;
    DocumentLoader::load(reread, first, doc.fileName, nullptr);
    reread.groupMemos[0] = {"Front pair sits symmetric to the screen"};
    std::vector<std::string> lines;
    DocumentWriter::write(reread, lines);
    return lines;
}

}  // namespace sonalyx
