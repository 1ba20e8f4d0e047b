#pragma once

#include <QPixmap>
#include <QWidget>
#include <optional>

#include "views/chart/chart_model.h"
#include "views/chart/chart_painter.h"
#include "views/chart/chart_projection.h"
#include "views/chart/chart_readout.h"

namespace sonalyx::chart {

// A widget that shows one ChartModel. Views change the model and call update(); they never
// draw themselves. Hovering reads the nearest point off the chart: a crosshair and a ring
// drawn over a cached picture of the chart, the values in a tool tip and in readoutChanged.
class ChartWidget : public QWidget {
    Q_OBJECT

  public:
    explicit ChartWidget(QWidget* parent = nullptr);

    // Asking for the model to change it also retires the cached picture.
    ChartModel& model() {
        cacheValid_ = false;
        return model_;
    }
    const ChartModel& model() const { return model_; }
    void setAppearance(const ChartAppearance& appearance);
    const ChartAppearance& appearance() const { return appearance_; }
    // How the readout words a point; empty for the default (units from the axis titles).
    void setReadoutFormatter(ReadoutFormatter formatter);
    const Readout& readout() const { return readout_; }
    // How often the chart itself has been drawn on screen (the crosshair is drawn over it).
    int cacheRenders() const { return cacheRenders_; }

    // Draws the chart as the widget shows it, into any painter (capture, SVG, PDF, printer).
    void paint(QPainter& painter, const QRectF& rect) const;

  signals:
    // The readout's text, or an empty text when the mouse leaves the plot.
    void readoutChanged(const QString& text);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    void renderCache();
    void setReadout(Readout readout);

    ChartModel model_;
    ChartAppearance appearance_;
    ReadoutFormatter formatter_;
    QPixmap cache_;
    bool cacheValid_ = false;
    bool hovering_ = false;  // the mouse has moved over the chart and not left it
    std::optional<ChartProjection> projection_;  // of the cached picture
    Readout readout_;
    int cacheRenders_ = 0;
};

}  // namespace sonalyx::chart
