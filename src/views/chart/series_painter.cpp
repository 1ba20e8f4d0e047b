#include "views/chart/series_painter.h"

#include <QPainter>
#include <algorithm>
#include <cmath>
#include <numeric>

#include "views/chart/chart_projection.h"
#include "views/chart/segment_clipper.h"

namespace sonalyx::chart {

namespace {

// How far a bar reaches into its slot's depth, either side of the slot's centre.
constexpr double kBarHalfDepth = 0.4;
// A bar lying wholly below the axis still shows as a stub this high (part of the axis span).
constexpr double kStubFraction = 0.03;
// A reference curve is its slot's colour moved this far towards white, a little translucent.
constexpr double kReferenceLift = 0.35;
constexpr int kReferenceAlpha = 190;
// A reference bar's faces are filled this faintly under their dashed edges.
constexpr int kReferenceFillAlpha = 110;
constexpr int kReferenceRibbonShare = 30;  // percent of the colour in a reference ribbon
// In 3D a curve is a ribbon this deep either side of its slot, filled in a darker shade.
constexpr double kRibbonHalfDepth = 0.5;
// A reference's glass ribbon is narrower: it stays inside its slot's own ribbon and costs less
// to blend.
constexpr double kReferenceRibbonHalfDepth = 0.3;
constexpr int kRibbonShade = 170;
// A clipping mark: a triangle this wide, reaching this far in from the edge it marks.
constexpr double kMarkHalfWidth = 3.5;
constexpr double kMarkHeight = 5.0;

QColor referenceColour(const QColor& colour) {
    const auto lift = [](int c) { return c + static_cast<int>((255 - c) * kReferenceLift); };
    return QColor(lift(colour.red()), lift(colour.green()), lift(colour.blue()), kReferenceAlpha);
}

double signedArea(const QPointF (&q)[4]) {
    double a = 0;
    for (int i = 0; i < 4; ++i) {
        const QPointF& p = q[i];
        const QPointF& n = q[(i + 1) % 4];
        a += p.x() * n.y() - n.x() * p.y();
    }
    return a / 2;
}

}  // namespace

SeriesPainter::SeriesPainter(QPainter& painter, const ChartModel& model,
                             const ChartProjection& projection)
    : painter_(painter), model_(model), projection_(projection) {
    polyline_.reserve(128);
    piece_.reserve(64);
}

void SeriesPainter::draw(const Series& series, double slot, bool reference, Pass pass) {
    if (!series.visible || series.points.empty()) {
        return;
    }
    pass_ = pass;
    const QColor colour = reference ? referenceColour(series.colour) : series.colour;
    if (series.kind == SeriesKind::Bar) {
        if (pass != Pass::Under) {
            drawBars(series, slot, colour, reference);
        }
    } else {
        drawLine(series, slot, colour, reference);
    }
    if (pass != Pass::Under) {
        drawClipMarks(series, slot, colour);
    }
}

void SeriesPainter::drawClipMarks(const Series& series, double slot, const QColor& colour) {
    // A lone line point draws nothing (a parked slot), so it is not cut off either.
    if (!model_.clipPoints || (series.kind == SeriesKind::Line && series.points.size() < 2)) {
        return;
    }
    const ValueBox& box = projection_.valueBox();
    marks_.clear();
    marks_.setFillRule(Qt::WindingFill);  // neighbouring marks overlap
    for (const Point& p : series.points) {
        if (!std::isfinite(p.x) || !std::isfinite(p.y) || p.x < box.xMin || p.x > box.xMax) {
            continue;
        }
        const bool above = p.y > box.yMax;
        if (!above && p.y >= box.yMin) {
            continue;
        }
        // Inside the plot, pointing out of it: the tip on the edge the value lies beyond.
        const QPointF tip = projection_.map(p.x, above ? box.yMax : box.yMin, slot);
        const double base = tip.y() + (above ? kMarkHeight : -kMarkHeight);
        marks_.moveTo(tip);
        marks_.lineTo(tip.x() + kMarkHalfWidth, base);
        marks_.lineTo(tip.x() - kMarkHalfWidth, base);
        marks_.closeSubpath();
    }
    if (!marks_.isEmpty()) {
        // Small flat triangles read as well without smoothing, which is most of their cost.
        painter_.setRenderHint(QPainter::Antialiasing, false);
        painter_.fillPath(marks_, QColor(colour.rgb()));
        painter_.setRenderHint(QPainter::Antialiasing, true);
    }
}

void SeriesPainter::flushPiece(double slot) {
    const auto n = piece_.size();
    if (n < 2) {
        piece_.clear();
        return;
    }
    polyline_.clear();
    if (ribbon_) {
        // The strip between the curve's front and back edges, then the front edge in the
        // series colour: one polygon, so a ribbon costs one fill however long it is.
        for (const QPointF& v : piece_) {
            polyline_.push_back(projection_.map(v.x(), v.y(), slot + ribbonHalfDepth_));
        }
        for (auto i = n; i-- > 0;) {
            polyline_.push_back(
                projection_.map(piece_[i].x(), piece_[i].y(), slot - ribbonHalfDepth_));
        }
        // The fill's edge is covered by the lines, so it needs no antialiasing (the costly part).
        if (pass_ != Pass::Over) {
            painter_.setRenderHint(QPainter::Antialiasing, false);
            painter_.setPen(Qt::NoPen);
            painter_.setBrush(ribbonColour_);
            painter_.drawPolygon(polyline_.data(), static_cast<int>(polyline_.size()),
                                 Qt::WindingFill);
            painter_.setRenderHint(QPainter::Antialiasing, true);
        }
        if (pass_ != Pass::Under) {
            painter_.setPen(linePen_);
            painter_.drawPolyline(polyline_.data() + n, static_cast<int>(n));
        }
    } else {
        for (const QPointF& v : piece_) {
            polyline_.push_back(projection_.map(v.x(), v.y(), slot));
        }
        painter_.drawPolyline(polyline_.data(), static_cast<int>(n));
    }
    piece_.clear();
}

void SeriesPainter::drawLine(const Series& series, double slot, const QColor& colour,
                             bool reference) {
    // A reference curve is a narrower glass ribbon with a dashed edge: the same shape as the
    // curves around it, and still told apart at a glance. Its pen stays one pixel wide, which
    // the raster engine dashes on its fast path.
    linePen_ = QPen(colour, std::max(1, model_.penWidth), reference ? Qt::DashLine : Qt::SolidLine);
    linePen_.setCosmetic(true);
    ribbon_ = projection_.is3D();
    ribbonHalfDepth_ = reference ? kReferenceRibbonHalfDepth : kRibbonHalfDepth;
    ribbonColour_ = colour.darker(kRibbonShade);
    if (reference) {
        // Opaque, so the fill costs what a solid ribbon does: the background seen through the
        // curve's colour.
        const QColor& back = model_.background;
        const auto mix = [](int c, int b) { return b + (c - b) * kReferenceRibbonShare / 100; };
        ribbonColour_ = QColor(mix(colour.red(), back.red()), mix(colour.green(), back.green()),
                               mix(colour.blue(), back.blue()));
    }
    painter_.setPen(linePen_);
    painter_.setBrush(Qt::NoBrush);
    piece_.clear();
    const auto& points = series.points;
    if (!model_.clipPoints) {
        for (const Point& p : points) {
            if (std::isfinite(p.x) && std::isfinite(p.y)) {
                piece_.emplace_back(p.x, p.y);
            } else {
                flushPiece(slot);
            }
        }
        flushPiece(slot);
        return;
    }
    const ValueBox& box = projection_.valueBox();
    for (std::size_t i = 1; i < points.size(); ++i) {
        const ClippedSegment s = clipSegment(QPointF(points[i - 1].x, points[i - 1].y),
                                             QPointF(points[i].x, points[i].y), box);
        if (!s.visible) {
            flushPiece(slot);
            continue;
        }
        if (piece_.empty() || s.fromClipped) {
            flushPiece(slot);
            piece_.push_back(s.from);
        }
        piece_.push_back(s.to);
        if (s.toClipped) {
            flushPiece(slot);
        }
    }
    flushPiece(slot);
}

void SeriesPainter::drawBars(const Series& series, double slot, const QColor& colour,
                             bool reference) {
    const ValueBox& box = projection_.valueBox();
    const auto& points = series.points;
    // In 3D the bars of a slot are drawn far to near, so nearer boxes cover the sides of others.
    order_.resize(points.size());
    std::iota(order_.begin(), order_.end(), 0);
    if (projection_.is3D()) {
        distance_.resize(points.size());
        const double span = box.xMax > box.xMin ? box.xMax - box.xMin : 1;
        for (std::size_t i = 0; i < points.size(); ++i) {
            distance_[i] = projection_.viewDistance((points[i].x - box.xMin) / span, 0.5, slot);
        }
        std::stable_sort(order_.begin(), order_.end(),
                         [&](int a, int b) { return distance_[a] > distance_[b]; });
    }
    const double halfWidth = std::max(series.barWidth, 0.0) / 2;
    for (const int i : order_) {
        const Point& p = points[static_cast<std::size_t>(i)];
        if (!std::isfinite(p.x) || !std::isfinite(p.y)) {
            continue;
        }
        const double x0 = std::max(p.x - halfWidth, box.xMin);
        const double x1 = std::min(p.x + halfWidth, box.xMax);
        if (x1 <= x0) {
            continue;
        }
        const bool below = p.y < box.yMin;
        double y0 = std::clamp(std::min(series.origin, p.y), box.yMin, box.yMax);
        double y1 = std::clamp(std::max(series.origin, p.y), box.yMin, box.yMax);
        if (below && y1 <= y0) {
            y1 = box.yMin + (box.yMax - box.yMin) * kStubFraction;  // still show it is there
        }
        if (y1 <= y0) {
            continue;
        }
        if (projection_.is3D()) {
            drawBar3D(x0, x1, y0, y1, slot, below, reference, colour);
        } else {
            drawBar2D(x0, x1, y0, y1, below, reference, colour);
        }
    }
}

void SeriesPainter::setBarStyle(const QColor& colour, const QColor& edge, bool below,
                                bool reference) {
    if (below) {
        painter_.setPen(QPen(colour, 0, Qt::DotLine));
        painter_.setBrush(QBrush(colour, Qt::BDiagPattern));
    } else if (reference) {
        QColor fill = colour;
        fill.setAlpha(kReferenceFillAlpha);
        painter_.setPen(QPen(colour, 0, Qt::DashLine));
        painter_.setBrush(fill);
    } else {
        painter_.setPen(QPen(edge, 0));
        painter_.setBrush(colour);
    }
}

void SeriesPainter::drawBar2D(double x0, double x1, double y0, double y1, bool below,
                              bool reference, const QColor& colour) {
    const QPointF a = projection_.map(x0, y1, 0);
    const QPointF b = projection_.map(x1, y0, 0);
    setBarStyle(colour, colour.darker(160), below, reference);
    painter_.drawRect(QRectF(a, b).normalized());
}

void SeriesPainter::drawBar3D(double x0, double x1, double y0, double y1, double slot, bool below,
                              bool reference, const QColor& colour) {
    const double z0 = slot - kBarHalfDepth;
    const double z1 = slot + kBarHalfDepth;
    const auto at = [&](double x, double y, double z) { return projection_.map(x, y, z); };
    // Each face listed counter-clockwise as seen from outside, so its projected winding tells
    // whether it faces the viewer; at most three do, and those never overlap.
    struct Face {
        QPointF corners[4];
        int shade;  // 100 = the series colour, above = lighter, below = darker
    };
    const Face faces[6] = {
        {{at(x0, y0, z0), at(x1, y0, z0), at(x1, y1, z0), at(x0, y1, z0)}, 100},  // front
        {{at(x0, y1, z0), at(x1, y1, z0), at(x1, y1, z1), at(x0, y1, z1)}, 135},  // top
        {{at(x1, y0, z0), at(x1, y0, z1), at(x1, y1, z1), at(x1, y1, z0)}, 70},   // right
        {{at(x0, y0, z1), at(x0, y0, z0), at(x0, y1, z0), at(x0, y1, z1)}, 70},   // left
        {{at(x1, y0, z0), at(x0, y0, z0), at(x0, y0, z1), at(x1, y0, z1)}, 60},   // bottom
        {{at(x1, y0, z1), at(x0, y0, z1), at(x0, y1, z1), at(x1, y1, z1)}, 90},   // back
    };
    for (const Face& face : faces) {
        if (signedArea(face.corners) >= 0) {
            continue;
        }
        // A reference bar is a glass box: its edges keep the one colour, so they read as
        // lines against the solid bars around it.
        const QColor c = reference || face.shade == 100 ? colour
                         : face.shade > 100             ? colour.lighter(face.shade)
                                                        : colour.darker(10000 / face.shade);
        setBarStyle(c, c.darker(130), below, reference);
        painter_.drawPolygon(face.corners, 4);
    }
}

}  // namespace sonalyx::chart
