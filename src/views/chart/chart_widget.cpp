#include "views/chart/chart_widget.h"

#include <QMouseEvent>
#include <QPaintEngine>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>

namespace sonalyx::chart {

ChartWidget::ChartWidget(QWidget* parent) : QWidget(parent) {
    // The chart fills every pixel it owns, so Qt need not clear behind it.
    setAttribute(Qt::WA_OpaquePaintEvent);
    setMouseTracking(true);
}

void ChartWidget::setAppearance(const ChartAppearance& appearance) {
    appearance_ = appearance;
    cacheValid_ = false;
    update();
}

void ChartWidget::setReadoutFormatter(ReadoutFormatter formatter) {
    formatter_ = std::move(formatter);
}

void ChartWidget::paint(QPainter& painter, const QRectF& rect) const {
    paintChart(painter, rect, model_, appearance_);
}

void ChartWidget::renderCache() {
    const qreal ratio = devicePixelRatioF();
    cache_ = QPixmap(size() * ratio);
    cache_.setDevicePixelRatio(ratio);
    QPainter painter(&cache_);
    paint(painter, QRectF(rect()));
    projection_.emplace(ChartProjection::forChart(model_, QRectF(rect())));
    cacheValid_ = true;
    ++cacheRenders_;
}

void ChartWidget::paintEvent(QPaintEvent*) {
    const bool cacheFits = cacheValid_ && cache_.size() == size() * devicePixelRatioF();
    QPainter painter(this);
    // Rendered onto a printer or a PDF the chart is drawn as vectors, never as its picture.
    if (painter.paintEngine() != nullptr && painter.paintEngine()->type() != QPaintEngine::Raster) {
        paint(painter, QRectF(rect()));
        return;
    }
    // Only a chart the mouse has come over keeps a picture of itself, until it next changes:
    // a hover then only moves the crosshair, and a window of charts nobody points at holds
    // no pixels beyond the screen's.
    if (!cacheFits && !hovering_) {
        cache_ = QPixmap();
        cacheValid_ = false;
        projection_.reset();
        paint(painter, QRectF(rect()));
        ++cacheRenders_;
        return;
    }
    if (!cacheFits)
        renderCache();
    painter.drawPixmap(0, 0, cache_);
    paintReadout(painter, readout_);
}

void ChartWidget::resizeEvent(QResizeEvent* event) {
    cacheValid_ = false;
    setReadout({});
    QWidget::resizeEvent(event);
}

void ChartWidget::mouseMoveEvent(QMouseEvent* event) {
    hovering_ = true;
    // Between a change and the next paint the cached projection is stale; a fresh one costs
    // no drawing.
    if (!cacheValid_ || !projection_)
        projection_.emplace(ChartProjection::forChart(model_, QRectF(rect())));
    setReadout(readoutAt(model_, *projection_, event->position(), formatter_));
    if (readout_.shown)
        QToolTip::showText(event->globalPosition().toPoint(), readout_.text, this);
    else
        QToolTip::hideText();
    QWidget::mouseMoveEvent(event);
}

void ChartWidget::leaveEvent(QEvent* event) {
    hovering_ = false;
    setReadout({});
    QToolTip::hideText();
    QWidget::leaveEvent(event);
}

void ChartWidget::hideEvent(QHideEvent* event) {
    hovering_ = false;
    setReadout({});
    QWidget::hideEvent(event);
}

void ChartWidget::setReadout(Readout readout) {
    const bool wasShown = readout_.shown;
    const QString before = readout_.text;
    readout_ = std::move(readout);
    if (wasShown || readout_.shown)
        update();
    if (readout_.text != before)
        emit readoutChanged(readout_.text);
}

}  // namespace sonalyx::chart
