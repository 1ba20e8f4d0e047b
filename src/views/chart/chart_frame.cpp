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

double unitOf(double value, double lo, double hi) {
    const double s = hi - lo;
    return s > 0 ? (value - lo) / s : 0;
}

bool onEdge(double unit) {
    return unit < kEdgeEpsilon || unit > 1 - kEdgeEpsilon;
}

void drawWalls(QPainter& painter, const ChartStyle& style, const ChartProjection& pr) {
    const ChartColours& c = style.colours();
    painter.setPen(QPen(c.edges, 0));
    if (!pr.is3D()) {
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
    painter.setBrush(c.backWall);
    painter.drawPolygon(back, 4);
    painter.setBrush(c.leftWall);
    painter.drawPolygon(left, 4);
    painter.setBrush(c.bottomWall);
    painter.drawPolygon(floor, 4);
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
    for (const Tick& t : ticks.depth) {
        lines.append(QLineF(pr.mapUnit(0, 0, t.value), pr.mapUnit(1, 0, t.value)));
        lines.append(QLineF(pr.mapUnit(0, 0, t.value), pr.mapUnit(0, 1, t.value)));
    }
    QPen pen(style.colours().grid, 0, model.walls.dottedGrid ? Qt::DotLine : Qt::SolidLine);
    painter.setPen(pen);
    painter.drawLines(lines.constData(), static_cast<int>(lines.size()));
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
    return QRectF(anchor.x() + g, anchor.y() - h / 2, width, h);
}

// Draws every k-th label with the smallest k that keeps neighbours apart, so a squeezed axis
// (a small chart, or an axis seen end-on) thins its labels evenly instead of smudging them.
void drawLabels(QPainter& painter, const std::vector<Tick>& ticks,
                const std::vector<QPointF>& anchors, Side side, const ChartStyle& style) {
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
    qsizetype step = 1;
    for (; step < n; ++step) {
        bool clear = true;
        for (qsizetype i = 0; i + step < n && clear; i += step) {
            clear = !rects[i].adjusted(-pad, -pad / 2, pad, pad / 2).intersects(rects[i + step]);
        }
        if (clear) {
            break;
        }
    }
    for (qsizetype i = 0; i < n; i += step) {
        painter.drawText(QPointF(rects[i].left(), rects[i].top() + style.ascent()),
                         ticks[static_cast<std::size_t>(labelled[i])].text);
    }
}

void drawAxisLabels(QPainter& painter, const ChartModel& model, const ChartStyle& style,
                    const ChartTicks& ticks, const ChartProjection& pr) {
    painter.setFont(style.font());
    painter.setPen(style.colours().labels);
    std::vector<QPointF> anchors;
    anchors.reserve(std::max({ticks.left.size(), ticks.bottom.size(), ticks.depth.size()}));
    const double f = pr.frontDepth();
    for (const Tick& t : ticks.left) {
        anchors.push_back(
            pr.mapUnit(0, unitOf(t.value, model.left.minimum, model.left.maximum), f));
    }
    drawLabels(painter, ticks.left, anchors, Side::Left, style);
    anchors.clear();
    for (const Tick& t : ticks.bottom) {
        anchors.push_back(
            pr.mapUnit(unitOf(t.value, model.bottom.minimum, model.bottom.maximum), 0, f));
    }
    drawLabels(painter, ticks.bottom, anchors, Side::Below, style);
    anchors.clear();
    for (const Tick& t : ticks.depth) {
        anchors.push_back(pr.mapUnit(1, 0, t.value));
    }
    drawLabels(painter, ticks.depth, anchors, Side::Right, style);
}

void drawTitles(QPainter& painter, const ChartModel& model, const ChartStyle& style,
                const QRectF& rect, const ChartProjection& pr) {
    const Margins& m = model.margins;
    const QRectF bounds = rect.adjusted(m.left, m.top, -m.right, -m.bottom);
    const QRectF& plot = pr.plotRect();
    const ChartColours& c = style.colours();
    const double baseline = bounds.bottom() - (style.lineHeight() - style.ascent());

    const QString left = model.left.visible ? model.left.title.trimmed() : QString();
    if (!left.isEmpty()) {
        painter.save();
        painter.translate(bounds.left() + style.ascent(), plot.center().y());
        painter.rotate(-90);
        painter.setPen(c.leftTitle);
        painter.drawText(QPointF(-style.textWidth(left) / 2, 0), left);
        painter.restore();
    }

    const QString depth =
        pr.is3D() && model.depth.visible ? model.depth.title.trimmed() : QString();
    const double depthWidth = depth.isEmpty() ? 0 : style.textWidth(depth);
    const double depthLeft = bounds.right() - depthWidth;
    double bottomRight = depthLeft;  // where the bottom title must end to leave the depth title
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

void drawChartFrame(QPainter& painter, const QRectF& rect, const ChartModel& model,
                    const ChartStyle& style, const ChartTicks& ticks,
                    const ChartProjection& projection) {
    if (model.walls.visible) {
        drawWalls(painter, style, projection);
    }
    drawGrid(painter, model, style, ticks, projection);
    drawAxisLabels(painter, model, style, ticks, projection);
    drawTitles(painter, model, style, rect, projection);
}

}  // namespace sonalyx::chart
