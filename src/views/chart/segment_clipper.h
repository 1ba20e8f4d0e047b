#pragma once

#include <QPointF>
#include <QRectF>

namespace sonalyx::chart {

// Cuts a segment to a box in value coordinates (x along the bottom axis, y along the left
// axis), interpolating where it crosses the boundary, so a curve ends exactly at the axis
// instead of stopping at the last point inside.
struct ValueBox {
    double xMin = 0;
    double xMax = 1;
    double yMin = 0;
    double yMax = 1;
};

struct ClippedSegment {
    bool visible = false;
    QPointF from;
    QPointF to;
    bool fromClipped = false;  // from lies on the boundary, not at the original start
    bool toClipped = false;
};

ClippedSegment clipSegment(const QPointF& from, const QPointF& to, const ValueBox& box);

}  // namespace sonalyx::chart
