#include "document/document_comparison.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <vector>

#include "document/speaker_layout.h"

namespace sonalyx {

namespace {

constexpr float kGap = std::numeric_limits<float>::quiet_NaN();

// A stored value as the decimal the document wrote, so that 17.84 - 17.66 reads 0.18.
double Decimal(float value) {
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, value);
    double decimal = value;
    std::from_chars(text, written.ptr, decimal);
    return decimal;
}

float Minus(float a, float b) {
    if (std::isnan(a) || std::isnan(b)) {
        return kGap;
    }
    return static_cast<float>(Decimal(a) - Decimal(b));
}

template <typename Array>
void SubtractInto(Array& out, const Array& a, const Array& b) {
    for (std::size_t i = 0; i < out.size(); ++i) {
        out[i] = Minus(a[i], b[i]);
    }
}

void SubtractInto(BandCurves& out, const BandCurves& a, const BandCurves& b) {
    for (std::size_t band = 0; band < out.size(); ++band) {
        SubtractInto(out[band], a[band], b[band]);
    }
}

int ChannelCountOf(const MeasurementDocument& doc) {
    return std::clamp(std::min(doc.channelCount, static_cast<int>(doc.channelLongNames.size())), 0,
                      kMaxPositions);
}

int BandCountOf(const MeasurementDocument& doc) {
    return std::clamp(std::min(doc.bandCount, static_cast<int>(doc.bandLabels.size())), 0,
                      kMaxBands);
}

// The group positions of a document's layout that name a group.
int GroupCountOf(const MeasurementDocument& doc) {
    int count = 0;
    while (count < kMaxGroups && doc.groupIdAt(count) >= 0) {
        ++count;
    }
    return count;
}

template <typename Name>
int FindIndex(int count, Name nameAt, const auto& wanted) {
    for (int i = 0; i < count; ++i) {
        if (nameAt(i) == wanted) {
            return i;
        }
    }
    return -1;
}

void AppendList(std::string& text, const std::string& label,
                const std::vector<std::string>& names) {
    if (names.empty()) {
        return;
    }
    if (!text.empty()) {
        text += "; ";
    }
    text += label;
    for (std::size_t i = 0; i < names.size(); ++i) {
        text += (i == 0 ? "" : ", ") + names[i];
    }
}

// The names of one side that the other side lacks, as one clause.
std::string MissingClause(const MeasurementDocument& from, const MeasurementDocument& in) {
    const DocumentComparison forward(from, in);
    std::vector<std::string> channels;
    std::vector<std::string> groups;
    std::vector<std::string> bands;
    for (int p = 0; p < ChannelCountOf(from); ++p) {
        if (forward.ChannelMatch(p) < 0) {
            channels.push_back(from.channelLongNames[static_cast<std::size_t>(p)]);
        }
    }
    for (int g = 0; g < GroupCountOf(from); ++g) {
        if (forward.GroupMatch(g) < 0) {
            groups.emplace_back(groupName(from.groupIdAt(g)));
        }
    }
    for (int b = 0; b < BandCountOf(from); ++b) {
        if (forward.BandMatch(b) < 0) {
            bands.push_back(from.bandLabels[static_cast<std::size_t>(b)]);
        }
    }
    std::string text;
    AppendList(text, "", channels);
    AppendList(text, "groups ", groups);
    AppendList(text, "bands ", bands);
    return text;
}

}  // namespace

DocumentComparison::DocumentComparison(const MeasurementDocument& document,
                                       const MeasurementDocument& reference)
    : document_(document), reference_(reference) {
    channels_.fill(-1);
    groups_.fill(-1);
    bands_.fill(-1);
    for (int p = 0; p < ChannelCountOf(document); ++p) {
        channels_[static_cast<std::size_t>(p)] = FindIndex(
            ChannelCountOf(reference),
            [&](int i) { return reference.channelLongNames[static_cast<std::size_t>(i)]; },
            document.channelLongNames[static_cast<std::size_t>(p)]);
    }
    for (int g = 0; g < GroupCountOf(document); ++g) {
        groups_[static_cast<std::size_t>(g)] = FindIndex(
            GroupCountOf(reference), [&](int i) { return reference.groupIdAt(i); },
            document.groupIdAt(g));
    }
    for (int b = 0; b < BandCountOf(document); ++b) {
        bands_[static_cast<std::size_t>(b)] = FindIndex(
            BandCountOf(reference),
            [&](int i) { return reference.bandLabels[static_cast<std::size_t>(i)]; },
            document.bandLabels[static_cast<std::size_t>(b)]);
    }
}

int DocumentComparison::ChannelMatch(int position) const {
    return position >= 0 && position < kMaxPositions ? channels_[static_cast<std::size_t>(position)]
                                                     : -1;
}

int DocumentComparison::GroupMatch(int group) const {
    return group >= 0 && group < kMaxGroups ? groups_[static_cast<std::size_t>(group)] : -1;
}

