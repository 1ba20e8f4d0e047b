#pragma once

#include <QWidget>
#include <array>

#include "document/measurement_document.h"
#include "views/chart/chart_widget.h"
#include "views/reverb/reverb_filler.h"

class QLabel;
class QPlainTextEdit;
class QScrollArea;

namespace sonalyx {

// The Reverb tab's charts: Chart1 ... Chart15 in ScrollBox1, each with its title and its
// channel memo over the lower left corner, and LabelNoData for a document without reverb
// data. The document window tells it what to show; it lays the charts out and fills them.
class ReverbView : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kCharts = 15;

    ReverbView(MeasurementDocument& document, QWidget* parent = nullptr);

    chart::ChartWidget* Chart(int index) const { return charts_.at(index); }
    QScrollArea* ScrollBox1() const { return scrollBox1_; }
    QLabel* LabelNoData() const { return labelNoData_; }
    QPlainTextEdit* ChannelMemo(int index) const { return memos_.at(index); }
    QLabel* ChartTitle(int index) const { return titles_.at(index); }
    const Swatches& LegendSwatches() const { return swatches_; }

    // Redraws every chart for the selection; comboIndex 0 is "ALL", k the k-th entry.
    void RebuildCharts(const ReverbSelection& selection, int comboIndex);
    // Sizes and places the charts: one large chart, or count charts in rows of three.
    void LayoutCharts(bool allCharts, int count);
    // Ch-mode line fill of chart index with the item of the current list.
    void FillLineChart(int chart, int item, bool hasData, bool allCharts);
    void FillLineChartByBand(int chart, int band);
    void FillBarChart(int chart, int item, bool hasData, bool allCharts);
    void FillBarChartByBand(int chart, int band);
    // The layout again at the current size, after the scroll box was resized.
    void Relayout();
    // Paper look for a printed capture: white behind the charts, black titles, memos as ink
    // on paper. The charts' own appearance is the document window's to switch.
    void SetPaperLook(bool paper);
    // Where the curves come from: values (the document itself unless a comparison shows
    // differences) and, when not null, a reference shaped like the document whose curves are
    // drawn dashed beside them. Both must outlive the view or be set again.
    void SetSources(const MeasurementDocument* values, const MeasurementDocument* overlay);

  signals:
    // A channel or group memo was edited; the document already holds the new text.
    void MemoEdited();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void InitChartDesign(chart::ChartModel& model, int index);
    void ShowChart(int chart, bool visible);
    void ShowMemo(int chart, int item, bool visible);
    void ShowBandTitle(int chart, int band);
    void PlaceOverlays(int chart);
    // The axis numbers give way to a channel memo that holds a note.
    void KeepLabelsClear(int chart);
    void StoreMemo(int chart);
    const MeasurementDocument& Values() const { return values_ ? *values_ : document_; }
    // Fills a chart with fill(filler, model, swatches, false) from the values, then with
    // fill(..., true) from the overlay into the chart's reference series.
    template <typename Fill>
    void FillWithOverlay(int chart, const Fill& fill);

    MeasurementDocument& document_;
    const MeasurementDocument* values_ = nullptr;
    const MeasurementDocument* overlay_ = nullptr;
    ReverbSelection selection_;
    QScrollArea* scrollBox1_ = nullptr;
    QWidget* content_ = nullptr;
    QLabel* labelNoData_ = nullptr;
    std::array<chart::ChartWidget*, kCharts> charts_{};
    std::array<QLabel*, kCharts> titles_{};
    std::array<QPlainTextEdit*, kCharts> memos_{};
    std::array<int, kCharts> memoItems_{};
    Swatches swatches_{};
    bool allCharts_ = true;
    int layoutCount_ = 0;
    bool filling_ = false;
    bool paper_ = false;
};

}  // namespace sonalyx
