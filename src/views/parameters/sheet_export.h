#pragma once

#include <QString>

#include "sheets/parameter_sheet.h"
#include "sheets/sheet_painter.h"

namespace sonalyx {

// A built parameter sheet written out: its text (.txt), a picture (.png) or vectors (.svg,
// .pdf) through the sheet's own draw operations. The command line's render and the program's
// export share it, so the two never disagree.
class SheetExport {
  public:
    // The picture and fonts are not copied: keep them alive while the export runs.
    SheetExport(const SheetPicture& picture, const SheetFonts& fonts, SheetColours colours);

    // The formats Save() knows by the file's suffix.
    static bool IsKnownSuffix(const QString& suffix);
    // Writes the file atomically in the format of its suffix; false with error set on failure
    // (the old file, or none, stays in place then).
    bool Save(const QString& path, QString& error) const;

  private:
    QByteArray PngBytes() const;
    QByteArray SvgBytes() const;
    QByteArray PdfBytes() const;

    const SheetPicture& picture_;
    SheetPainter painter_;
};

}  // namespace sonalyx
