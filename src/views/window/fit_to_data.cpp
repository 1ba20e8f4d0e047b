#include "views/window/fit_to_data.h"

#include <algorithm>
#include <cmath>

#include "views/chart/chart_model.h"

namespace sonalyx {

namespace {

// A hair of tolerance: an axis end computed in steps of a tenth may miss a value on it by
// the last bit.
constexpr double kEdgeTolerance = 1e-9;

bool DrawsPoints(const chart::Series& series) {
    if (!series.visible) {
        return false;
    }
    return series.kind == chart::SeriesKind::Bar || series.points.size() >= 2;
}

void Widen(std::optional<ValueSpan>& span, const chart::Series& series, const chart::Axis& x) {
    if (!DrawsPoints(series)) {
        return;
    }
    for (const chart::Point& p : series.points) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || p.x < x.minimum || p.x > x.maximum) {
            continue;
        }
        if (!span) {
            span = ValueSpan{p.y, p.y};
        } else {
            span->low = std::min(span->low, p.y);
            span->high = std::max(span->high, p.y);
        }
    }
}

}  // namespace

std::optional<ValueSpan> FitToData::DrawnSpan(const std::vector<const chart::ChartModel*>& charts) {
    std::optional<ValueSpan> span;
    for (const chart::ChartModel* model : charts) {
        if (!model->visible) {
            continue;
        }
        for (const chart::Series& series : model->series) {
            Widen(span, series, model->bottom);
        }
        for (const chart::Series& series : model->referenceSeries) {
            Widen(span, series, model->bottom);
        }
    }
    return span;
}

bool FitToData::Holds(const AxisRange& range, const ValueSpan& span) {
    return range.minimum <= span.low + kEdgeTolerance &&
           span.high <= range.maximum + kEdgeTolerance;
}

}  // namespace sonalyx