int DocumentComparison::BandMatch(int band) const {
    return band >= 0 && band < kMaxBands ? bands_[static_cast<std::size_t>(band)] : -1;
}

std::string DocumentComparison::UnmatchedText() const {
    const std::string missing = MissingClause(document_, reference_);
    const std::string extra = MissingClause(reference_, document_);
    std::string text;
    if (!missing.empty()) {
        text = "Not in the reference: " + missing;
    }
    if (!extra.empty()) {
        text += (text.empty() ? "" : ". ") + std::string("Only in the reference: ") + extra;
    }
    return text;
}

MeasurementDocument DocumentComparison::AlignedReference() const {
    MeasurementDocument aligned = document_;
    aligned.anyVariantData = reference_.anyVariantData;
    for (int v = 0; v < kVariants; ++v) {
        // A band the reference lacks is a gap in every curve.
        const auto alignCurves = [&](BandCurves& out, const BandCurves& from) {
            for (int b = 0; b < kMaxBands; ++b) {
                const int match = BandMatch(b);
                auto& curve = out[static_cast<std::size_t>(b)];
                if (match < 0) {
                    curve.fill(kGap);
                } else {
                    curve = from[static_cast<std::size_t>(match)];
                }
            }
        };
        for (int p = 0; p < kMaxPositions; ++p) {
            const int match = ChannelMatch(p);
            auto& curves = aligned.reverbValues[v][p];
            aligned.positionHasData[v][p] = match >= 0 && reference_.positionHasData[v][match];
            if (match < 0) {
                curves = {};
            } else {
                alignCurves(curves, reference_.reverbValues[v][match]);
            }
        }
        for (int g = 0; g < kMaxGroups; ++g) {
            const int match = GroupMatch(g);
            aligned.groupHasData[v][g] = match >= 0 && reference_.groupHasData[v][match];
            aligned.groupDelay.hasData[v][g] =
                match >= 0 && reference_.groupDelay.hasData[v][match];
            if (match < 0) {
                aligned.groupValues[v][g] = {};
                aligned.groupDelay.values[v][g] = {};
                continue;
            }
            alignCurves(aligned.groupValues[v][g], reference_.groupValues[v][match]);
            aligned.groupDelay.values[v][g] = reference_.groupDelay.values[v][match];
        }
    }
    return aligned;
}

MeasurementDocument DocumentComparison::Difference() const {
    const MeasurementDocument aligned = AlignedReference();
    MeasurementDocument difference = document_;
    for (int v = 0; v < kVariants; ++v) {
        for (int p = 0; p < kMaxPositions; ++p) {
            difference.positionHasData[v][p] =
                document_.positionHasData[v][p] && aligned.positionHasData[v][p];
            SubtractInto(difference.reverbValues[v][p], document_.reverbValues[v][p],
                         aligned.reverbValues[v][p]);
        }
        for (int g = 0; g < kMaxGroups; ++g) {
            difference.groupHasData[v][g] =
                document_.groupHasData[v][g] && aligned.groupHasData[v][g];
            SubtractInto(difference.groupValues[v][g], document_.groupValues[v][g],
                         aligned.groupValues[v][g]);
            difference.groupDelay.hasData[v][g] =
                document_.groupDelay.hasData[v][g] && aligned.groupDelay.hasData[v][g];
            SubtractInto(difference.groupDelay.values[v][g], document_.groupDelay.values[v][g],
                         aligned.groupDelay.values[v][g]);
        }
    }
    return difference;
}

MeasurementDocument AfterMinusBefore(const MeasurementDocument& document) {
    MeasurementDocument step = document;
    const auto both = [](const auto& flags, int i) { return flags[0][i] && flags[1][i]; };
    for (int p = 0; p < kMaxPositions; ++p) {
        const bool has = both(document.positionHasData, p);
        SubtractInto(step.reverbValues[0][p], document.reverbValues[1][p],
                     document.reverbValues[0][p]);
        step.reverbValues[1][p] = step.reverbValues[0][p];
        step.positionHasData[0][p] = step.positionHasData[1][p] = has;
    }
    for (int g = 0; g < kMaxGroups; ++g) {
        const bool has = both(document.groupHasData, g);
        SubtractInto(step.groupValues[0][g], document.groupValues[1][g],
                     document.groupValues[0][g]);
        step.groupValues[1][g] = step.groupValues[0][g];
        step.groupHasData[0][g] = step.groupHasData[1][g] = has;

        const bool delays = both(document.groupDelay.hasData, g);
        SubtractInto(step.groupDelay.values[0][g], document.groupDelay.values[1][g],
                     document.groupDelay.values[0][g]);
        step.groupDelay.values[1][g] = step.groupDelay.values[0][g];
        step.groupDelay.hasData[0][g] = step.groupDelay.hasData[1][g] = delays;
    }
    step.anyVariantData[0] = step.anyVariantData[1] =
        document.anyVariantData[0] && document.anyVariantData[1];
    return step;
}

}  // namespace sonalyx
