#include "measurement_document.h"

#include <cmath>

#include "speaker_layout.h"

namespace sonalyx {

int MeasurementDocument::groupIdAt(int g) const {
    const SpeakerLayout& table = groupTableFor(layoutNumber);
    if (g < 0 || g >= static_cast<int>(table.groups.size()))
        return -1;
    return table.groups[static_cast<size_t>(g)].groupId;
}

void MeasurementDocument::reset() {
    *this = MeasurementDocument();
}

void computeGroupValues(MeasurementDocument& doc, int variant) {
    auto& groupValues = doc.groupValues[variant];
    auto& groupHasData = doc.groupHasData[variant];
    groupValues = {};
    groupHasData = {};
    const SpeakerLayout& table = groupTableFor(doc.layoutNumber);
    const int groups = std::min<int>(doc.groupCount, static_cast<int>(table.groups.size()));
    const auto hasData = [&](int pos) {
        return pos < doc.channelCount && pos < kMaxPositions && doc.positionHasData[variant][pos];
    };
    const int bands = std::min(doc.bandCount, kMaxBands);
    for (int g = 0; g < groups; ++g) {
        const ChannelGroup& group = table.groups[static_cast<size_t>(g)];
        const bool first = hasData(group.firstPos);
        const bool second = hasData(group.secondPos);
        if (!first && !second)
            continue;
        groupHasData[g] = true;
        if (first != second) {
            groupValues[g] = doc.reverbValues[variant][first ? group.firstPos : group.secondPos];
            continue;
        }
        const BandCurves& a = doc.reverbValues[variant][group.firstPos];
        const BandCurves& b = doc.reverbValues[variant][group.secondPos];
        // Energy mean in dB: 10 log10((10^(a/10) + 10^(b/10)) / 2), in double precision.
        constexpr double kToPower = 0.1 * 2.302585092994045684;  // ln(10) / 10
        for (int band = 0; band < bands; ++band) {
            for (int t = 0; t < kTimePoints; ++t) {
                const double sum =
                    std::exp(kToPower * a[band][t]) + std::exp(kToPower * b[band][t]);
                groupValues[g][band][t] = static_cast<float>(10.0 * std::log10(sum * 0.5));
            }
        }
    }
}

std::string reverbTypeLabelFor(int type) {
    switch (type) {
        case 1:
            return "EQ ON\r\n(SYMMETRY)";
        case 2:
            return "EQ ON\r\n(ALL CH ADJUST)";
        case 3:
        case 4:
            return "EQ ON\r\n(FRONT ALIGN)";
        case 5:
            return "EQ ON\r\n(CUSTOM)";
        default:
            return "EQ OFF";
    }
}

}  // namespace sonalyx
