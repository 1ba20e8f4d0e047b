#pragma once

#include <QRectF>

#include "views/chart/chart_model.h"

class QPainter;

namespace sonalyx::chart {

// How a chart looks on its medium. The screen is a dark instrument panel; paper is white with
// black text and grid, the curve colours kept, so a printout reads and copies well.
struct ChartAppearance {
    bool paper = false;
};

// Draws the chart into rect: walls and grid, axes and titles, then the series from the back to
// the front. The one road for the widget, the window capture, SVG, PDF and the printer.
void paintChart(QPainter& painter, const QRectF& rect, const ChartModel& model,
                const ChartAppearance& appearance = {});

}  // namespace sonalyx::chart
