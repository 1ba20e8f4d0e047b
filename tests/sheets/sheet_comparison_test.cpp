#include <gtest/gtest.h>
#include <array>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "fixed_metrics.h"
#include "sheets/sheet_comparison.h"
#include "support/golden.h"

namespace sonalyx::test {
namespace {

using Lines = std::vector<std::string>;
// In the line starting with the first text, the second becomes the third (which may hold a
// line break).
using Edits = std::vector<std::array<std::string, 3>>;

SheetPicture screen(const Lines& section, const Edits& edits, int memory) {
    Lines lines;
    for (std::string line : section) {
        for (const auto& [start, from, to] : edits) {
            if (line.starts_with(start))
                line.replace(line.find(from), from.size(), to);
        }
        std::size_t end = 0;
        for (std::size_t begin = 0; end != std::string::npos; begin = end + 1) {
            end = line.find('\n', begin);
            lines.push_back(line.substr(begin, end - begin));
        }
    }
    static const FixedMetrics metrics;
    ParameterSheet sheet(metrics);
    EXPECT_TRUE(sheet.Parse(lines));
    return sheet.BuildScreen(memory);
}

// One sample edited against itself: exactly the edited cells are marked, wherever they stand;
// an EQ memory or a channel that only one document has shifts nothing below it.
TEST(SheetComparisonTest, MarksExactlyTheCellsThatReadDifferently) {
    const Edits settings = {{"Crossover", "80", "100"},
                            {",,-1.0dB/oct", "-1.0dB/oct", "Off"},
                            {"Center,,+2.0dB,+5.0dB", "+5.0", "+4.5"},
                            {"Freq,92Hz", "185", "190"},
                            {"Left,,+1.5dB,+3.0dB", "+1.5", "+2.0"}};
    // Memory 2's EQ block, renamed out of reach: its band row and nine channels of 10 figures.
    const Edits withoutEq2 = {{"[M2],,63Hz", "[M2]", "[M7]"}};
    const Edits topSurround = {{"Sub Woofer,,+3.0dB", "Sub",
                                "Top Surr L,,+1.0dB,+1.0dB,+1.0dB,+1.0dB,+1.0dB,+1.0dB\nSub"}};
    struct Case {
        const char* name;
        Edits edits;
        int memory;
        Lines marked;  // in drawing order
        int withoutCounterpart, referenceOnly;
    };
    const Case cases[] = {
        {"all memories", settings, 0, {"100Hz", "Off", "+4.5dB", "190Hz", "+2.0dB"}, 0, 0},
        {"memory 3", settings, 3, {"100Hz", "Off", "190Hz", "+2.0dB"}, 0, 0},
        {"EQ memory 2 only in the reference", withoutEq2, 0, {}, 0, 100},
        {"a channel only here", topSurround, 0, Lines(6, "+1.0dB"), 6, 0},
    };
    MeasurementDocument doc;
    const auto file = readDocumentLines(samplesPath("sample-layout-9.csv"));
    ASSERT_TRUE(file && DocumentLoader::load(doc, *file, "9", nullptr));
    for (const Case& c : cases) {
        const SheetPicture sheet = screen(doc.parameterLines, c.edits, c.memory);
        const SheetComparison comparison(sheet, screen(doc.parameterLines, {}, c.memory));
        Lines marked;
        for (const std::size_t op : comparison.DifferingOps())
            marked.push_back(sheet.ops[op].text);
        EXPECT_EQ(marked, c.marked) << c.name;
        EXPECT_EQ(comparison.CellsWithoutCounterpart(), c.withoutCounterpart) << c.name;
        EXPECT_EQ(comparison.ReferenceOnlyCells(), c.referenceOnly) << c.name;
    }
}

}  // namespace
}  // namespace sonalyx::test
