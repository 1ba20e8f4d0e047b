#include "decay_table.h"

#include <algorithm>
#include <cmath>

#include "speaker_layout.h"

namespace sonalyx {

namespace {

std::optional<DecayEstimate> shownEstimate(const Curve& curve) {
    const auto estimate = estimateDecay(curve);
    if (!estimate)
        return std::nullopt;
    return DecayEstimate{roundedRate(estimate->rate), roundedRt60(estimate->rt60Ms)};
}

std::optional<double> difference(const std::optional<DecayEstimate>& before,
                                 const std::optional<DecayEstimate>& after,
                                 double DecayEstimate::*figure, double (*round)(double)) {
    if (!before || !after)
        return std::nullopt;
    return round((*after).*figure - (*before).*figure);
}

}  // namespace

// Adding 0.0 turns a rounded -0 into 0: no "-0.0" on screen or in a file.
double roundedRate(double rate) {
    return std::round(rate * 10.0) / 10.0 + 0.0;
}

double roundedRt60(double rt60Ms) {
    return std::round(rt60Ms) + 0.0;
}

std::optional<double> DecayCell::rateChange() const {
    return difference(before, after, &DecayEstimate::rate, &roundedRate);
}

std::optional<double> DecayCell::rt60Change() const {
    return difference(before, after, &DecayEstimate::rt60Ms, &roundedRt60);
}

const DecayCell* DecayTable::find(std::string_view item, std::string_view band) const {
    const auto row = std::find(items.begin(), items.end(), item);
    const auto column = std::find(bands.begin(), bands.end(), band);
    if (row == items.end() || column == bands.end())
        return nullptr;
    return &cells[static_cast<size_t>(row - items.begin())]
                 [static_cast<size_t>(column - bands.begin())];
}

DecayTable buildDecayTable(const MeasurementDocument& doc, bool groups) {
    DecayTable table;
    const int bands = std::min({doc.bandCount, kMaxBands, static_cast<int>(doc.bandLabels.size())});
    for (int b = 0; b < bands; ++b)
        table.bands.push_back(doc.bandLabels[static_cast<size_t>(b)]);

    // One row from an item's curves of both variants and its has-data flags.
    const auto addItem = [&](std::string name, const auto& curves, const auto& hasData, int i) {
        if (!hasData[0][i] && !hasData[1][i])
            return;
        std::vector<DecayCell> row(table.bands.size());
        for (size_t b = 0; b < row.size(); ++b) {
            if (hasData[0][i])
                row[b].before = shownEstimate(curves[0][i][b]);
            if (hasData[1][i])
                row[b].after = shownEstimate(curves[1][i][b]);
        }
        table.items.push_back(std::move(name));
        table.cells.push_back(std::move(row));
    };

    if (groups) {
        const int count = std::min(doc.groupCount, kMaxGroups);
        for (int g = 0; g < count; ++g) {
            const int id = doc.groupIdAt(g);
            addItem(id >= 0 ? std::string(groupName(id)) : std::string(), doc.groupValues,
                    doc.groupHasData, g);
        }
    } else {
        const int count = std::min(
            {doc.channelCount, kMaxPositions, static_cast<int>(doc.channelLongNames.size())});
        for (int p = 0; p < count; ++p) {
            addItem(doc.channelLongNames[static_cast<size_t>(p)], doc.reverbValues,
                    doc.positionHasData, p);
        }
    }
    return table;
}

}  // namespace sonalyx
