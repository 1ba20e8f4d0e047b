#include "print/report_sheet_block.h"

#include <QPainter>
#include <algorithm>

#include "sheets/sheet_painter.h"

namespace sonalyx {

ReportSheetBlock::ReportSheetBlock(const SheetFonts& fonts, SheetPicture picture)
    : fonts_(fonts), picture_(std::move(picture)) {}

double ReportSheetBlock::Scale(double width) const {
    return picture_.width > 0 ? std::min(kScale, width / picture_.width) : kScale;
}

double ReportSheetBlock::Height(double width) const {
    return picture_.height * Scale(width);
}

void ReportSheetBlock::Paint(QPainter& painter, const QRectF& rect) const {
    painter.save();
    painter.translate(rect.topLeft());
    const double scale = Scale(rect.width());
    painter.scale(scale, scale);
    SheetPainter(fonts_, SheetColours::paper()).paint(painter, picture_);
    painter.restore();
}

}  // namespace sonalyx
