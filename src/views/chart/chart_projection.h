#pragma once

#include <QPointF>
#include <QRectF>
#include <limits>

#include "views/chart/chart_model.h"
#include "views/chart/segment_clipper.h"

namespace sonalyx::chart {

// Room kept between the margins and the plot for axis labels and titles, in pixels.
struct LabelRoom {
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

// The point of the chart's curves closest to a pixel, for the cursor readout.
struct NearestPoint {
    int slot = -1;   // series slot, or index into referenceSeries when reference is set
    int index = -1;  // point index within the series
    bool reference = false;
    double distance = std::numeric_limits<double>::infinity();  // in pixels
    bool found() const { return slot >= 0; }
};

// The one value-to-pixel mapping of a chart: axis ranges, the plot rectangle and the 3D view.
// Built once per paint and shared by the drawing, the cursor hit test and the tests.
//
// In 3D the chart is a box: x along the bottom axis, y up the left axis and depth with one step
// per slot in use, slot 0 at the front. The box is turned about the vertical axis, tilted towards
// the viewer, seen in perspective, then scaled to fit the plot rectangle whole.
class ChartProjection {
  public:
    ChartProjection(const ChartModel& model, const QRectF& rect, const LabelRoom& room);

    // The projection paintChart uses for this model in this rect (labels measured in its fonts).
    static ChartProjection forChart(const ChartModel& model, const QRectF& rect);

    // The last slot that draws something, plus one (at least 1): the depth steps of the box.
    static int slotsInUse(const ChartModel& model);

    bool is3D() const { return view3d_; }
    // The area the plot is fitted into: the 2D frame, or the bounds of the projected 3D box.
    const QRectF& plotRect() const { return plotRect_; }
    const ValueBox& valueBox() const { return box_; }
    int depthSlots() const { return depthSlots_; }
    // Depth coordinates of the box faces: slot i stands at depth i.
    double frontDepth() const { return -0.5; }
    double backDepth() const { return depthSlots_ - 0.5; }

    // Value (x, y) of the curve in slot (fractional slots allowed) to a pixel.
    QPointF map(double x, double y, double slot) const;
    // Projection of a box point given in box units (0..1 along x and y, depth in slots).
    QPointF mapUnit(double ux, double uy, double slot) const;
    // How far a box point lies from the viewer (larger = further), for back-to-front ordering.
    double viewDistance(double ux, double uy, double slot) const;

    NearestPoint nearestPoint(const ChartModel& model, const QPointF& pixel) const;

  private:
    struct Eye {
        double x = 0;
        double y = 0;
        double distance = 0;
    };
    Eye look(double ux, double uy, double slot) const;
    void fitBox(const QRectF& area);

    bool view3d_ = false;
    bool oblique_ = false;
    ValueBox box_;
    QRectF plotRect_;
    int depthSlots_ = 1;
    double width_ = 1;  // box size in pixels before fitting
    double height_ = 1;
    double depth_ = 0;
    double cosRotation_ = 1;
    double sinRotation_ = 0;
    double cosElevation_ = 1;
    double sinElevation_ = 0;
    double perspective_ = 0;  // 1 / eye distance, in 1 / pixels
    double scaleX_ = 1;
    double scaleY_ = 1;
    QPointF centre_;  // of the projected box before fitting
    QPointF target_;  // where that centre lands
};

}  // namespace sonalyx::chart
