#include "views/chart/chart_frame.h"

#include <QPainter>
#include <QVarLengthArray>
#include <algorithm>
#include <cmath>

#include "views/chart/chart_model.h"
#include "views/chart/chart_projection.h"
#include "views/chart/chart_style.h"
#include "views/chart/chart_ticks.h"

namespace sonalyx::chart {

namespace {

constexpr double kEdgeEpsilon = 1e-6;
constexpr double kMinDepthGridSpacing = 8;  // pixels

double unitOf(double value, double lo, double hi) {
    const double s = hi - lo;
    return s > 0 ? (value - lo) / s : 0;
}

bool onEdge(double unit) {
    return unit < kEdgeEpsilon || unit > 1 - kEdgeEpsilon;
}

void drawWalls(QPainter& painter, const ChartStyle& style, const ChartProjection& pr) {
    const ChartColours& c = style.colours();
    if (!pr.is3D()) {
        painter.setPen(QPen(c.edges, 0));
        painter.setBrush(c.backWall);
        painter.drawRect(pr.plotRect());
        return;
    }
    const double f = pr.frontDepth();
    const double b = pr.backDepth();
    const QPointF back[4] = {pr.mapUnit(0, 0, b), pr.mapUnit(1, 0, b), pr.mapUnit(1, 1, b),
                             pr.mapUnit(0, 1, b)};
    const QPointF left[4] = {pr.mapUnit(0, 0, f), pr.mapUnit(0, 0, b), pr.mapUnit(0, 1, b),
                             pr.mapUnit(0, 1, f)};
    const QPointF floor[4] = {pr.mapUnit(0, 0, f), pr.mapUnit(1, 0, f), pr.mapUnit(1, 0, b),
                              pr.mapUnit(0, 0, b)};
    const struct {
        const QPointF* corners;
        QColor colour;
    } walls[] = {{back, c.backWall}, {left, c.leftWall}, {floor, c.bottomWall}};
    // Filling is most of a chart's cost: a wall in the background's colour needs none, and the
    // others are filled without antialiasing, their edges being drawn smooth over them.
    const bool smooth = painter.testRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(Qt::NoPen);
    for (const auto& wall : walls) {
        if (wall.colour != c.background) {
            painter.setBrush(wall.colour);
            painter.drawPolygon(wall.corners, 4);
        }
    }
    painter.setRenderHint(QPainter::Antialiasing, smooth);
    painter.setPen(QPen(c.edges, 0));
    painter.setBrush(Qt::NoBrush);
    for (const auto& wall : walls) {
        painter.drawPolygon(wall.corners, 4);
    }
}

void drawGrid(QPainter& painter, const ChartModel& model, const ChartStyle& style,
              const ChartTicks& ticks, const ChartProjection& pr) {
    QVarLengthArray<QLineF, 96> lines;
    const double f = pr.frontDepth();
    const double b = pr.backDepth();
    for (const Tick& t : ticks.left) {
        const double u = unitOf(t.value, model.left.minimum, model.left.maximum);
        if (onEdge(u)) {
            continue;
        }
        lines.append(QLineF(pr.mapUnit(0, u, b), pr.mapUnit(1, u, b)));
        if (pr.is3D()) {
            lines.append(QLineF(pr.mapUnit(0, u, f), pr.mapUnit(0, u, b)));
        }
    }
    for (const Tick& t : ticks.bottom) {
        const double u = unitOf(t.value, model.bottom.minimum, model.bottom.maximum);
        if (onEdge(u)) {
            continue;
        }
        lines.append(QLineF(pr.mapUnit(u, 0, b), pr.mapUnit(u, 1, b)));
        if (pr.is3D()) {
            lines.append(QLineF(pr.mapUnit(u, 0, f), pr.mapUnit(u, 0, b)));
        }
    }
    // Depth lines only where the slots stand far enough apart to tell them; closer, they would
    // turn the floor into a grey smudge.
    if (ticks.depth.size() >= 2) {
        const double a = ticks.depth[0].value;
        const double b = ticks.depth[1].value;
        const QLineF near(pr.mapUnit(0, 0, a), pr.mapUnit(0, 0, b));
        const QLineF far(pr.mapUnit(1, 0, a), pr.mapUnit(1, 0, b));
        if (std::min(near.length(), far.length()) >= kMinDepthGridSpacing) {
            for (const Tick& t : ticks.depth) {
                lines.append(QLineF(pr.mapUnit(0, 0, t.value), pr.mapUnit(1, 0, t.value)));
                lines.append(QLineF(pr.mapUnit(0, 0, t.value), pr.mapUnit(0, 1, t.value)));
            }
        }
    }
    QPen pen(style.colours().grid, 0, model.walls.dottedGrid ? Qt::DotLine : Qt::SolidLine);
    painter.setPen(pen);
    // A dotted hairline gains nothing from antialiasing and costs several times as much.
    const bool smooth = painter.testRenderHint(QPainter::Antialiasing);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.drawLines(lines.constData(), static_cast<int>(lines.size()));
    painter.setRenderHint(QPainter::Antialiasing, smooth);
}

// Where each label's text goes, given the anchor on its axis line.
enum class Side { Left, Below, Right };

QRectF labelRect(const QPointF& anchor, double width, Side side, const ChartStyle& style) {
    const double h = style.lineHeight();
    const double g = style.gap();
    switch (side) {
        case Side::Left:
            return QRectF(anchor.x() - g - width, anchor.y() - h / 2, width, h);
        case Side::Below:
            return QRectF(anchor.x() - width / 2, anchor.y() + g / 2, width, h);
        case Side::Right:
            break;
    }
    // Depth labels sit just above their slot's line, clear of the bottom axis's last label
    // that hangs below the same corner.
    return QRectF(anchor.x() + g, anchor.y() - h, width, h);
}

// Draws every k-th label with the smallest k that keeps neighbours apart, so a squeezed axis
// (a small chart, or an axis seen end-on) thins its labels evenly instead of smudging them.
// Names (the depth axis: bands or channels, not a scale) are each worth their place instead:
// every one that keeps clear of the last one drawn. A label that would touch one of another
// axis (taken) is left out; those drawn join taken.
void drawLabels(QPainter& painter, const std::vector<Tick>& ticks,
                const std::vector<QPointF>& anchors, Side side, const ChartStyle& style,
                QVarLengthArray<QRectF, 64>& taken, bool names = false) {
    QVarLengthArray<int, 64> labelled;
    QVarLengthArray<QRectF, 64> rects;
    for (std::size_t i = 0; i < ticks.size(); ++i) {
        if (!ticks[i].text.isEmpty()) {
            labelled.append(static_cast<int>(i));
            rects.append(labelRect(anchors[i], ticks[i].width, side, style));
        }
    }
    const qsizetype n = rects.size();
    const double pad = style.gap() / 2;
    const auto apart = [pad](const QRectF& a, const QRectF& b) {
        return !a.adjusted(-pad, -pad / 2, pad, pad / 2).intersects(b);
    };
    qsizetype step = 1;
    for (; step < n && !names; ++step) {
        bool clear = true;
        for (qsizetype i = 0; i + step < n && clear; i += step) {
            clear = apart(rects[i], rects[i + step]);
        }
        if (clear) {
            break;
        }
    }
    const qsizetype before = taken.size();
    const QRectF* last = nullptr;
    for (qsizetype i = 0; i < n; i += step) {
        bool free = !names || last == nullptr || apart(*last, rects[i]);
        for (qsizetype t = 0; t < before && free; ++t) {
            free = !rects[i].intersects(taken[t]);  // corners may come close, not overlap
        }
        if (!free) {
            continue;
        }
        painter.drawText(QPointF(rects[i].left(), rects[i].top() + style.ascent()),
                         ticks[static_cast<std::size_t>(labelled[i])].text);
        taken.append(rects[i]);
        last = &rects[i];
    }
}

void drawAxisLabels(QPainter& painter, const QRectF& rect, const ChartModel& model,
                    const ChartStyle& style, const ChartTicks& ticks, const ChartProjection& pr) {
    painter.setFont(style.font());
    painter.setPen(style.colours().labels);
    std::vector<QPointF> anchors;
    anchors.reserve(std::max({ticks.left.size(), ticks.bottom.size(), ticks.depthNames.size()}));
    const double f = pr.frontDepth();
    // The bottom axis first: where axes meet (a box seen from above) its labels matter most.
    QVarLengthArray<QRectF, 64> taken;
    if (!model.keepClear.isEmpty()) {
        taken.append(model.keepClear.translated(rect.topLeft()));
    }
    for (const Tick& t : ticks.bottom) {
        anchors.push_back(
            pr.mapUnit(unitOf(t.value, model.bottom.minimum, model.bottom.maximum), 0, f));
    }
    drawLabels(painter, ticks.bottom, anchors, Side::Below, style, taken);
    anchors.clear();
    for (const Tick& t : ticks.left) {
        anchors.push_back(
            pr.mapUnit(0, unitOf(t.value, model.left.minimum, model.left.maximum), f));
    }
    drawLabels(painter, ticks.left, anchors, Side::Left, style, taken);
    anchors.clear();
    for (const Tick& t : ticks.depthNames) {
        anchors.push_back(pr.mapUnit(1, 0, t.value));
    }
    drawLabels(painter, ticks.depthNames, anchors, Side::Right, style, taken, true);
}

// Titles stand beside the labels of the fitted plot, not at the chart's edges, so a 3D box
// narrower than its chart keeps its titles close.
void drawTitles(QPainter& painter, const ChartModel& model, const ChartStyle& style,
                const QRectF& rect, const ChartTicks& ticks, const ChartProjection& pr) {
    const Margins& m = model.margins;
    const QRectF bounds = rect.adjusted(m.left, m.top, -m.right, -m.bottom);
    const QRectF& plot = pr.plotRect();
    const ChartColours& c = style.colours();
    const double descent = style.lineHeight() - style.ascent();
    const double baseline = std::min(bounds.bottom(), plot.bottom() + ticks.room.bottom) - descent;

    const QString left = model.left.visible ? model.left.title.trimmed() : QString();
    if (!left.isEmpty()) {
        painter.save();
        painter.translate(std::max(bounds.left(), plot.left() - ticks.room.left) + style.ascent(),
                          plot.center().y());
        painter.rotate(-90);
        painter.setPen(c.leftTitle);
        painter.drawText(QPointF(-style.textWidth(left) / 2, 0), left);
        painter.restore();
    }

    const QString depth =
        pr.is3D() && model.depth.visible ? model.depth.title.trimmed() : QString();
    const double depthWidth = depth.isEmpty() ? 0 : style.textWidth(depth);
    const double depthLeft = std::min(bounds.right(), plot.right() + ticks.room.right) - depthWidth;
    double bottomRight = depthLeft;  // where the bottom title ends
    const QString bottom = model.bottom.visible ? model.bottom.title.trimmed() : QString();
    if (!bottom.isEmpty()) {
        const double w = style.textWidth(bottom);
        double x = std::clamp(plot.center().x() - w / 2, bounds.left(),
                              std::max(bounds.left(), bounds.right() - w));
        if (!depth.isEmpty() && x + w + style.gap() > depthLeft) {
            x = std::max(bounds.left(), depthLeft - style.gap() - w);
        }
        painter.setPen(c.bottomTitle);
        painter.drawText(QPointF(x, baseline), bottom);
        bottomRight = x + w;
    }
    if (!depth.isEmpty() && bottomRight + style.gap() <= depthLeft + 0.5) {
        painter.setPen(c.depthTitle);
        painter.drawText(QPointF(depthLeft, baseline), depth);
    }
}

}  // namespace

void drawChartBackdrop(QPainter& painter, const ChartModel& model, const ChartStyle& style,
                       const ChartTicks& ticks, const ChartProjection& projection) {
    if (model.walls.visible) {
        drawWalls(painter, style, projection);
    }
    drawGrid(painter, model, style, ticks, projection);
}

void drawChartLabels(QPainter& painter, const QRectF& rect, const ChartModel& model,
                     const ChartStyle& style, const ChartTicks& ticks,
                     const ChartProjection& projection) {
    drawAxisLabels(painter, rect, model, style, ticks, projection);
    drawTitles(painter, model, style, rect, ticks, projection);
}

}  // namespace sonalyx::chart
