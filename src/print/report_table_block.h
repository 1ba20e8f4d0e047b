#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <vector>

#include "print/report_block.h"

namespace sonalyx {

// A table with a shaded header row: columns share the width by their weights, the first
// column is left-aligned and the figures right-aligned. A row may carry a colour swatch
// before its first cell (the curve it stands for). Long tables are made of several of these,
// each repeating the header, so that no part is cut across a page.
class ReportTableBlock : public ReportBlock {
  public:
    struct Row {
        QStringList cells;
        QColor swatch;  // invalid: none
    };

    ReportTableBlock(QStringList header, std::vector<double> weights);
    void AddRow(QStringList cells, QColor swatch = QColor());
    // Every column left-aligned: a table of names and texts rather than figures.
    void SetTextColumns() { textColumns_ = true; }
    int RowCount() const { return static_cast<int>(rows_.size()); }

    // The table as blocks of at most maxRows rows each, every block with the header.
    static std::vector<ReportTableBlock> Split(const ReportTableBlock& table, int maxRows);

    double Height(double width) const override;
    void Paint(QPainter& painter, const QRectF& rect) const override;

    static constexpr double kRowHeight = 13;

  private:
    void PaintRow(QPainter& painter, const QRectF& rect, const QStringList& cells,
                  const QColor& swatch) const;

    QStringList header_;
    std::vector<double> weights_;
    std::vector<Row> rows_;
    bool textColumns_ = false;
};

}  // namespace sonalyx
