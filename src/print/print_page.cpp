#include "print/print_page.h"

#include <QPainter>

namespace sonalyx {

PrintPage PrintPage::FromImage(const QImage& image) {
    PrintPage page;
    page.preview = image;
    if (image.isNull()) {
        return page;
    }
    page.size = image.size() / image.devicePixelRatio();
    page.paint = [image](QPainter& painter) {
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        painter.drawImage(QRectF(QPointF(0, 0), QSizeF(image.size() / image.devicePixelRatio())),
                          image);
    };
    return page;
}

}  // namespace sonalyx
