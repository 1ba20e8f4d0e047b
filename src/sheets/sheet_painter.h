#pragma once

#include <QColor>
#include <QImage>
#include <cstddef>
#include <vector>

#include "sheets/parameter_sheet.h"
#include "sheets/sheet_fonts.h"

class QPainter;

namespace sonalyx {

// Text and background of a sheet: silver on black on screen, black on white on paper. Cells
// that differ from a reference document are marked amber on screen; paper has no mark colours,
// so a printed sheet never carries the marks.
struct SheetColours {
    QColor text;
    QColor background;
    QColor markText;
    QColor markBackground;

    static SheetColours screen() {
        return {QColor(192, 192, 192), Qt::black, QColor(255, 200, 90), QColor(78, 52, 8)};
    }
    static SheetColours paper() { return {Qt::black, Qt::white, QColor(), QColor()}; }
};

// Draws a built sheet with the fonts it was measured with, on any painter: the picture on the
// Parameters tab, a print page, an SVG or a PDF all come from the same operations.
class SheetPainter {
  public:
    SheetPainter(const SheetFonts& fonts, SheetColours colours)
        : fonts_(fonts), colours_(colours) {}

    // The operations to mark (indices into the picture's operations, ascending), such as the
    // cells that differ from a reference. Drawn only with colours that have mark colours.
    void SetMarked(std::vector<std::size_t> ops) { marked_ = std::move(ops); }

    // Fills the sheet's rectangle (0, 0, width, height) and draws its texts, in sheet pixels;
    // scale the painter to fit another device.
    void paint(QPainter& painter, const SheetPicture& picture) const;
    // The sheet as a bitmap; a device pixel ratio above 1 keeps text crisp on dense screens.
    QImage image(const SheetPicture& picture, qreal devicePixelRatio = 1.0) const;

  private:
    void paintMark(QPainter& painter, const SheetOp& op, const QString& text) const;

    const SheetFonts& fonts_;
    SheetColours colours_;
    std::vector<std::size_t> marked_;
};

}  // namespace sonalyx
