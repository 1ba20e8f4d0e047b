#include "print/report_table_block.h"

#include <QPainter>
#include <numeric>

#include "print/report_style.h"

namespace sonalyx {

namespace {

constexpr double kPadding = 4;
constexpr double kSwatchWidth = 10;

}  // namespace

ReportTableBlock::ReportTableBlock(QStringList header, std::vector<double> weights)
    : header_(std::move(header)), weights_(std::move(weights)) {
    weights_.resize(static_cast<std::size_t>(header_.size()), 1.0);
}

void ReportTableBlock::AddRow(QStringList cells, QColor swatch) {
    rows_.push_back({std::move(cells), swatch});
}

std::vector<ReportTableBlock> ReportTableBlock::Split(const ReportTableBlock& table, int maxRows) {
    std::vector<ReportTableBlock> parts;
    for (std::size_t first = 0; first < table.rows_.size();
         first += static_cast<std::size_t>(maxRows)) {
        ReportTableBlock part(table.header_, table.weights_);
        part.textColumns_ = table.textColumns_;
        const std::size_t end =
            std::min(table.rows_.size(), first + static_cast<std::size_t>(maxRows));
        part.rows_.assign(table.rows_.begin() + static_cast<std::ptrdiff_t>(first),
                          table.rows_.begin() + static_cast<std::ptrdiff_t>(end));
        parts.push_back(std::move(part));
    }
    return parts;
}

double ReportTableBlock::Height(double) const {
    return kRowHeight * static_cast<double>(rows_.size() + 1);
}

void ReportTableBlock::Paint(QPainter& painter, const QRectF& rect) const {
    painter.save();
    QRectF row(rect.left(), rect.top(), rect.width(), kRowHeight);
    painter.fillRect(row, ReportStyle::Shade());
    painter.setFont(ReportStyle::Font(ReportStyle::kSmallSize, true));
    PaintRow(painter, row, header_, QColor());
    painter.setFont(ReportStyle::Font(ReportStyle::kSmallSize));
    painter.setPen(QPen(ReportStyle::Rule(), 0.5));
    for (const Row& r : rows_) {
        row.translate(0, kRowHeight);
        PaintRow(painter, row, r.cells, r.swatch);
        painter.setPen(QPen(ReportStyle::Rule(), 0.5));
        painter.drawLine(row.bottomLeft(), row.bottomRight());
    }
    painter.restore();
}

void ReportTableBlock::PaintRow(QPainter& painter, const QRectF& rect, const QStringList& cells,
                                const QColor& swatch) const {
    const double total = std::accumulate(weights_.begin(), weights_.end(), 0.0);
    double x = rect.left();
    painter.setPen(ReportStyle::Ink());
    for (int c = 0; c < cells.size() && c < static_cast<int>(weights_.size()); ++c) {
        const double width = rect.width() * weights_[static_cast<std::size_t>(c)] / total;
        QRectF cell(x + kPadding, rect.top(), width - 2 * kPadding, rect.height());
        if (c == 0 && swatch.isValid()) {
            painter.fillRect(QRectF(cell.left(), rect.center().y() - 2.5, kSwatchWidth, 5), swatch);
            cell.setLeft(cell.left() + kSwatchWidth + kPadding);
        }
        const bool left = c == 0 || textColumns_;
        painter.drawText(cell, (left ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter,
                         cells[c]);
        x += width;
    }
}

}  // namespace sonalyx
