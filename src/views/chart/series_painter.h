#pragma once

#include <QColor>
#include <QPainterPath>
#include <QPen>
#include <QPointF>
#include <vector>

#include "views/chart/chart_model.h"

class QPainter;

namespace sonalyx::chart {

class ChartProjection;

// Draws series through the chart's projection: lines cut at the axis box, bars as flat
// rectangles (2D) or lit boxes one slot deep (3D). Keeps its point buffers between series so a
// repaint of many charts allocates almost nothing.
class SeriesPainter {
  public:
    SeriesPainter(QPainter& painter, const ChartModel& model, const ChartProjection& projection);

    // What of a series a call draws. A 3D reference curve is drawn in two passes around its
    // slot's own curve: its ribbon under it, its dashed edge over it.
    enum class Pass { Whole, Under, Over };

    void draw(const Series& series, double slot, bool reference, Pass pass = Pass::Whole);

  private:
    void drawLine(const Series& series, double slot, const QColor& colour, bool reference);
    // A small triangle pointing out of the top or bottom edge of the axis box, above or below
    // every point the box cuts off, so a clipped view is never taken for the data. One fill
    // per series.
    void drawClipMarks(const Series& series, double slot, const QColor& colour);
    void flushPiece(double slot);
    void drawBars(const Series& series, double slot, const QColor& colour, bool reference);
    // A bar's pen and brush: solid; a reference's dashed over a faint fill; one below the
    // axis dotted over a hatch.
    void setBarStyle(const QColor& colour, const QColor& edge, bool below, bool reference);
    void drawBar2D(double x0, double x1, double y0, double y1, bool below, bool reference,
                   const QColor& colour);
    void drawBar3D(double x0, double x1, double y0, double y1, double slot, bool below,
                   bool reference, const QColor& colour);

    QPainter& painter_;
    const ChartModel& model_;
    const ChartProjection& projection_;
    std::vector<QPointF> piece_;  // values of the visible run of a curve
    std::vector<QPointF> polyline_;
    QPen linePen_;
    QColor ribbonColour_;
    bool ribbon_ = false;
    double ribbonHalfDepth_ = 0.5;
    Pass pass_ = Pass::Whole;
    std::vector<int> order_;
    std::vector<double> distance_;
    QPainterPath marks_;
};

}  // namespace sonalyx::chart
