#include "sheets/sheet_painter.h"

#include <QPainter>
#include <algorithm>

namespace sonalyx {

void SheetPainter::paint(QPainter& painter, const SheetPicture& picture) const {
    painter.save();
    painter.fillRect(QRect(0, 0, picture.width, picture.height), colours_.background);
    painter.setPen(colours_.text);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    for (const SheetOp& op : picture.ops) {
        if (op.text.empty())
            continue;
        painter.setFont(fonts_.font(op.font));
        const QFontMetricsF& metrics = fonts_.metrics(op.font);
        const QString text = fonts_.text(op.text);
        // Operations give the top of the row; text is drawn from its baseline.
        const qreal baseline = op.y + metrics.ascent();
        painter.drawText(QPointF(op.textX, baseline), text);
        if (op.font == SheetFont::Heading) {
            const qreal thickness = std::max<qreal>(metrics.lineWidth(), 1.0);
            painter.fillRect(QRectF(op.textX, baseline + metrics.underlinePos(),
                                    metrics.horizontalAdvance(text), thickness),
                             colours_.text);
        }
    }
    painter.restore();
}

QImage SheetPainter::image(const SheetPicture& picture, qreal devicePixelRatio) const {
    const qreal ratio = std::max<qreal>(devicePixelRatio, 1.0);
    const QSize size(std::max(picture.width, 1), std::max(picture.height, 1));
    QImage image((QSizeF(size) * ratio).toSize(), QImage::Format_RGB32);
    image.setDevicePixelRatio(ratio);
    image.fill(colours_.background);
    QPainter painter(&image);
    paint(painter, picture);
    return image;
}

}  // namespace sonalyx
