// How long the Parameters tab takes to show a sheet: parsing and laying out the all-memory sheet
// of the layout-10 sample, measuring its texts with the real fonts, and painting it.
#include <benchmark/benchmark.h>

#include <QGuiApplication>
#include <cstdio>
#include <cstdlib>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "sheets/parameter_sheet.h"
#include "sheets/sheet_painter.h"

namespace {

using namespace sonalyx;

const MeasurementDocument& sample() {
    static const MeasurementDocument doc = [] {
        MeasurementDocument loaded;
        const auto lines =
            readDocumentLines(std::string(SONALYX_SAMPLES_DIR) + "/sample-layout-10.csv");
        if (!lines || !DocumentLoader::load(loaded, *lines, "bench.csv", nullptr)) {
            std::fprintf(stderr, "cannot read the layout-10 sample\n");
            std::exit(1);
        }
        return loaded;
    }();
    return doc;
}

// Every byte the same width: the layout's own cost, without font measurement.
class FixedMetrics : public TextMetrics {
  public:
    int height(SheetFont) const override { return 13; }
    int width(std::string_view text, SheetFont) const override {
        return 6 * static_cast<int>(text.size());
    }
};

void BM_LayoutAllMemorySheet(benchmark::State& state) {
    FixedMetrics metrics;
    for (auto _ : state) {
        std::vector<std::string> lines = sample().parameterLines;
        ParameterSheet sheet(metrics);
        sheet.Parse(lines);
        benchmark::DoNotOptimize(sheet.BuildScreen(0));
    }
}
BENCHMARK(BM_LayoutAllMemorySheet)->Unit(benchmark::kMicrosecond);

void BM_MeasureAllMemorySheet(benchmark::State& state) {
    SheetFonts fonts;
    for (auto _ : state) {
        std::vector<std::string> lines = sample().parameterLines;
        ParameterSheet sheet(fonts);
        sheet.Parse(lines);
        benchmark::DoNotOptimize(sheet.BuildScreen(0));
    }
}
BENCHMARK(BM_MeasureAllMemorySheet)->Unit(benchmark::kMicrosecond);

void BM_PaintAllMemorySheet(benchmark::State& state) {
    SheetFonts fonts;
    std::vector<std::string> lines = sample().parameterLines;
    ParameterSheet sheet(fonts);
    sheet.Parse(lines);
    const SheetPicture picture = sheet.BuildScreen(0);
    const SheetPainter painter(fonts, SheetColours::screen());
    for (auto _ : state)
        benchmark::DoNotOptimize(painter.image(picture));
}
BENCHMARK(BM_PaintAllMemorySheet)->Unit(benchmark::kMillisecond);

}  // namespace

int main(int argc, char** argv) {
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
