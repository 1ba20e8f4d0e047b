#pragma once

#include <QPointF>
#include <QRectF>
#include <QString>
#include <functional>

#include "views/chart/chart_model.h"
#include "views/chart/chart_projection.h"

class QPainter;

namespace sonalyx::chart {

// What the cursor reads off a chart: the point of the curves nearest to the mouse, where it
// is drawn, and its values as text. Nothing is shown while the mouse is outside the plot.
struct Readout {
    bool shown = false;
    QPointF mouse;       // widget pixels
    NearestPoint point;  // the series slot and point index
    QPointF pointPixel;  // where that point is drawn
    QRectF plot;         // the crosshair's extent
    // In 3D the axes do not run along the screen, so lines across the plot would mislead:
    // the cursor gets a small cross instead.
    bool spanPlot = true;
    QString text;  // "63: 45 ms, 61.25 dB"
};

// Turns a chart's point into readout text. The default reads the units from the axis titles
// ("Time[msec]" gives ms); views with other axes (frequency bands) give their own.
using ReadoutFormatter = std::function<QString(const ChartModel&, const Series&, const Point&)>;

QString defaultReadoutText(const ChartModel& model, const Series& series, const Point& point);

// The readout text of a point the cursor found. On a chart with reference curves it adds the
// other curve's value at the same x and the difference, always this document minus the
// reference: "63: 45 ms, 61.25 dB · ref 60.50 dB · Δ +0.75 dB"; on a reference point it says
// so and gives the document's value: "Reference · 63: 45 ms, 60.5 dB · document 61.25 dB · Δ
// +0.75 dB". referenceSeries[i] belongs to slot i; a curve without a counterpart says that.
QString readoutText(const ChartModel& model, const NearestPoint& found,
                    const ReadoutFormatter& format);

// The readout at a mouse position, through the projection the chart was drawn with.
Readout readoutAt(const ChartModel& model, const ChartProjection& projection, const QPointF& mouse,
                  const ReadoutFormatter& format);

// The crosshair through the mouse and a ring around the nearest point, over the chart.
void paintReadout(QPainter& painter, const Readout& readout);

}  // namespace sonalyx::chart
