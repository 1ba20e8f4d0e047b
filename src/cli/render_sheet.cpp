#include "render_sheet.h"

#include <QGuiApplication>
#include <cstdio>
#include <filesystem>
#include <memory>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "sheets/parameter_sheet.h"
#include "stderr_messenger.h"
#include "views/parameters/sheet_export.h"
#include "views/window/memo_codec.h"

namespace sonalyx {

namespace {

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
        paper ? sheet.BuildPage(memory, page - 1, pages,
                                MemoCodec::asUtf8(doc.fileMemos[kParametersSection]))
              : sheet.BuildScreen(memory);
    QString error;
    const SheetExport writer(picture, fonts,
                             paper ? SheetColours::paper() : SheetColours::screen());
    if (!writer.Save(QString::fromStdString(out), error)) {
        messenger.show("Can't write the file. Please close, if it's opened.", out, MessageMode::Ok);
        return 1;
    }
    return 0;
}

}  // namespace sonalyx
