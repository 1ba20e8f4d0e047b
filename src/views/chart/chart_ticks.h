#pragma once

#include <QString>
#include <vector>

#include "views/chart/chart_model.h"
#include "views/chart/chart_projection.h"

namespace sonalyx::chart {

class ChartStyle;

// One grid position of an axis; an empty text draws the grid line alone.
struct Tick {
    double value = 0;  // axis value, or the slot on the depth axis
    QString text;
    double width = 0;  // of the text in the chart's font
};

// The grid positions and labels of the three axes, and the room their texts need around the
// plot. Left values follow the increment and the value format; bottom values follow the
// increment, or the points' labels when the series carry labels; the depth axis names every
// slot by its series title, and its grid follows the increment.
struct ChartTicks {
    std::vector<Tick> left;
    std::vector<Tick> bottom;
    std::vector<Tick> depth;
    // Every slot's name, for the labels: the increment spaces the grid, not the names.
    std::vector<Tick> depthNames;
    LabelRoom room;

    ChartTicks(const ChartModel& model, const ChartStyle& style, bool view3d, int depthSlots);
};

// The increment actually used: the axis's own, or a round step giving about ten intervals
// when it has none (or one so fine the labels would be thousands).
double effectiveIncrement(const Axis& axis);

}  // namespace sonalyx::chart
