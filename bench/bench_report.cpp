// The report of the nine-channel sample as File > Report... and sonalyx-cli report write it,
// and File Print of a chart page: the document window drawn onto PDF paper at printer
// resolution, as sonalyx-cli print does. Targets: the report within 1 s of CPU, the chart page
// within 0.3 s.
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
#include "document/document_loader.h"
#include "offscreen_main.h"
#include "print/page_printer.h"
#include "print/print_pages.h"
#include "print/report_writer.h"
#include "silent_dialogs.h"
#include "views/window/mdi_child.h"

namespace {

using namespace sonalyx;

using bench::NoChooser;
using bench::NoMessages;

NoMessages g_messenger;
NoChooser g_chooser;

std::vector<std::string> SampleLines() {
    const auto lines = readDocumentLines(std::string(SONALYX_SAMPLES_DIR) + "/sample-layout-9.csv");
    if (!lines) {
        std::fprintf(stderr, "cannot read the layout-9 sample\n");
        std::exit(1);
    }
    return *lines;
}

void BM_Report(benchmark::State& state) {
    MeasurementDocument document;
    if (!DocumentLoader::load(document, SampleLines(), "sample-layout-9.csv", &g_messenger)) {
        state.SkipWithError("the sample did not load");
        return;
    }
    QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("report.pdf"));
    ReportWriter writer(document, QStringLiteral("sample-layout-9.csv"));
    for (auto _ : state) {
        QString error;
        if (!writer.Write(path, error)) {
            state.SkipWithError(qPrintable(error));
            return;
        }
    }
    state.counters["pages"] = writer.PageCount();
}
BENCHMARK(BM_Report)->Unit(benchmark::kMillisecond);

// Print of the Reverb tab with one channel chosen: the page is made and drawn each time.
void BM_PrintChartPage(benchmark::State& state) {
    auto window = std::make_unique<TMDIChild>(QStringLiteral("bench.csv"), g_messenger, g_chooser);
    window->resize(1024, 768);
    window->show();
    if (!window->LoadDocument(SampleLines(), QStringLiteral("bench.csv"))) {
        state.SkipWithError("the sample did not load");
        return;
    }
    window->Panel1()->ComboChannel()->setCurrentIndex(1);
    QApplication::processEvents();
    QTemporaryDir folder;
    bool ok = true;
    for (auto _ : state) {
        const QList<PrintPage> pages{PrintPages::WindowPage(*window)};
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(folder.filePath(QStringLiteral("page.pdf")));
        PagePrinter pagePrinter(g_messenger);
        ok = pagePrinter.SetLandscape(printer) && pagePrinter.Print(printer, pages, 1, 1, "bench");
    }
    if (!ok) {
        state.SkipWithError("the page did not print");
    }
}
BENCHMARK(BM_PrintChartPage)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    return sonalyx::bench::RunOffscreenBenchmarks(argc, argv);
}
