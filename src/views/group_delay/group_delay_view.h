#pragma once

#include <QWidget>
#include <vector>

#include "document/measurement_document.h"
#include "views/chart/chart_widget.h"
#include "views/group_delay/group_delay_filler.h"

class QTableWidget;

namespace sonalyx {

// The Group Delay tab's content: Chart101, one curve per channel group over the 64 bands
// (or one band as bars), and below it a compact table of each group's minimum, maximum and
// mean. The document window tells it what to show.
class GroupDelayView : public QWidget {
    Q_OBJECT

  public:
    // One row of the statistics table: a group's minimum, maximum and mean delay (ms) before
    // and after calibration, for the variants that have data.
    struct GroupStatistics {
        QString name;
        QColor colour;
        bool has[kVariants] = {};
        double minimum[kVariants] = {};
        double maximum[kVariants] = {};
        double mean[kVariants] = {};
    };
    static std::vector<GroupStatistics> Statistics(const MeasurementDocument& document);
    // "1.25 ms", as the table shows a figure.
    static QString FigureText(double milliseconds);

    explicit GroupDelayView(const MeasurementDocument& document, QWidget* parent = nullptr);

    chart::ChartWidget* Chart101() const { return chart_; }
    QTableWidget* GroupDelayTable() const { return table_; }
    const Swatches& LegendSwatches() const { return swatches_; }

    // Refills the chart for the selection and repaints it.
    void RebuildCharts(const GroupDelaySelection& selection);
    // Where the curves come from, as ReverbView::SetSources says.
    void SetSources(const MeasurementDocument* values, const MeasurementDocument* overlay);
    // The statistics of the document's groups; false when no group has data.
    bool FillTable();

  signals:
    void Resized();

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void FitTable();

    const MeasurementDocument& document_;
    const MeasurementDocument* values_ = nullptr;
    const MeasurementDocument* overlay_ = nullptr;
    chart::ChartWidget* chart_ = nullptr;
    QTableWidget* table_ = nullptr;
    Swatches swatches_{};
};

}  // namespace sonalyx
