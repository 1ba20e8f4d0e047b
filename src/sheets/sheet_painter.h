#pragma once

#include <QColor>
#include <QImage>

#include "sheets/parameter_sheet.h"
#include "sheets/sheet_fonts.h"

class QPainter;

namespace sonalyx {

// Text and background of a sheet: silver on black on screen, black on white on paper.
struct SheetColours {
    QColor text;
    QColor background;

    static SheetColours screen() { return {QColor(192, 192, 192), Qt::black}; }
    static SheetColours paper() { return {Qt::black, Qt::white}; }
};

// Draws a built sheet with the fonts it was measured with, on any painter: the picture on the
// Parameters tab, a print page, an SVG or a PDF all come from the same operations.
class SheetPainter {
  public:
    SheetPainter(const SheetFonts& fonts, SheetColours colours)
        : fonts_(fonts), colours_(colours) {}

    // Fills the sheet's rectangle (0, 0, width, height) and draws its texts, in sheet pixels;
    // scale the painter to fit another device.
    void paint(QPainter& painter, const SheetPicture& picture) const;
    // The sheet as a bitmap; a device pixel ratio above 1 keeps text crisp on dense screens.
    QImage image(const SheetPicture& picture, qreal devicePixelRatio = 1.0) const;

  private:
    const SheetFonts& fonts_;
    SheetColours colours_;
};

}  // namespace sonalyx
