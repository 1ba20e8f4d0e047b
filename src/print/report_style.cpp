#include "print/report_style.h"

namespace sonalyx {

QFont ReportStyle::Font(int points, bool bold) {
    QFont font(QStringLiteral("Arial"));
    font.setStyleHint(QFont::SansSerif);
    // Painted at 72 units per inch, a pixel is a point; pixel sizes keep the measure exact.
    font.setPixelSize(points);
    font.setBold(bold);
    // Measured without a device, drawn on a PDF: no hinting keeps the two the same.
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

}  // namespace sonalyx
