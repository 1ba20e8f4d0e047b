#pragma once

class QPainter;
class QRectF;

namespace sonalyx::chart {

struct ChartModel;
class ChartStyle;
struct ChartTicks;
class ChartProjection;

// Draws what stands behind the curves: the walls (in 3D the back, left and bottom planes of the
// box; in 2D the plot frame) and the dotted grid.
void drawChartBackdrop(QPainter& painter, const ChartModel& model, const ChartStyle& style,
                       const ChartTicks& ticks, const ChartProjection& projection);

// Draws the axis labels and titles. They come after the curves, so a box turned far enough
// to bring a curve over a label still leaves the label readable.
void drawChartLabels(QPainter& painter, const QRectF& rect, const ChartModel& model,
                     const ChartStyle& style, const ChartTicks& ticks,
                     const ChartProjection& projection);

}  // namespace sonalyx::chart
