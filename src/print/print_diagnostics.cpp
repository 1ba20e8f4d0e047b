#include "print/print_diagnostics.h"

#include <QDateTime>
#include <QFile>
#include <QPrinter>
#include <QTextStream>

namespace sonalyx {

PrintDiagnostics::PrintDiagnostics() {
    const QString folder = qEnvironmentVariable(kVariable);
    enabled_ = !folder.isEmpty() && QDir(folder).exists();
    folder_ = QDir(folder);
}

void PrintDiagnostics::WriteDeviceCaps(const QPrinter& printer, const QString& what) const {
    if (!enabled_) {
        return;
    }
    QFile file(folder_.filePath(QStringLiteral("dbg_devicecap.txt")));
    if (!file.open(QIODevice::Append | QIODevice::Text)) {
        return;
    }
    const QRect paper = printer.paperRect(QPrinter::DevicePixel).toRect();
    const QRect page = printer.pageRect(QPrinter::DevicePixel).toRect();
    QTextStream out(&file);
    out << "------- " << QDateTime::currentDateTime().toString(QStringLiteral("yyyy.MM.dd hh:mm"))
        << ' ' << what << " -------\n";
    // Qt has no driver version or raster capabilities to report; the rest maps one to one.
    out << "PRINTER: " << printer.printerName() << '\n'
        << "BITSPIXEL: " << printer.depth() << '\n'
        << "COLORMODE: " << (printer.colorMode() == QPrinter::Color ? "Color" : "GrayScale") << '\n'
        << "LOGPIXELSX: " << printer.physicalDpiX() << '\n'
        << "LOGPIXELSY: " << printer.physicalDpiY() << '\n'
        << "PHYSICALWIDTH: " << paper.width() << '\n'
        << "PHYSICALHEIGHT: " << paper.height() << '\n'
        << "HORZRES: " << printer.width() << '\n'
        << "VERTRES: " << printer.height() << '\n'
        << "PHYSICALOFFSETX: " << page.left() << '\n'
        << "PHYSICALOFFSETY: " << page.top() << '\n'
        << "LOGPIXELSX(Canvas): " << printer.logicalDpiX() << '\n'
        << "LOGPIXELSY(Canvas): " << printer.logicalDpiY() << '\n';
}

void PrintDiagnostics::SavePage(const QImage& page, int number, const QString& info) const {
    if (!enabled_) {
        return;
    }
    // The page number keeps the pages of one job apart within a second.
    const QString stamp = QDateTime::currentDateTime().toString(QStringLiteral("yyyyMMdd-hhmmss")) +
                          QStringLiteral("_%1").arg(number);
    page.save(folder_.filePath(QStringLiteral("image-%1.png").arg(stamp)));
    QFile file(folder_.filePath(QStringLiteral("info-%1.txt").arg(stamp)));
    if (file.open(QIODevice::WriteOnly | QIODevice::Text)) {
        QTextStream(&file) << info << '\n';
    }
}

}  // namespace sonalyx
