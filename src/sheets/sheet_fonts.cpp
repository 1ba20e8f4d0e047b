#include "sheets/sheet_fonts.h"

#include <QFontDatabase>
#include <cmath>

namespace sonalyx {

namespace {

constexpr int kTitlePixels = 21;    // 16 pt
constexpr int kHeadingPixels = 16;  // 12 pt
constexpr int kCellPixels = 13;     // 10 pt

std::size_t slot(SheetFont role) {
    return static_cast<std::size_t>(role);
}

QFont makeFont(const QString& family, int pixels, bool bold) {
    QFont font(family);
    font.setPixelSize(pixels);
    font.setBold(bold);
    font.setStyleHint(QFont::SansSerif);
    // Layout was measured without hinting; drawing must not move glyphs from where it put them.
    font.setHintingPreference(QFont::PreferNoHinting);
    return font;
}

QFont blackFont(int pixels) {
    if (QFontDatabase::hasFamily(QStringLiteral("Arial Black")))
        return makeFont(QStringLiteral("Arial Black"), pixels, true);
    return makeFont(SheetFonts::cellFamily(), pixels, true);
}

}  // namespace

QString SheetFonts::cellFamily() {
    static const QString family = QFontDatabase::hasFamily(QStringLiteral("Arial"))
                                      ? QStringLiteral("Arial")
                                      : QStringLiteral("Liberation Sans");
    return family;
}

SheetFonts::SheetFonts(SheetTextDecoder decoder) : decoder_(decoder) {
    fonts_[slot(SheetFont::Title)] = blackFont(kTitlePixels);
    fonts_[slot(SheetFont::Heading)] = blackFont(kHeadingPixels);
    fonts_[slot(SheetFont::Cell)] = makeFont(cellFamily(), kCellPixels, false);
    fonts_[slot(SheetFont::Memo)] = makeFont(cellFamily(), kCellPixels, false);
    for (const QFont& font : fonts_)
        metrics_.emplace_back(font);
}

const QFont& SheetFonts::font(SheetFont role) const {
    return fonts_[slot(role)];
}

QString SheetFonts::text(std::string_view bytes) const {
    const std::string copy(bytes);
    return decoder_ != nullptr ? decoder_(copy) : QString::fromStdString(copy);
}

const QFontMetricsF& SheetFonts::metrics(SheetFont role) const {
    return metrics_[slot(role)];
}

int SheetFonts::height(SheetFont role) const {
    return font(role).pixelSize();
}

int SheetFonts::width(std::string_view bytes, SheetFont role) const {
    if (bytes.empty())
        return 0;
    return static_cast<int>(std::ceil(metrics_[slot(role)].horizontalAdvance(text(bytes))));
}

}  // namespace sonalyx
