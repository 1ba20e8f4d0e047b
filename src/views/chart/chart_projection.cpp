#include "views/chart/chart_projection.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "views/chart/chart_style.h"
#include "views/chart/chart_ticks.h"

namespace sonalyx::chart {

namespace {

constexpr double kMaxStretch = 1.5;

// The controls give angles as 360 - trackbar; the view turns 0..90 degrees away from the front.
double turnRadians(int controlDegrees) {
    double turn = 360.0 - std::fmod(static_cast<double>(controlDegrees), 360.0);
    if (turn > 180) {
        turn -= 360;
    }
    return std::clamp(turn, 0.0, 90.0) * std::numbers::pi / 180.0;
}

double span(double lo, double hi) {
    const double s = hi - lo;
    return s > 0 && std::isfinite(s) ? s : 1.0;
}

}  // namespace

ChartProjection::ChartProjection(const ChartModel& model, const QRectF& rect, const LabelRoom& room)
    : view3d_(model.view.enabled),
      oblique_(model.view.orthogonal),
      box_{model.bottom.minimum, model.bottom.maximum, model.left.minimum, model.left.maximum},
      depthSlots_(slotsInUse(model)) {
    const Margins& m = model.margins;
    QRectF area = rect.adjusted(m.left + room.left, m.top + room.top, -(m.right + room.right),
                                -(m.bottom + room.bottom));
    area.setWidth(std::max(area.width(), 1.0));
    area.setHeight(std::max(area.height(), 1.0));
    plotRect_ = area;
    if (!view3d_) {
        return;
    }
    width_ = area.width();
    height_ = area.height();
    depth_ = std::clamp(model.view.depthPercent, 0, 1000) / 100.0 * width_;
    const double r = turnRadians(model.view.rotation);
    const double e = turnRadians(model.view.elevation);
    cosRotation_ = std::cos(r);
    sinRotation_ = std::sin(r);
    cosElevation_ = std::cos(e);
    sinElevation_ = std::sin(e);
    // At 100 the eye stands 1.5 box radii from the centre; at 0 it is infinitely far away.
    const double radius = 0.5 * std::sqrt(width_ * width_ + height_ * height_ + depth_ * depth_);
    perspective_ = std::clamp(model.view.perspective, 0, 100) / 100.0 / (1.5 * radius);
    fitBox(area);
}

ChartProjection ChartProjection::forChart(const ChartModel& model, const QRectF& rect) {
    const ChartStyle style(model, rect, ChartAppearance{});
    const ChartTicks ticks(model, style, model.view.enabled, slotsInUse(model));
    return ChartProjection(model, rect, ticks.room);
}

int ChartProjection::slotsInUse(const ChartModel& model) {
    // A slot counts when it draws something: a line needs two points, a bar one. The fillers
    // park unused slots on a single (0, 0) point, which must not stretch the depth.
    const auto draws = [](const Series& s) {
        return s.points.size() >= (s.kind == SeriesKind::Bar ? 1u : 2u);
    };
    int depthSlots = 1;
    for (int i = 0; i < kSeriesSlots; ++i) {
        if (draws(model.series[static_cast<std::size_t>(i)])) {
            depthSlots = i + 1;
        }
    }
    for (std::size_t i = 0; i < model.referenceSeries.size(); ++i) {
        if (draws(model.referenceSeries[i])) {
            depthSlots = std::max(depthSlots, std::min(static_cast<int>(i) + 1, kSeriesSlots));
        }
    }
    return depthSlots;
}

ChartProjection::Eye ChartProjection::look(double ux, double uy, double slot) const {
    const double u = (ux - 0.5) * width_;
    const double v = (uy - 0.5) * height_;
    const double w = ((slot + 0.5) / depthSlots_ - 0.5) * depth_;
    if (oblique_) {
        const double d = w * std::numbers::sqrt2 / 2;
        return {u + d, v + d, w};
    }
    // Turn about the vertical axis (the far end of the bottom axis comes forward), then tilt
    // the top away so the floor shows, then shrink what lies further from the eye.
    const double x1 = u * cosRotation_ + w * sinRotation_;
    const double d1 = -u * sinRotation_ + w * cosRotation_;
    const double y2 = v * cosElevation_ + d1 * sinElevation_;
    const double d2 = -v * sinElevation_ + d1 * cosElevation_;
    const double k = 1.0 / (1.0 + d2 * perspective_);
    return {x1 * k, y2 * k, d2};
}

void ChartProjection::fitBox(const QRectF& area) {
    double left = 1e300, right = -1e300, top = -1e300, bottom = 1e300;
    for (int corner = 0; corner < 8; ++corner) {
        const Eye p = look(corner & 1, (corner >> 1) & 1, corner & 4 ? backDepth() : frontDepth());
        left = std::min(left, p.x);
        right = std::max(right, p.x);
        bottom = std::min(bottom, p.y);
        top = std::max(top, p.y);
    }
    const double w = std::max(right - left, 1e-9);
    const double h = std::max(top - bottom, 1e-9);
    // Scale to fit, then let the roomier direction stretch a little further, so a turned box
    // still fills a wide chart; the cap keeps angles believable.
    const double fitX = area.width() / w;
    const double fitY = area.height() / h;
    const double uniform = std::min(fitX, fitY);
    scaleX_ = std::min(fitX, uniform * kMaxStretch);
    scaleY_ = std::min(fitY, uniform * kMaxStretch);
    centre_ = QPointF((left + right) / 2, (top + bottom) / 2);
    target_ = area.center();
    plotRect_ = QRectF(target_.x() - w * scaleX_ / 2, target_.y() - h * scaleY_ / 2, w * scaleX_,
                       h * scaleY_);
}

QPointF ChartProjection::mapUnit(double ux, double uy, double slot) const {
    if (!view3d_) {
        return QPointF(plotRect_.left() + ux * plotRect_.width(),
                       plotRect_.bottom() - uy * plotRect_.height());
    }
    const Eye p = look(ux, uy, slot);
    return QPointF(target_.x() + (p.x - centre_.x()) * scaleX_,
                   target_.y() - (p.y - centre_.y()) * scaleY_);
}

QPointF ChartProjection::map(double x, double y, double slot) const {
    return mapUnit((x - box_.xMin) / span(box_.xMin, box_.xMax),
                   (y - box_.yMin) / span(box_.yMin, box_.yMax), slot);
}

double ChartProjection::viewDistance(double ux, double uy, double slot) const {
    return view3d_ ? look(ux, uy, slot).distance : 0.0;
}

NearestPoint ChartProjection::nearestPoint(const ChartModel& model, const QPointF& pixel) const {
    NearestPoint best;
    const auto search = [&](const Series& series, int slot, bool reference) {
        if (!series.visible) {
            return;
        }
        for (std::size_t i = 0; i < series.points.size(); ++i) {
            const Point& p = series.points[i];
            if (model.clipPoints &&
                (p.x < box_.xMin || p.x > box_.xMax || p.y < box_.yMin || p.y > box_.yMax)) {
                continue;
            }
            const QPointF at = map(p.x, p.y, slot);
            const double d = std::hypot(at.x() - pixel.x(), at.y() - pixel.y());
            if (d < best.distance) {
                best = {slot, static_cast<int>(i), reference, d};
            }
        }
    };
    for (int s = 0; s < kSeriesSlots; ++s) {
        search(model.series[static_cast<std::size_t>(s)], s, false);
    }
    for (std::size_t r = 0; r < model.referenceSeries.size(); ++r) {
        search(model.referenceSeries[r], static_cast<int>(r), true);
    }
    return best;
}

}  // namespace sonalyx::chart
