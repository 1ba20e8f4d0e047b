#include "views/chart/chart_widget.h"

#include <QPaintEvent>
#include <QPainter>

namespace sonalyx::chart {

ChartWidget::ChartWidget(QWidget* parent) : QWidget(parent) {
    // The chart fills every pixel it owns, so Qt need not clear behind it.
    setAttribute(Qt::WA_OpaquePaintEvent);
}

void ChartWidget::setAppearance(const ChartAppearance& appearance) {
    appearance_ = appearance;
    update();
}

void ChartWidget::paint(QPainter& painter, const QRectF& rect) const {
    paintChart(painter, rect, model_, appearance_);
}

void ChartWidget::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    paint(painter, QRectF(rect()));
}

}  // namespace sonalyx::chart
