#include "sheets/sheet_painter.h"

#include <QPainter>
#include <algorithm>

namespace sonalyx {

namespace {

// An empty cell that differs (a value the reference has and this sheet lacks) still gets a
// mark this wide when its cell has no width of its own.
constexpr qreal kEmptyMarkWidth = 24;
constexpr qreal kMarkPadding = 3;
constexpr qreal kMarkRadius = 2;

}  // namespace

// A rounded box behind the text, a little wider than it, so neighbouring marks stay apart.
void SheetPainter::paintMark(QPainter& painter, const SheetOp& op, const QString& text) const {
    const QFontMetricsF& metrics = fonts_.metrics(op.font);
    QRectF box(op.textX, op.y, metrics.horizontalAdvance(text), metrics.height());
    if (text.isEmpty())
        box = QRectF(op.x, op.y, op.width > 0 ? op.width - 2 * kMarkPadding : kEmptyMarkWidth,
                     metrics.height());
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colours_.markBackground);
    painter.drawRoundedRect(box.adjusted(-kMarkPadding, 0, kMarkPadding, 1), kMarkRadius,
                            kMarkRadius);
    painter.restore();
}

void SheetPainter::paint(QPainter& painter, const SheetPicture& picture) const {
    painter.save();
    painter.fillRect(QRect(0, 0, picture.width, picture.height), colours_.background);
    painter.setRenderHint(QPainter::TextAntialiasing, true);
    const bool marks = colours_.markBackground.isValid() && !marked_.empty();
    auto nextMark = marked_.begin();
    for (std::size_t i = 0; i < picture.ops.size(); ++i) {
        const SheetOp& op = picture.ops[i];
        while (nextMark != marked_.end() && *nextMark < i)
            ++nextMark;
        const bool marked = marks && nextMark != marked_.end() && *nextMark == i;
        if (op.text.empty() && !marked)
            continue;
        painter.setFont(fonts_.font(op.font));
        const QFontMetricsF& metrics = fonts_.metrics(op.font);
        const QString text = fonts_.text(op.text);
        if (marked)
            paintMark(painter, op, text);
        painter.setPen(marked ? colours_.markText : colours_.text);
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
