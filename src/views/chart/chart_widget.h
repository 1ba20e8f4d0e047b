#pragma once

#include <QWidget>

#include "views/chart/chart_model.h"
#include "views/chart/chart_painter.h"

namespace sonalyx::chart {

// A widget that shows one ChartModel. Views change the model and call update(); they never
// draw themselves.
class ChartWidget : public QWidget {
    Q_OBJECT

  public:
    explicit ChartWidget(QWidget* parent = nullptr);

    ChartModel& model() { return model_; }
    const ChartModel& model() const { return model_; }
    void setAppearance(const ChartAppearance& appearance);
    const ChartAppearance& appearance() const { return appearance_; }

    // Draws the chart as the widget shows it, into any painter (capture, SVG, PDF, printer).
    void paint(QPainter& painter, const QRectF& rect) const;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    ChartModel model_;
    ChartAppearance appearance_;
};

}  // namespace sonalyx::chart
