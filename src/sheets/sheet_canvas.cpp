#include "sheets/sheet_canvas.h"

namespace sonalyx {

namespace {

constexpr int kHeadingGap = 8;
constexpr int kRowGap = 3;

}  // namespace

void SheetCanvas::record(const std::string& text, int width, SheetAlign align, SheetFont font,
                         bool endsRow) {
    SheetOp op;
    op.text = text;
    op.x = penX;
    op.y = penY;
    op.width = width;
    op.align = align;
    op.font = font;
    op.textX = align == SheetAlign::Right ? penX + width - metrics_.width(text, font) : penX;
    op.endsRow = endsRow;
    ops_.push_back(std::move(op));
}

void SheetCanvas::endRow(SheetFont font, int left) {
    penX = left;
    penY += metrics_.height(font) + kRowGap;
}

void SheetCanvas::DrawTitle(const std::string& text) {
    penX = kTitleX;
    penY = kTitleY;
    record(text, 0, SheetAlign::Left, SheetFont::Title, true);
    penX = kLeftMargin;
    penY = kTopAfterTitle;
}

void SheetCanvas::DrawHeading(const std::string& text) {
    record(text, 0, SheetAlign::Left, SheetFont::Heading, true);
    penY += metrics_.height(SheetFont::Heading) + kHeadingGap;
}

void SheetCanvas::DrawCell(const std::string& text, int width) {
    record(text, width, SheetAlign::Left, SheetFont::Cell, false);
    penX += width;
}

void SheetCanvas::DrawCellRight(const std::string& text, int width) {
    record(text, width, SheetAlign::Right, SheetFont::Cell, false);
    penX += width;
}

void SheetCanvas::DrawLine(const std::string& text) {
    record(text, 0, SheetAlign::Left, SheetFont::Cell, true);
    penY += metrics_.height(SheetFont::Cell) + kRowGap;
}

void SheetCanvas::DrawLastCell(const std::string& text, int left) {
    record(text, 0, SheetAlign::Left, SheetFont::Cell, true);
    endRow(SheetFont::Cell, left);
}

void SheetCanvas::DrawLastCellRight(const std::string& text, int width, int left) {
    record(text, width, SheetAlign::Right, SheetFont::Cell, true);
    endRow(SheetFont::Cell, left);
}

void SheetCanvas::DrawMemoLine(const std::string& text, int left) {
    record(text, 0, SheetAlign::Left, SheetFont::Memo, true);
    endRow(SheetFont::Memo, left);
}

}  // namespace sonalyx
