#include <gtest/gtest.h>

#include "document/document_loader.h"
#include "fixed_metrics.h"
#include "sheets/parameter_sheet.h"
#include "sheets/sheet_text.h"
#include "support/golden.h"

namespace sonalyx::test {
namespace {

// Every sheet a document gives (screen sheets for all and for one memory, the print pages of
// two and three, the one-memory page) as text, one after another under a caption line.
std::vector<std::string> allSheets(std::vector<std::string> lines, const Memo& memo) {
    FixedMetrics metrics;
    ParameterSheet sheet(metrics);
    std::vector<std::string> out;
    if (!sheet.Parse(lines))
        return out;
    const auto add = [&](const std::string& caption, const SheetPicture& picture) {
        out.push_back("==== " + caption + " (" + std::to_string(picture.width) + " x " +
                      std::to_string(picture.height) + ")");
        const auto text = sheetTextLines(picture.ops);
        out.insert(out.end(), text.begin(), text.end());
    };
    add("screen, all memories", sheet.BuildScreen(0));
    add("screen, memory 1", sheet.BuildScreen(1));
    add("screen, memory 6", sheet.BuildScreen(6));
    for (int count : {2, 3}) {
        for (int p = 0; p < count; ++p) {
            add("page " + std::to_string(p + 1) + " of " + std::to_string(count),
                sheet.BuildPage(0, p, count, memo));
        }
    }
    add("page, memory 2", sheet.BuildPage(2, 0, 1, memo));
    return out;
}

class SampleSheets : public ::testing::TestWithParam<const char*> {};

TEST_P(SampleSheets, MatchGolden) {
    const std::string name = std::string("sample-layout-") + GetParam();
    MeasurementDocument doc;
    ASSERT_TRUE(
        DocumentLoader::load(doc, readLinesOrFail(samplesPath(name + ".csv")), name, nullptr));
    expectMatchesGolden(testDataPath("sheets/" + name + ".txt"),
                        allSheets(doc.parameterLines, doc.fileMemos[kParametersSection]));
}

INSTANTIATE_TEST_SUITE_P(Layouts, SampleSheets, ::testing::Values("5", "7", "9", "10", "11"));

// Data of a receiver without the list commands: no memory columns, feet-and-inches distances.
TEST(SampleSheets, FallbackParametersMatchGolden) {
    const Memo memo = {"Living room, sofa centre", "", "Second calibration after moving the sub"};
    expectMatchesGolden(
        testDataPath("sheets/config5_fallback.txt"),
        allSheets(readLinesOrFail(testDataPath("parameters/config5_fallback.txt")), memo));
}

}  // namespace
}  // namespace sonalyx::test
