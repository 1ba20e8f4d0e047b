// File Print's three steps, each on its own: capturing a document window for the graph tabs'
// preview, making the three pages of an all-memory parameter sheet, and drawing pages onto a
// printer (here Qt's PDF engine at printer resolution, as sonalyx-cli print does).
#include <benchmark/benchmark.h>

#include <QApplication>
#include <QComboBox>
#include <QPrinter>
#include <QTemporaryDir>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <string>

#include "document/document_file.h"
#include "offscreen_main.h"
#include "print/page_printer.h"
#include "print/print_pages.h"
#include "silent_dialogs.h"
#include "views/window/mdi_child.h"

namespace {

using namespace sonalyx;

using bench::NoChooser;
using bench::NoMessages;

NoMessages g_messenger;
NoChooser g_chooser;

// A nine-channel document window at the size File Print gives it on a large screen.
std::unique_ptr<TMDIChild> openWindow(int tab) {
    const auto lines = readDocumentLines(std::string(SONALYX_SAMPLES_DIR) + "/sample-layout-9.csv");
    auto window = std::make_unique<TMDIChild>(QStringLiteral("bench.csv"), g_messenger, g_chooser);
    window->resize(1024, 768);
    window->show();
    if (!lines || !window->LoadDocument(*lines, QStringLiteral("bench.csv"))) {
        std::fprintf(stderr, "cannot read the layout-9 sample\n");
        std::exit(1);
    }
    window->PageControl()->setCurrentIndex(tab);
    window->Panel1()->ComboChannel()->setCurrentIndex(tab == TMDIChild::kParametersTab ? 0 : 1);
    QApplication::processEvents();
    return window;
}

void BM_CaptureGraphTab(benchmark::State& state) {
    const auto window = openWindow(TMDIChild::kReverbTab);
    for (auto _ : state) {
        benchmark::DoNotOptimize(PrintPages::Capture(*window));
    }
}
BENCHMARK(BM_CaptureGraphTab)->Unit(benchmark::kMillisecond);

void BM_ParameterPagesForPrint(benchmark::State& state) {
    const auto window = openWindow(TMDIChild::kParametersTab);
    for (auto _ : state) {
        bool ok = false;
        benchmark::DoNotOptimize(PrintPages::ParameterPages(*window, true, ok));
    }
}
BENCHMARK(BM_ParameterPagesForPrint)->Unit(benchmark::kMillisecond);

// The graph tab's window (1 page) or the sheet's pages (3) drawn onto landscape paper.
void BM_PrintPagesToPdf(benchmark::State& state) {
    const bool sheet = state.range(0) == 1;
    const auto window = openWindow(sheet ? TMDIChild::kParametersTab : TMDIChild::kReverbTab);
    bool ok = true;
    const QList<PrintPage> pages = sheet ? PrintPages::ParameterPages(*window, true, ok)
                                         : QList<PrintPage>{PrintPages::WindowPage(*window)};
    QTemporaryDir folder;
    for (auto _ : state) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(folder.filePath(QStringLiteral("bench.pdf")));
        PagePrinter pagePrinter(g_messenger);
        ok = pagePrinter.SetLandscape(printer) &&
             pagePrinter.Print(printer, pages, 1, static_cast<int>(pages.size()), "bench");
    }
    if (!ok) {
        state.SkipWithError("the pages did not print");
    }
}
BENCHMARK(BM_PrintPagesToPdf)->ArgName("sheet")->Arg(0)->Arg(1)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return sonalyx::bench::RunOffscreenBenchmarks(argc, argv);
}
