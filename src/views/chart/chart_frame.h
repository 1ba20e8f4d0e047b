#pragma once

class QPainter;
class QRectF;

namespace sonalyx::chart {

struct ChartModel;
class ChartStyle;
struct ChartTicks;
class ChartProjection;

// Draws what stands behind the curves: the walls (in 3D the back, left and bottom planes of the
// box; in 2D the plot frame), the dotted grid, the axis labels and the axis titles.
void drawChartFrame(QPainter& painter, const QRectF& rect, const ChartModel& model,
                    const ChartStyle& style, const ChartTicks& ticks,
                    const ChartProjection& projection);

}  // namespace sonalyx::chart
