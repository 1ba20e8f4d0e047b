#include "pdf_print_command.h"

#include <QComboBox>
#include <QDir>
#include <QFileInfo>
#include <QPrinter>
#include <QSaveFile>
#include <QTemporaryFile>

#include "cli_usage.h"
#include "print/page_printer.h"
#include "print/print_pages.h"
#include "render_options.h"
#include "stderr_messenger.h"
#include "view_window.h"
#include "views/parameters/parameters_view.h"
#include "views/window/mdi_child.h"

namespace sonalyx {

namespace {

std::string UsageProblem(const RenderOptions& options, std::string problem) {
    if (problem.rfind("render needs", 0) == 0) {
        return "print needs IN and -o OUT.pdf";
    }
    if (!problem.empty()) {
        return problem;
    }
    if (QFileInfo(QString::fromStdString(options.output)).suffix().toLower() !=
        QLatin1String("pdf")) {
        return "OUT must end in .pdf";
    }
    if (options.page || options.pages) {
        return "print puts every page on paper; --page and --pages belong to render";
    }
    return {};
}

bool SelectMemory(TMDIChild& window, const RenderOptions& options, Messenger& messenger) {
    if (!options.memory || !PrintPages::IsParametersTab(window)) {
        return true;
    }
    QComboBox* combo = window.Panel1()->ComboChannel();
    if (*options.memory >= combo->count()) {
        messenger.show("No entry " + std::to_string(*options.memory) +
                           " in the memory list (0 to " + std::to_string(combo->count() - 1) + ").",
                       "", MessageMode::Ok);
        return false;
    }
    combo->setCurrentIndex(*options.memory);
    return true;
}

// The printer's pages into the file. The printer writes a private file beside the target
// first; its bytes then go over the target through a save file, so a failed job leaves the old
// file (or none) in place and the new one gets the permissions any saved file gets.
bool WritePdf(const QList<PrintPage>& pages, const QString& title, const QString& output,
              Messenger& messenger) {
    const QFileInfo target(output);
    const auto cannotWrite = [&] {
        messenger.show("Can't write the file.", output.toStdString(), MessageMode::Ok);
        return false;
    };
    QTemporaryFile part(target.absoluteDir().filePath(QStringLiteral(".sonalyx-print-XXXXXX.pdf")));
    if (!part.open()) {
        return cannotWrite();
    }
    part.close();
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(part.fileName());
    PagePrinter pagePrinter(messenger);
    if (!pagePrinter.SetLandscape(printer) ||
        !pagePrinter.Print(printer, pages, 1, static_cast<int>(pages.size()), title)) {
        return false;
    }
    QSaveFile file(target.absoluteFilePath());
    if (!part.open() || !file.open(QIODevice::WriteOnly)) {
        return cannotWrite();
    }
    const QByteArray bytes = part.readAll();
    if (file.write(bytes) != bytes.size() || !file.commit()) {
        return cannotWrite();
    }
    return true;
}

}  // namespace

int runPrintCommand(const std::vector<std::string>& args) {
    RenderOptions options;
    std::string problem;
    RenderOptions::Parse(args, options, problem);
    problem = UsageProblem(options, problem);
    if (!problem.empty()) {
        return usageError(problem);
    }
    StderrMessenger messenger;
    int status = 0;
    const auto window = openViewWindow(options, messenger, status);
    if (!window) {
        return status;
    }
    if (!SelectMemory(*window, options, messenger)) {
        return 1;
    }
    const std::string refusal = PrintPages::Refusal(*window);
    if (!refusal.empty()) {
        messenger.show(refusal, "", MessageMode::Ok);
        return 1;
    }
    QList<PrintPage> pages;
    if (PrintPages::IsParametersTab(*window)) {
        bool ok = false;
        pages = PrintPages::ParameterPages(*window, true, ok);
        if (!ok) {
            messenger.show("No data.", "", MessageMode::Ok);
            return 1;
        }
    } else {
        pages.append(PrintPages::WindowPage(*window));
    }
    return WritePdf(pages, window->windowTitle(), QString::fromStdString(options.output), messenger)
               ? 0
               : 1;
}

}  // namespace sonalyx
