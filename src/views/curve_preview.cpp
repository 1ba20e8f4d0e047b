#include "views/curve_preview.h"

#include <QPainter>
#include <QPainterPath>
#include <cmath>

namespace sonalyx {

namespace {

constexpr QPointF kDepthStep(5.0, -3.5);  // how far back each further curve stands
const QColor kBack(12, 14, 18);
const QColor kGrid(58, 62, 70);
const QColor kAxisText(170, 176, 186);

}  // namespace

CurvePreview::CurvePreview(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void CurvePreview::setSeries(QVector<Series> series) {
    series_ = std::move(series);
    update();
}

void CurvePreview::setRanges(Range x, Range y) {
    x_ = x;
    y_ = y;
    update();
}

void CurvePreview::setLogarithmicX(bool on) {
    logX_ = on;
    update();
}

void CurvePreview::setDepth(bool on) {
    depth_ = on;
    update();
}

void CurvePreview::setAxisTitles(const QString& x, const QString& y) {
    xTitle_ = x;
    yTitle_ = y;
    update();
}

void CurvePreview::setGridSteps(int xSteps, int ySteps) {
    xSteps_ = std::max(1, xSteps);
    ySteps_ = std::max(1, ySteps);
    update();
}

QSize CurvePreview::sizeHint() const {
    return {240, 130};
}
QSize CurvePreview::minimumSizeHint() const {
    return {120, 70};
}

double CurvePreview::xFraction(double x) const {
    if (logX_ && x_.min > 0 && x > 0) {
        return std::log(x / x_.min) / std::log(x_.max / x_.min);
    }
    return (x - x_.min) / (x_.max - x_.min);
}

QPointF CurvePreview::map(const QPointF& value, const QRectF& plot, int depthIndex) const {
    const double fx = std::clamp(xFraction(value.x()), 0.0, 1.0);
    const double fy = std::clamp((value.y() - y_.min) / (y_.max - y_.min), 0.0, 1.0);
    QPointF point(plot.left() + fx * plot.width(), plot.bottom() - fy * plot.height());
    if (depth_) {
        point += kDepthStep * depthIndex;
    }
    return point;
}

void CurvePreview::drawFrame(QPainter& painter, const QRectF& plot) const {
    painter.setPen(QPen(kGrid, 1, Qt::DotLine));
    for (int i = 1; i < xSteps_; ++i) {
        const double x = plot.left() + plot.width() * i / xSteps_;
        painter.drawLine(QPointF(x, plot.top()), QPointF(x, plot.bottom()));
    }
    for (int i = 1; i < ySteps_; ++i) {
        const double y = plot.top() + plot.height() * i / ySteps_;
        painter.drawLine(QPointF(plot.left(), y), QPointF(plot.right(), y));
    }
    painter.setPen(QPen(kGrid.lighter(140), 1));
    painter.drawLine(plot.bottomLeft(), plot.bottomRight());
    painter.drawLine(plot.bottomLeft(), plot.topLeft());

    QFont font = painter.font();
    font.setPointSizeF(std::max(6.0, font.pointSizeF() - 1.5));
    painter.setFont(font);
    painter.setPen(kAxisText);
    const QFontMetricsF metrics(font);
    // Values at the ends of both axes, titles beside them.
    const auto number = [](double value) {
        return std::abs(value) >= 1000 ? QString::number(value / 1000, 'g', 3) + QLatin1Char('k')
                                       : QString::number(value, 'g', 4);
    };
    for (int i = 0; i <= ySteps_; i += std::max(1, ySteps_ / 2)) {
        const double value = y_.min + (y_.max - y_.min) * i / ySteps_;
        const double y = plot.bottom() - plot.height() * i / ySteps_;
        painter.drawText(QRectF(0, y - metrics.height() / 2, plot.left() - 3, metrics.height()),
                         Qt::AlignRight | Qt::AlignVCenter, number(value));
    }
    const double below = plot.bottom() + metrics.ascent() + 2;
    painter.drawText(QPointF(plot.left(), below), number(x_.min));
    const QString last = number(x_.max);
    painter.drawText(QPointF(plot.right() - metrics.horizontalAdvance(last), below), last);
    const QString xTitle = xTitle_;
    painter.drawText(QPointF(plot.center().x() - metrics.horizontalAdvance(xTitle) / 2, below),
                     xTitle);
    painter.drawText(QPointF(plot.left() + 4, plot.top() + metrics.ascent()), yTitle_);
}

void CurvePreview::drawSeries(QPainter& painter, const QRectF& plot) const {
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setClipRect(rect().adjusted(1, 1, -1, -1));
    // The furthest curve first, so the nearer ones stay on top in depth mode.
    for (int i = static_cast<int>(series_.size()) - 1; i >= 0; --i) {
        const Series& s = series_[i];
        if (s.points.isEmpty()) {
            continue;
        }
        QPainterPath path(map(s.points.front(), plot, i));
        for (int p = 1; p < s.points.size(); ++p) {
            path.lineTo(map(s.points[p], plot, i));
        }
        painter.setPen(QPen(s.colour, 1.4));
        painter.drawPath(path);
    }
}

void CurvePreview::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), kBack);
    QFont small = font();
    small.setPointSizeF(std::max(6.0, small.pointSizeF() - 1.5));
    const QFontMetricsF metrics(small);
    const double numberWidth = std::max(metrics.horizontalAdvance(QString::number(y_.max, 'g', 4)),
                                        metrics.horizontalAdvance(QString::number(y_.min, 'g', 4)));
    const double depthRoom = depth_ ? std::max<qsizetype>(series_.size() - 1, 0) : 0;
    QRectF plot = QRectF(rect()).adjusted(numberWidth + 8, 8 + depthRoom * -kDepthStep.y(),
                                          -8 - depthRoom * kDepthStep.x(), -metrics.height() - 4);
    if (plot.width() < 10 || plot.height() < 10) {
        plot = QRectF(rect()).adjusted(4, 4, -4, -4);
    }
    drawFrame(painter, plot);
    drawSeries(painter, plot);
}

}  // namespace sonalyx
