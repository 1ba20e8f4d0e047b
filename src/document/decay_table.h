#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "decay_estimate.h"
#include "measurement_document.h"

namespace sonalyx {

// The decay of one item in one band, before and after calibration. The figures are kept as
// they are shown (rate to 0.1 dB/s, time to 1 ms), so a change is the difference of the two
// figures beside it.
struct DecayCell {
    std::optional<DecayEstimate> before;
    std::optional<DecayEstimate> after;

    const std::optional<DecayEstimate>& variant(int v) const { return v == 0 ? before : after; }
    std::optional<double> rateChange() const;
    std::optional<double> rt60Change() const;
};

// Decay times of every channel (or channel group) and band of a document: the items the
// reverb charts show, in their order, and the document's bands.
struct DecayTable {
    std::vector<std::string> items;             // long names ("Left") or group names ("Front")
    std::vector<std::string> bands;             // band labels ("1k")
    std::vector<std::vector<DecayCell>> cells;  // [item][band]

    bool empty() const { return items.empty() || bands.empty(); }
    // The cell of an item and band by name (how a second document's table is matched), or null.
    const DecayCell* find(std::string_view item, std::string_view band) const;
};

// groups false: each channel holding data in either variant, in position order; true: each
// channel group holding data, in group order.
DecayTable buildDecayTable(const MeasurementDocument& doc, bool groups);

// The figures as the table keeps them.
double roundedRate(double rate);
double roundedRt60(double rt60Ms);

}  // namespace sonalyx
