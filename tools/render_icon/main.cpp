// sonalyx-render-icon: draws the program's SVG icon as a square PNG of the size the icon theme
// wants, so that the bitmaps in the package are always made from the one drawing.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 4) {
        std::fprintf(stderr, "usage: sonalyx-render-icon IN.svg SIZE OUT.png\n");
        return 2;
    }
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication app(argc, argv);
    QSvgRenderer svg(QString::fromLocal8Bit(argv[1]));
    bool sizeOk = false;
    const int size = QByteArray(argv[2]).toInt(&sizeOk);
    if (!svg.isValid() || !sizeOk || size < 1 || size > 1024) {
        std::fprintf(stderr, "sonalyx-render-icon: cannot draw %s at %s px\n", argv[1], argv[2]);
        return 1;
    }
    QImage image(size, size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    svg.render(&painter, QRectF(0, 0, size, size));
    painter.end();
    if (!image.save(QString::fromLocal8Bit(argv[3]), "PNG")) {
        std::fprintf(stderr, "sonalyx-render-icon: cannot write %s\n", argv[3]);
        return 1;
    }
    return 0;
}
