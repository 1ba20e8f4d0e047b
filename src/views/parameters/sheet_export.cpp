#include "views/parameters/sheet_export.h"

#include <QBuffer>
#include <QFileInfo>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>

#include "document/document_file.h"
#include "platform/path_text.h"
#include "sheets/sheet_text.h"

namespace sonalyx {

namespace {

constexpr double kPointsPerPixel = 72.0 / 96.0;
const char* const kTitle = "TORVE Parameters";

// The bytes go through a save file, so a failed write leaves the old file alone.
bool WriteAtomically(const QString& path, const QByteArray& bytes, QString& error) {
    QSaveFile file(path);
    if (file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit()) {
        return true;
    }
    error = QStringLiteral("Can't write %1: %2").arg(path, file.errorString());
    file.cancelWriting();
    return false;
}

}  // namespace

SheetExport::SheetExport(const SheetPicture& picture, const SheetFonts& fonts, SheetColours colours)
    : picture_(picture), painter_(fonts, colours) {}

bool SheetExport::IsKnownSuffix(const QString& suffix) {
    static const QStringList known = {QStringLiteral("txt"), QStringLiteral("png"),
                                      QStringLiteral("svg"), QStringLiteral("pdf")};
    return known.contains(suffix.toLower());
}

QByteArray SheetExport::PngBytes() const {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    painter_.image(picture_).save(&buffer, "PNG");
    return bytes;
}

QByteArray SheetExport::SvgBytes() const {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(QSize(picture_.width, picture_.height));
    generator.setViewBox(QRect(0, 0, picture_.width, picture_.height));
    generator.setResolution(96);
    generator.setTitle(QLatin1String(kTitle));
    QPainter out(&generator);
    painter_.paint(out, picture_);
    out.end();
    return bytes;
}

QByteArray SheetExport::PdfBytes() const {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(QLatin1String(kTitle));
    writer.setCreator(QStringLiteral("Sonalyx"));
    // One page the size of the sheet, with a sheet pixel as a device unit.
    writer.setResolution(96);
    writer.setPageSize(
        QPageSize(QSizeF(picture_.width * kPointsPerPixel, picture_.height * kPointsPerPixel),
                  QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter out(&writer);
    painter_.paint(out, picture_);
    out.end();
    return bytes;
}

bool SheetExport::Save(const QString& path, QString& error) const {
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (suffix == QLatin1String("txt")) {
        if (writeDocumentLinesAtomically(platform::pathFromUtf8(path.toStdString()),
                                         sheetTextLines(picture_.ops))) {
            return true;
        }
        error = QStringLiteral("Can't write %1").arg(path);
        return false;
    }
    if (suffix == QLatin1String("png")) {
        return WriteAtomically(path, PngBytes(), error);
    }
    if (suffix == QLatin1String("svg")) {
        return WriteAtomically(path, SvgBytes(), error);
    }
    if (suffix == QLatin1String("pdf")) {
        return WriteAtomically(path, PdfBytes(), error);
    }
    error = QStringLiteral("Unknown output format: %1").arg(path);
    return false;
}

}  // namespace sonalyx
