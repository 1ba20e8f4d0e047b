#include "print/page_printer.h"

#include <QPainter>
#include <QPrinter>
#include <algorithm>

#include "document/messenger.h"
#include "print/print_diagnostics.h"

namespace sonalyx {

PagePrinter::PagePrinter(Messenger& messenger) : messenger_(messenger) {}

bool PagePrinter::SetLandscape(QPrinter& printer) {
    if (printer.pageLayout().orientation() == QPageLayout::Landscape ||
        printer.setPageOrientation(QPageLayout::Landscape)) {
        return true;
    }
    messenger_.show("Set Landscape failed.", "", MessageMode::Ok);
    return false;
}

PaperMetrics PagePrinter::Metrics(const QPrinter& printer) {
    const QRect paper = printer.paperRect(QPrinter::DevicePixel).toRect();
    PaperMetrics m;
    m.paperWidth = paper.width();
    m.paperHeight = paper.height();
    m.pageWidth = printer.width();
    m.pageHeight = printer.height();
    m.dpiX = printer.logicalDpiX();
    m.dpiY = printer.logicalDpiY();
    return m;
}

bool PagePrinter::Print(QPrinter& printer, const QList<PrintPage>& pages, int first, int last,
                        const QString& title) {
    printed_ = 0;
    printer.setDocName(title);
    first = std::max(first, 1);
    last = std::min<int>(last, pages.size());
    bool anything = false;
    for (int i = first; i <= last; ++i) {
        anything = anything || !pages.at(i - 1).IsEmpty();
    }
    if (!anything) {
        return true;
    }
    const PrintDiagnostics diagnostics;
    diagnostics.WriteDeviceCaps(printer, title);
    QPainter painter;
    if (!painter.begin(&printer)) {
        messenger_.show("Printer is not ready. Please try again.", "", MessageMode::Ok);
        return false;
    }
    for (int i = first; i <= last; ++i) {
        const PrintPage& page = pages.at(i - 1);
        if (page.IsEmpty()) {
            continue;
        }
        if (printed_ > 0 && !printer.newPage()) {
            messenger_.show("Printer is not ready. Please try again.", "", MessageMode::Ok);
            painter.end();
            return false;
        }
        const Box box = PaperLayout::FitToPage(page.size.width(), page.size.height(),
                                               printer.width(), printer.height());
        painter.save();
        painter.translate(box.left, box.top);
        painter.scale(static_cast<qreal>(box.width) / page.size.width(),
                      static_cast<qreal>(box.height) / page.size.height());
        painter.setClipRect(QRect(QPoint(0, 0), page.size));
        page.paint(painter);
        painter.restore();
        ++printed_;
        diagnostics.SavePage(page.preview, i,
                             QStringLiteral("page %1 of %2: %3x%4 at %5,%6 size %7x%8 on %9x%10")
                                 .arg(i)
                                 .arg(pages.size())
                                 .arg(page.size.width())
                                 .arg(page.size.height())
                                 .arg(box.left)
                                 .arg(box.top)
                                 .arg(box.width)
                                 .arg(box.height)
                                 .arg(printer.width())
                                 .arg(printer.height()));
    }
    return painter.end();
}

}  // namespace sonalyx
