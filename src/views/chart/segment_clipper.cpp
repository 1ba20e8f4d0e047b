#include "views/chart/segment_clipper.h"

#include <cmath>

namespace sonalyx::chart {

namespace {

// One boundary of the parametric (Liang-Barsky) test: narrows [t0, t1] or rejects.
bool narrow(double p, double q, double& t0, double& t1) {
    if (p == 0) {
        return q >= 0;
    }
    const double t = q / p;
    if (p < 0) {
        if (t > t1) {
            return false;
        }
        if (t > t0) {
            t0 = t;
        }
    } else {
        if (t < t0) {
            return false;
        }
        if (t < t1) {
            t1 = t;
        }
    }
    return true;
}

}  // namespace

ClippedSegment clipSegment(const QPointF& from, const QPointF& to, const ValueBox& box) {
    ClippedSegment result;
    // A missing value (NaN, infinity) breaks the curve rather than reaching the painter.
    if (!std::isfinite(from.x()) || !std::isfinite(from.y()) || !std::isfinite(to.x()) ||
        !std::isfinite(to.y())) {
        return result;
    }
    const double dx = to.x() - from.x();
    const double dy = to.y() - from.y();
    double t0 = 0;
    double t1 = 1;
    if (!narrow(-dx, from.x() - box.xMin, t0, t1) || !narrow(dx, box.xMax - from.x(), t0, t1) ||
        !narrow(-dy, from.y() - box.yMin, t0, t1) || !narrow(dy, box.yMax - from.y(), t0, t1)) {
        return result;
    }
    result.visible = true;
    result.fromClipped = t0 > 0;
    result.toClipped = t1 < 1;
    result.from = result.fromClipped ? QPointF(from.x() + t0 * dx, from.y() + t0 * dy) : from;
    result.to = result.toClipped ? QPointF(from.x() + t1 * dx, from.y() + t1 * dy) : to;
    return result;
}

}  // namespace sonalyx::chart
