#include "app/tool_icons.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace {

// Everything is drawn on a 32 x 32 grid and scaled.
constexpr double kGrid = 32.0;
const QColor kInk(52, 62, 78);
const QColor kPaper(250, 251, 253);
const QColor kBlue(45, 120, 210);
const QColor kAmber(236, 160, 40);
const QColor kGreen(40, 165, 100);
const QColor kRed(215, 60, 50);

QPen ink(double width = 2.0) {
    return QPen(kInk, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void page(QPainter& p, const QRectF& r) {
    p.setPen(ink(1.6));
    p.setBrush(kPaper);
    p.drawRoundedRect(r, 1.5, 1.5);
}

void window(QPainter& p, const QRectF& r, const QColor& bar) {
    page(p, r);
    p.setPen(Qt::NoPen);
    p.setBrush(bar);
    p.drawRect(QRectF(r.left() + 0.8, r.top() + 0.8, r.width() - 1.6, 4.5));
}

void drawOpen(QPainter& p) {
    p.setPen(ink(1.6));
    p.setBrush(kAmber.lighter(120));
    p.drawPolygon(QPolygonF({{3, 8}, {12, 8}, {15, 11}, {28, 11}, {28, 26}, {3, 26}}));
    p.setBrush(kAmber);
    p.drawPolygon(QPolygonF({{6, 15}, {31, 15}, {27, 26}, {3, 26}}));
}

void drawSave(QPainter& p) {
    p.setPen(ink(1.6));
    p.setBrush(kBlue);
    p.drawPolygon(QPolygonF({{4, 4}, {24, 4}, {28, 8}, {28, 28}, {4, 28}}));
    p.setBrush(kPaper);
    p.drawRect(QRectF(9, 4, 13, 8));
    p.drawRect(QRectF(8, 17, 16, 11));
    p.setPen(ink(1.2));
    p.drawLine(QPointF(11, 21), QPointF(21, 21));
    p.drawLine(QPointF(11, 24), QPointF(21, 24));
}

void drawReceive(QPainter& p) {
    p.setPen(ink(1.6));
    p.setBrush(QColor(90, 100, 115));
    p.drawRoundedRect(QRectF(3, 19, 26, 9), 2, 2);
    p.setPen(Qt::NoPen);
    p.setBrush(kGreen);
    p.drawEllipse(QPointF(8, 23.5), 1.8, 1.8);
    p.setBrush(kPaper);
    p.drawRect(QRectF(13, 22.5, 12, 2));
    p.setPen(QPen(kBlue, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawLine(QPointF(16, 3), QPointF(16, 14));
    p.drawPolyline(QPolygonF({{11, 10}, {16, 15}, {21, 10}}));
}

void drawPrint(QPainter& p) {
    page(p, QRectF(9, 3, 14, 10));
    p.setPen(ink(1.6));
    p.setBrush(QColor(120, 130, 145));
    p.drawRoundedRect(QRectF(3, 12, 26, 11), 2, 2);
    page(p, QRectF(8, 19, 16, 10));
    p.setPen(ink(1.0));
    p.drawLine(QPointF(11, 23), QPointF(21, 23));
    p.drawLine(QPointF(11, 26), QPointF(18, 26));
    p.setPen(Qt::NoPen);
    p.setBrush(kGreen);
    p.drawEllipse(QPointF(25, 15.5), 1.4, 1.4);
}

void drawPreview(QPainter& p) {
    page(p, QRectF(4, 3, 18, 24));
    p.setPen(ink(1.0));
    for (int y = 8; y <= 16; y += 4) {
        p.drawLine(QPointF(8, y), QPointF(18, y));
    }
    p.setPen(ink(2.2));
    p.setBrush(QColor(200, 225, 250, 220));
    p.drawEllipse(QPointF(19, 19), 6, 6);
    p.setPen(QPen(kInk, 3.2, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(23.5, 23.5), QPointF(29, 29));
}

// A picture leaving its page: an arrow out of a small chart.
void drawExport(QPainter& p) {
    page(p, QRectF(3, 6, 19, 22));
    p.setPen(QPen(kGreen, 1.8, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    p.drawPolyline(QPolygonF({{6, 23}, {10, 17}, {13, 20}, {18, 12}}));
    p.setPen(QPen(kBlue, 3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.drawLine(QPointF(17, 9), QPointF(28, 9));
    p.drawPolyline(QPolygonF({{24, 4.5}, {28.5, 9}, {24, 13.5}}));
}

void drawCut(QPainter& p) {
    p.setPen(ink(1.8));
    p.drawLine(QPointF(9, 3), QPointF(20, 21));
    p.drawLine(QPointF(23, 3), QPointF(12, 21));
    p.setPen(QPen(kRed, 2.2));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(9, 24), 4.5, 4.5);
    p.drawEllipse(QPointF(23, 24), 4.5, 4.5);
}

void drawCopy(QPainter& p) {
    page(p, QRectF(4, 3, 15, 19));
    page(p, QRectF(13, 10, 15, 19));
    p.setPen(ink(1.0));
    for (int y = 15; y <= 24; y += 3) {
        p.drawLine(QPointF(16, y), QPointF(25, y));
    }
}

void drawPaste(QPainter& p) {
    p.setPen(ink(1.6));
    p.setBrush(kAmber);
    p.drawRoundedRect(QRectF(4, 5, 20, 24), 2, 2);
    p.setBrush(QColor(160, 170, 185));
    p.drawRoundedRect(QRectF(9, 2, 10, 6), 1.5, 1.5);
    page(p, QRectF(13, 12, 15, 17));
}

void drawGraph(QPainter& p, bool depth) {
    p.setPen(ink(1.6));
    p.drawLine(QPointF(4, 4), QPointF(4, 28));
    p.drawLine(QPointF(4, 28), QPointF(29, 28));
    const QColor colours[] = {kRed, kAmber, kGreen, kBlue};
    const int curves = depth ? 4 : 2;
    for (int i = curves - 1; i >= 0; --i) {
        const QPointF shift = depth ? QPointF(i * 3.0, -i * 3.0) : QPointF(0, i * 5.0);
        QPainterPath path(QPointF(6, 9) + shift);
        path.cubicTo(QPointF(10, 22) + shift, QPointF(14, 23) + shift, QPointF(22, 25) + shift);
        p.setPen(QPen(colours[i], 2.2, Qt::SolidLine, Qt::RoundCap));
        p.setBrush(Qt::NoBrush);
        p.drawPath(path);
    }
    QFont font;
    font.setPixelSize(10);
    font.setBold(true);
    p.setFont(font);
    p.setPen(kInk);
    p.drawText(QRectF(15, 2, 16, 12), Qt::AlignRight | Qt::AlignTop,
               depth ? QStringLiteral("3D") : QStringLiteral("2D"));
}

void drawCascade(QPainter& p) {
    window(p, QRectF(3, 3, 17, 13), kBlue.lighter(130));
    window(p, QRectF(8, 9, 17, 13), kBlue.lighter(115));
    window(p, QRectF(13, 15, 17, 13), kBlue);
}

void drawTile(QPainter& p, bool vertical) {
    if (vertical) {
        window(p, QRectF(3, 4, 12, 24), kBlue);
        window(p, QRectF(17, 4, 12, 24), kBlue);
    } else {
        window(p, QRectF(3, 3, 26, 12), kBlue);
        window(p, QRectF(3, 17, 26, 12), kBlue);
    }
}

void drawArrange(QPainter& p) {
    for (int i = 0; i < 3; ++i) {
        window(p, QRectF(3 + i * 9.5, 20, 8, 8), kBlue);
    }
    p.setPen(QPen(kInk, 1.2, Qt::DashLine));
    p.setBrush(Qt::NoBrush);
    p.drawRect(QRectF(3, 3, 26, 13));
}

void drawDemo(QPainter& p) {
    p.setPen(QPen(kBlue, 2.6, Qt::SolidLine, Qt::RoundCap));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(5, 5, 22, 22), 30 * 16, 280 * 16);
    p.setBrush(kBlue);
    p.setPen(Qt::NoPen);
    p.drawPolygon(QPolygonF({{24, 4}, {28, 13}, {19, 12}}));
    p.setBrush(kAmber);
    p.drawPolygon(QPolygonF({{13, 11}, {21, 16}, {13, 21}}));
}

// A decay curve with the axis closing in on it from above and below.
void drawFit(QPainter& p) {
    page(p, QRectF(3, 8, 26, 16));
    p.setPen(QPen(kRed, 2.0, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    p.setBrush(Qt::NoBrush);
    QPainterPath curve(QPointF(6, 11));
    curve.cubicTo(QPointF(11, 17), QPointF(16, 20), QPointF(26, 21));
    p.drawPath(curve);
    p.setPen(Qt::NoPen);
    p.setBrush(kBlue);
    p.drawPolygon(QPolygonF({{11, 1}, {21, 1}, {16, 6.5}}));
    p.drawPolygon(QPolygonF({{11, 31}, {21, 31}, {16, 25.5}}));
}

void draw(QPainter& p, ToolIcons::Kind kind) {
    switch (kind) {
        case ToolIcons::Open:
            return drawOpen(p);
        case ToolIcons::Save:
            return drawSave(p);
        case ToolIcons::Receive:
            return drawReceive(p);
        case ToolIcons::Print:
            return drawPrint(p);
        case ToolIcons::Preview:
            return drawPreview(p);
        case ToolIcons::Export:
            return drawExport(p);
        case ToolIcons::Cut:
            return drawCut(p);
        case ToolIcons::Copy:
            return drawCopy(p);
        case ToolIcons::Paste:
            return drawPaste(p);
        case ToolIcons::Graph2D:
            return drawGraph(p, false);
        case ToolIcons::Graph3D:
            return drawGraph(p, true);
        case ToolIcons::Cascade:
            return drawCascade(p);
        case ToolIcons::Tile:
            return drawTile(p, false);
        case ToolIcons::TileVertical:
            return drawTile(p, true);
        case ToolIcons::Arrange:
            return drawArrange(p);
        case ToolIcons::Demo:
            return drawDemo(p);
        case ToolIcons::Fit:
            return drawFit(p);
    }
}

}  // namespace

QIcon ToolIcons::Make(Kind kind) {
    QIcon icon;
    for (const int size : {16, 24, 32, 48}) {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.scale(size / kGrid, size / kGrid);
        draw(painter, kind);
        painter.end();
        icon.addPixmap(pixmap);
    }
    return icon;
}
