// Load and write speed of a full document beside the least work any reader must do: splitting
// the same bytes into lines and fields and converting every numeric field with from_chars.
#include <benchmark/benchmark.h>

#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <string>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_writer.h"

namespace {

using namespace sonalyx;

// 15 positions in both variants, 15 bands, group delay and parameters (from the layout-10
// sample), written by the writer.
const std::string& fullDocumentText() {
    static const std::string text = [] {
        MeasurementDocument doc;
        const auto sample =
            readDocumentLines(std::string(SONALYX_SAMPLES_DIR) + "/sample-layout-10.csv");
        if (!sample || !DocumentLoader::load(doc, *sample, "bench.csv", nullptr)) {
            std::fprintf(stderr, "cannot read the layout-10 sample\n");
            std::exit(1);
        }
        doc.channelNames = {"L",    "C",  "R",    "SR A", "SBR", "SBL", "SL A", "SL B",
                            "SR B", "TS", "SPBL", "SPBR", "SB",  "FL",  "FR"};
        doc.channelCount = 15;
        doc.bandLabels = {"40", "63", "80", "125", "160",   "250", "500", "1k",
                          "2k", "4k", "5k", "8k",  "11.3k", "13k", "16k"};
        doc.bandCount = 15;
        doc.variant1BlocksPresent = true;
        for (int v = 0; v < kVariants; ++v) {
            for (int p = 0; p < kMaxPositions; ++p) {
                doc.positionHasData[v][p] = true;
                for (int b = 0; b < kMaxBands; ++b) {
                    for (int t = 0; t < kTimePoints; ++t) {
                        doc.reverbValues[v][p][b][t] =
                            static_cast<float>(18.0 - 0.7 * t - 0.3 * b + 0.01 * (p * 7 + v));
                    }
                }
            }
        }
        std::vector<std::string> lines;
        DocumentWriter::write(doc, lines);
        return joinLines(lines);
    }();
    return text;
}

void BM_Floor(benchmark::State& state) {
    const std::string& text = fullDocumentText();
    for (auto _ : state) {
        double sum = 0;
        size_t fields = 0;
        const char* p = text.data();
        const char* const end = p + text.size();
        while (p < end) {
            const char* eol = static_cast<const char*>(std::memchr(p, '\n', end - p));
            if (!eol)
                eol = end;
            const char* lineEnd = eol > p && eol[-1] == '\r' ? eol - 1 : eol;
            while (p <= lineEnd) {
                const char* comma = static_cast<const char*>(std::memchr(p, ',', lineEnd - p));
                if (!comma)
                    comma = lineEnd;
                double value = 0;
                if (std::from_chars(p, comma, value).ec == std::errc())
                    sum += value;
                ++fields;
                p = comma + 1;
            }
            p = eol + 1;
        }
        benchmark::DoNotOptimize(sum);
        benchmark::DoNotOptimize(fields);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_Floor);

void BM_Load(benchmark::State& state) {
    const std::string& text = fullDocumentText();
    MeasurementDocument doc;
    for (auto _ : state) {
        const bool ok = DocumentLoader::load(doc, splitLines(text), "bench.csv", nullptr);
        benchmark::DoNotOptimize(ok);
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_Load);

void BM_Write(benchmark::State& state) {
    const std::string& text = fullDocumentText();
    MeasurementDocument doc;
    DocumentLoader::load(doc, splitLines(text), "bench.csv", nullptr);
    for (auto _ : state) {
        std::vector<std::string> lines;
        DocumentWriter::write(doc, lines);
        std::string out = joinLines(lines);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_Write);

void BM_LoadAndWrite(benchmark::State& state) {
    const std::string& text = fullDocumentText();
    MeasurementDocument doc;
    for (auto _ : state) {
        DocumentLoader::load(doc, splitLines(text), "bench.csv", nullptr);
        std::vector<std::string> lines;
        DocumentWriter::write(doc, lines);
        std::string out = joinLines(lines);
        benchmark::DoNotOptimize(out.data());
    }
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * text.size()));
}
BENCHMARK(BM_LoadAndWrite);

// Keeps each benchmark's throughput so the ratios to the floor can be printed at the end.
class RatioReporter : public benchmark::ConsoleReporter {
  public:
    void ReportRuns(const std::vector<Run>& runs) override {
        ConsoleReporter::ReportRuns(runs);
        for (const Run& run : runs) {
            const auto it = run.counters.find("bytes_per_second");
            if (it != run.counters.end())
                rates_[run.benchmark_name()] = it->second.value;
        }
    }
    void printRatios() const {
        const auto rate = [&](const char* name) {
            const auto it = rates_.find(name);
            return it == rates_.end() ? 0.0 : it->second;
        };
        const double floor = rate("BM_Floor");
        if (floor <= 0)
            return;
        std::printf("\ndocument size: %zu bytes\n", fullDocumentText().size());
        for (const char* name : {"BM_Load", "BM_Write", "BM_LoadAndWrite"}) {
            const double r = rate(name);
            if (r <= 0)
                continue;
            std::printf("%-16s %8.1f MB/s   %.2f x the floor's time (floor %.1f MB/s)\n", name,
                        r / 1e6, floor / r, floor / 1e6);
        }
    }

  private:
    std::map<std::string, double> rates_;
};

}  // namespace

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    RatioReporter reporter;
    benchmark::RunSpecifiedBenchmarks(&reporter);
    reporter.printRatios();
    benchmark::Shutdown();
    return 0;
}
