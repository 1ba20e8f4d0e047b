#include "render_sheet.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "sheets/parameter_sheet.h"
#include "sheets/sheet_painter.h"
#include "sheets/sheet_text.h"
#include "stderr_messenger.h"
#include "views/memo_codec.h"

namespace sonalyx {

namespace {

constexpr double kPointsPerPixel = 72.0 / 96.0;

// stderr carries the program's own messages; the platform's notes about its set-up are not.
void dropPlatformNotes(QtMsgType type, const QMessageLogContext&, const QString& message) {
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fprintf(stderr, "%s\n", qPrintable(message));
}

// Fonts need a GUI application; without a display it runs on the offscreen platform.
std::unique_ptr<QGuiApplication> ensureGuiApplication() {
    if (QCoreApplication::instance() != nullptr)
        return nullptr;
    qInstallMessageHandler(dropPlatformNotes);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && qEnvironmentVariableIsEmpty("DISPLAY") &&
        qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    static int argc = 1;
    static char name[] = "sonalyx-cli";
    static char* argv[] = {name, nullptr};
    return std::make_unique<QGuiApplication>(argc, argv);
}

QString lowerExtension(const std::string& path) {
    return QString::fromStdString(std::filesystem::path(path).extension().string()).toLower();
}

// The picture's bytes go through a save file, so a failed write leaves the old file alone.
bool writeAtomically(const std::string& path, const QByteArray& bytes) {
    QSaveFile file(QString::fromStdString(path));
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}

QByteArray pngBytes(const SheetPicture& picture, const SheetPainter& painter) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    painter.image(picture).save(&buffer, "PNG");
    return bytes;
}

QByteArray svgBytes(const SheetPicture& picture, const SheetPainter& painter) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setSize(QSize(picture.width, picture.height));
    generator.setViewBox(QRect(0, 0, picture.width, picture.height));
    generator.setResolution(96);
    generator.setTitle(QStringLiteral("TORVE Parameters"));
    QPainter out(&generator);
    painter.paint(out, picture);
    out.end();
    return bytes;
}

QByteArray pdfBytes(const SheetPicture& picture, const SheetPainter& painter) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    writer.setTitle(QStringLiteral("TORVE Parameters"));
    writer.setCreator(QStringLiteral("Sonalyx"));
    // One page the size of the sheet, with a sheet pixel as a device unit.
    writer.setResolution(96);
    writer.setPageSize(
        QPageSize(QSizeF(picture.width * kPointsPerPixel, picture.height * kPointsPerPixel),
                  QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    QPainter out(&writer);
    painter.paint(out, picture);
    out.end();
    return bytes;
}

}  // namespace

int renderParameterSheet(const std::string& in, const std::string& out, int memory, int page,
                         int pages) {
    StderrMessenger messenger;
    std::error_code ec;
    if (!std::filesystem::exists(in, ec)) {
        messenger.show("The file is not exist.", in, MessageMode::Ok);
        return 1;
    }
    const auto lines = readDocumentLines(in);
    if (!lines) {
        messenger.show("Can't read the file. Please close, if it's opened.", in, MessageMode::Ok);
        return 1;
    }
    MeasurementDocument doc;
    if (!DocumentLoader::load(doc, *lines, in, &messenger))
        return 1;
    const auto application = ensureGuiApplication();
    SheetFonts fonts(&MemoCodec::decodeLine);
    ParameterSheet sheet(fonts);
    if (!hasParameterRows(doc.parameterLines) || !sheet.Parse(doc.parameterLines)) {
        messenger.show("No data.", "", MessageMode::Ok);
        return 1;
    }
    const bool paper = page > 0;
    const SheetPicture picture =
        paper ? sheet.BuildPage(memory, page - 1, pages, doc.fileMemos[kParametersSection])
              : sheet.BuildScreen(memory);
    const SheetPainter painter(fonts, paper ? SheetColours::paper() : SheetColours::screen());
    const QString extension = lowerExtension(out);
    bool written = false;
    if (extension == QLatin1String(".txt"))
        written = writeDocumentLinesAtomically(out, sheetTextLines(picture.ops));
    else if (extension == QLatin1String(".png"))
        written = writeAtomically(out, pngBytes(picture, painter));
    else if (extension == QLatin1String(".svg"))
        written = writeAtomically(out, svgBytes(picture, painter));
    else if (extension == QLatin1String(".pdf"))
        written = writeAtomically(out, pdfBytes(picture, painter));
    if (!written) {
        messenger.show("Can't write the file. Please close, if it's opened.", out, MessageMode::Ok);
        return 1;
    }
    return 0;
}

}  // namespace sonalyx
