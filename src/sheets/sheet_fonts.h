#pragma once

#include <QFont>
#include <QFontMetricsF>
#include <QString>
#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "sheets/text_metrics.h"

namespace sonalyx {

// Turns document bytes into display text (the views show memo bytes as UTF-8 when they are
// valid UTF-8, otherwise as Windows-1252).
using SheetTextDecoder = QString (*)(const std::string& bytes);

// The sheet's fonts and their measurements: "Arial" (and "Arial Black") where installed,
// otherwise the metric-compatible Liberation Sans, with bold standing in for the black face.
// Sizes are fixed in pixels (10, 12 and 16 points at 96 dpi) so a sheet measures the same on
// every screen and scales as a whole on paper. Headings are underlined by the painter, since
// not every paint device draws a font's underline.
class SheetFonts : public TextMetrics {
  public:
    explicit SheetFonts(SheetTextDecoder decoder = nullptr);

    const QFont& font(SheetFont role) const;
    const QFontMetricsF& metrics(SheetFont role) const;
    QString text(std::string_view bytes) const;

    int height(SheetFont role) const override;
    int width(std::string_view bytes, SheetFont role) const override;

    // The family the cells are drawn in.
    static QString cellFamily();

  private:
    SheetTextDecoder decoder_;
    std::array<QFont, 4> fonts_;
    std::vector<QFontMetricsF> metrics_;  // by role, made once: a sheet measures every cell
};

}  // namespace sonalyx
