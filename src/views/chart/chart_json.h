#pragma once

#include <QRect>

#include "views/chart/chart_model.h"

namespace sonalyx::chart {

class JsonWriter;

// Writes one chart as the chart data export describes it: name, visibility, its rect in the
// scroll box, the 3D view, the axes and all fifteen series slots in slot order, then the
// reference series (marked "reference": true).
void writeChartJson(JsonWriter& json, const ChartModel& model, const QRect& rect);

}  // namespace sonalyx::chart
