#pragma once

#include "views/chart/chart_model.h"

namespace sonalyx::test {

// A reverb chart as the Reverb tab fills it: one decay curve per band of a sample document's
// first channel (level = 58 dB + the stored value), the reverb chart's axes, titles and walls.
chart::ChartModel sampleDecayChart();

// The same chart showing one time slice as bars, one bar per band; the last band's value lies
// below the left axis.
chart::ChartModel sampleBarChart();

}  // namespace sonalyx::test
