#pragma once

#include "print/report_block.h"
#include "sheets/parameter_sheet.h"
#include "sheets/sheet_fonts.h"

namespace sonalyx {

// Parameter tables drawn by the sheet painter, black on white, at a size that keeps the cells
// readable on paper: a sheet pixel is three quarters of a point, so the 10 pt cells of the
// screen come out at 10 pt.
class ReportSheetBlock : public ReportBlock {
  public:
    static constexpr double kScale = 0.75;

    ReportSheetBlock(const SheetFonts& fonts, SheetPicture picture);

    double Height(double width) const override;
    void Paint(QPainter& painter, const QRectF& rect) const override;
    double SpaceAfter() const override { return 4; }

  private:
    // Narrower than the sheet's own width when the column is: never cut a table at the side.
    double Scale(double width) const;

    const SheetFonts& fonts_;
    SheetPicture picture_;
};

}  // namespace sonalyx
