#pragma once

#include <QString>

#include "print/report_block.h"
#include "views/chart/chart_model.h"

namespace sonalyx {

// A chart on paper: its caption, the chart drawn through the chart painter in its paper look,
// a key of its curves (solid and dashed told apart in words, since colours repeat) and the
// memo that goes with it.
class ReportChartBlock : public ReportBlock {
  public:
    ReportChartBlock(QString caption, chart::ChartModel model, double chartHeight);
    // What the solid and the dashed curves are ("before calibration", "after calibration").
    void SetLineKey(QString solid, QString dashed);
    void SetMemo(QString memo) { memo_ = std::move(memo); }

    double Height(double width) const override;
    void Paint(QPainter& painter, const QRectF& rect) const override;
    double SpaceAfter() const override { return 14; }

  private:
    double KeyHeight(double width) const;
    double MemoHeight(double width) const;
    void PaintKey(QPainter& painter, const QRectF& rect) const;

    QString caption_;
    chart::ChartModel model_;
    double chartHeight_;
    QString solid_;
    QString dashed_;
    QString memo_;
};

}  // namespace sonalyx
