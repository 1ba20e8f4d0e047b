#pragma once

#include "document/decay_table.h"

namespace sonalyx {

namespace chart {
class JsonWriter;
}  // namespace chart

// The decay table as a JSON array, one object per item and band in table order:
// {"item": "Left", "band": "1k", "before": {"rate": -81.2, "rt60": 739}, "after": null}
// with the rate in dB/s and the time in ms, null where there is no figure.
void writeDecayTimesJson(chart::JsonWriter& json, const DecayTable& table);

}  // namespace sonalyx
