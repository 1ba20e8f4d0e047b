#include "app/brand_art.h"

#include <QLinearGradient>
#include <QPainter>
#include <QPainterPath>
#include <QRadialGradient>
#include <cmath>

#include "sonalyx_version.h"

namespace {

const QColor kDeepBlue(14, 26, 46);
const QColor kMidBlue(28, 62, 104);
const QColor kAccent(255, 170, 60);

// One decay curve: a fast early drop easing into a slow tail.
QPainterPath decayCurve(const QRectF& area, double depth, double seed) {
    QPainterPath path;
    constexpr int kPoints = 48;
    for (int i = 0; i <= kPoints; ++i) {
        const double t = static_cast<double>(i) / kPoints;
        const double level = std::exp(-t * (3.2 + depth * 1.6)) * (0.82 - depth * 0.25) +
                             0.04 * std::sin(t * 19.0 + seed) * (1.0 - t);
        const QPointF point(area.left() + t * area.width(),
                            area.bottom() - std::max(0.0, level) * area.height());
        if (i == 0) {
            path.moveTo(point);
        } else {
            path.lineTo(point);
        }
    }
    return path;
}

void drawWaterfall(QPainter& painter, const QRectF& area, int curves, double penWidth) {
    static const QColor colours[] = {{248, 0, 0},    {232, 72, 8},   {248, 160, 40},
                                     {192, 216, 56}, {0, 216, 112},  {0, 104, 224},
                                     {80, 144, 248}, {144, 88, 208}, {160, 16, 124}};
    const QPointF step(area.width() * 0.045, -area.height() * 0.06);
    for (int i = curves - 1; i >= 0; --i) {
        const QRectF shifted = area.translated(step * i);
        QColor colour = colours[i % 9];
        colour.setAlpha(230 - i * 12);
        painter.setPen(QPen(colour, penWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.drawPath(decayCurve(shifted, static_cast<double>(i) / curves, i * 1.7));
    }
}

}  // namespace

QPixmap BrandArt::Splash(const QSize& size) {
    QPixmap pixmap(size);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF all(QPointF(0, 0), QSizeF(size));

    QLinearGradient back(all.topLeft(), all.bottomRight());
    back.setColorAt(0, kMidBlue);
    back.setColorAt(1, kDeepBlue);
    painter.fillRect(all, back);
    QRadialGradient glow(all.width() * 0.72, all.height() * 0.35, all.width() * 0.55);
    glow.setColorAt(0, QColor(90, 150, 220, 70));
    glow.setColorAt(1, QColor(0, 0, 0, 0));
    painter.fillRect(all, glow);

    painter.setPen(QPen(QColor(255, 255, 255, 22), 1));
    for (int x = 0; x < size.width(); x += 18) {
        painter.drawLine(QPointF(x, all.height() * 0.42), QPointF(x, all.height() * 0.94));
    }
    drawWaterfall(
        painter,
        QRectF(all.width() * 0.40, all.height() * 0.46, all.width() * 0.42, all.height() * 0.40), 9,
        2.0);

    QFont font(QStringLiteral("Sans Serif"));
    font.setPixelSize(static_cast<int>(size.height() * 0.055));
    font.setLetterSpacing(QFont::AbsoluteSpacing, 3);
    painter.setFont(font);
    painter.setPen(QColor(180, 205, 235));
    painter.drawText(QPointF(all.width() * 0.07, all.height() * 0.20), QStringLiteral("VELTRONA"));

    font.setLetterSpacing(QFont::AbsoluteSpacing, 0);
    font.setPixelSize(static_cast<int>(size.height() * 0.20));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QPointF(all.width() * 0.065, all.height() * 0.42), QStringLiteral("Sonalyx"));

    painter.setPen(QPen(kAccent, 3));
    painter.drawLine(QPointF(all.width() * 0.07, all.height() * 0.48),
                     QPointF(all.width() * 0.30, all.height() * 0.48));

    font.setBold(false);
    font.setPixelSize(static_cast<int>(size.height() * 0.052));
    painter.setFont(font);
    painter.setPen(QColor(200, 215, 235));
    painter.drawText(QPointF(all.width() * 0.07, all.height() * 0.58),
                     QStringLiteral("Room calibration"));
    painter.drawText(QPointF(all.width() * 0.07, all.height() * 0.65),
                     QStringLiteral("measurement viewer"));

    font.setPixelSize(static_cast<int>(size.height() * 0.045));
    painter.setFont(font);
    painter.setPen(QColor(150, 170, 200));
    painter.drawText(QRectF(0, all.height() * 0.88, all.width() * 0.95, all.height() * 0.1),
                     Qt::AlignRight | Qt::AlignVCenter, QStringLiteral("Version " SONALYX_VERSION));
    painter.setPen(QPen(QColor(255, 255, 255, 60), 1));
    painter.drawRect(all.adjusted(0.5, 0.5, -0.5, -0.5));
    return pixmap;
}

QPixmap BrandArt::Icon(int size) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF all(0, 0, size, size);
    const QRectF tile = all.adjusted(size * 0.04, size * 0.04, -size * 0.04, -size * 0.04);
    QLinearGradient back(tile.topLeft(), tile.bottomRight());
    back.setColorAt(0, kMidBlue.lighter(130));
    back.setColorAt(1, kDeepBlue);
    painter.setPen(Qt::NoPen);
    painter.setBrush(back);
    painter.drawRoundedRect(tile, size * 0.18, size * 0.18);
    const int curves = size >= 32 ? 4 : 3;
    drawWaterfall(painter, QRectF(size * 0.16, size * 0.36, size * 0.56, size * 0.46), curves,
                  std::max(1.2, size / 22.0));
    return pixmap;
}

QIcon BrandArt::ApplicationIcon() {
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128, 256}) {
        icon.addPixmap(Icon(size));
    }
    return icon;
}

QPixmap BrandArt::Logo(int height) {
    const int width = height * 4;
    QPixmap pixmap(width, height);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.drawPixmap(0, 0, Icon(height));
    QFont font(QStringLiteral("Sans Serif"));
    font.setPixelSize(static_cast<int>(height * 0.50));
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(QColor(40, 60, 90));
    painter.drawText(QRectF(height * 1.15, 0, width - height * 1.15, height),
                     Qt::AlignVCenter | Qt::AlignLeft, QStringLiteral("Sonalyx"));
    return pixmap;
}
