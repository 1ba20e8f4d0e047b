#include "print/report_page_frame.h"

#include <QObject>
#include <QPainter>

#include "print/report_style.h"

namespace sonalyx {

namespace {

constexpr double kSide = 48;
constexpr double kHeaderTop = 30;
constexpr double kHeaderHeight = 14;
constexpr double kColumnTop = 66;
constexpr double kFooterHeight = 14;
constexpr double kColumnBottom = 52;  // from the sheet's bottom edge

}  // namespace

QRectF ReportPageFrame::Column(const QRectF& sheet) {
    return QRectF(sheet.left() + kSide, sheet.top() + kColumnTop, sheet.width() - 2 * kSide,
                  sheet.height() - kColumnTop - kColumnBottom);
}

void ReportPageFrame::Paint(QPainter& painter, const QRectF& sheet, int page, int pages) const {
    painter.save();
    const QRectF header(sheet.left() + kSide, sheet.top() + kHeaderTop, sheet.width() - 2 * kSide,
                        kHeaderHeight);
    painter.setPen(ReportStyle::Ink());
    painter.setFont(ReportStyle::Font(ReportStyle::kBodySize, true));
    painter.drawText(header, Qt::AlignLeft | Qt::AlignVCenter, name_);
    painter.setFont(ReportStyle::Font(ReportStyle::kBodySize));
    painter.drawText(header, Qt::AlignRight | Qt::AlignVCenter, date_);
    painter.setPen(QPen(ReportStyle::Rule(), 0.8));
    painter.drawLine(QPointF(header.left(), header.bottom() + 4),
                     QPointF(header.right(), header.bottom() + 4));
    const QRectF footer(header.left(), sheet.bottom() - kColumnBottom + 20, header.width(),
                        kFooterHeight);
    painter.setPen(ReportStyle::Muted());
    painter.setFont(ReportStyle::Font(ReportStyle::kSmallSize));
    painter.drawText(footer, Qt::AlignHCenter | Qt::AlignVCenter,
                     QObject::tr("Page %1 of %2").arg(page).arg(pages));
    painter.restore();
}

}  // namespace sonalyx
