#include <gtest/gtest.h>

#include <utility>

#include "fixed_metrics.h"
#include "sheets/parameter_sheet.h"
#include "sheets/sheet_text.h"

namespace sonalyx::test {
namespace {

std::vector<std::string> section(bool memoryColumns, const std::string& distance = "3.45m") {
    std::vector<std::string> lines = {"* Speaker Setting", "", "Front,,Large", "",
                                      "Crossover,,80Hz",   ""};
    const std::vector<std::string> eq = {"* Acoustic Cal EQ",
                                         "",
                                         "[M1],,63Hz,125Hz,250Hz,4kHz,11.3kHz,Trim",
                                         "All Ch Adjust",
                                         "Left,,-3.5dB,-2.0dB,-0.5dB,+1.0dB,+2.5dB,-1.0dB",
                                         "",
                                         "[M2],,63Hz,125Hz,250Hz,4kHz,11.3kHz,Trim",
                                         "Custom1",
                                         "Left,,+1.5dB,+3.0dB,+4.5dB,+6.0dB,-5.0dB, 0.0dB",
                                         "",
                                         "* X-Curve",
                                         ",,OFF",
                                         ""};
    lines.insert(lines.end(), eq.begin(), eq.end());
    lines.push_back("* Speaker Distance");
    if (memoryColumns)
        lines.insert(lines.end(), {"", ",,[M1],[M2]"});
    lines.insert(lines.end(), {"Left,," + distance + ",2.00m", ""});
    lines.push_back("* Channel Level");
    if (memoryColumns)
        lines.insert(lines.end(), {"", ",,[M1],[M2]"});
    lines.insert(lines.end(), {"Left,,+1.0dB,-1.0dB", "Center,,+2.0dB,-2.0dB", ""});
    lines.insert(
        lines.end(),
        {"* Standing Wave Control", "", "[M1]", "Main,,,,,Center,,,,,Sub Woofer,,Trim,-0.5dB",
         "No.,Filter 1,Filter 2,Filter 3", "Freq,71Hz", "Q,0.2", "ATT,0.5dB", ""});
    return lines;
}

SheetPicture screen(std::vector<std::string> lines, int memory) {
    FixedMetrics metrics;
    ParameterSheet sheet(metrics);
    EXPECT_TRUE(sheet.Parse(lines));
    return sheet.BuildScreen(memory);
}

SheetPicture page(std::vector<std::string> lines, int memory, int p, int count,
                  const std::vector<std::string>& memo = {}) {
    FixedMetrics metrics;
    ParameterSheet sheet(metrics);
    EXPECT_TRUE(sheet.Parse(lines));
    return sheet.BuildPage(memory, p, count, memo);
}

// The headings of a sheet, in drawing order.
std::vector<std::string> headings(const SheetPicture& picture) {
    std::vector<std::string> out;
    for (const SheetOp& op : picture.ops) {
        if (op.font == SheetFont::Heading || op.font == SheetFont::Title)
            out.push_back(op.text);
    }
    return out;
}

TEST(ParameterSheetLayout, OneMemoryScreenPutsThreeTablesSideBySide) {
    const SheetPicture p = screen(section(true), 2);
    EXPECT_EQ(headings(p),
              (std::vector<std::string>{"- TORVE Parameters -      [MEMORY2]", "Speaker Setting",
                                        "X-Curve", "Channel Level", "Speaker Distance",
                                        "Standing Wave Control", "Acoustic Cal EQ"}));
    // The three tables start at the same top, 200 apart; values follow their label cells.
    const std::pair<const char*, int> starts[] = {
        {"Speaker Setting", 28}, {"Channel Level", 228}, {"Speaker Distance", 428}, {"2.00m", 528}};
    for (const auto& [text, x] : starts) {
        SCOPED_TRACE(text);
        EXPECT_EQ(findOp(p.ops, text)->x, x);
        EXPECT_EQ(findOp(p.ops, text)->y, x == 528 ? 64 : 40);
    }
    // Below the longest column (speaker setting: 2 rows, a blank, X-Curve and its line), after a
    // blank line; memory 2 has no standing wave block, so its heading stands alone.
    const SheetOp* wave = findOp(p.ops, "Standing Wave Control");
    EXPECT_EQ(wave->x, 28);
    EXPECT_EQ(wave->y, 40 + 24 + 2 * 16 + 16 + 24 + 16 + 16);
    const SheetOp* eq = findOp(p.ops, "Acoustic Cal EQ");
    EXPECT_EQ(eq->y, wave->y + 24 + 16);
    EXPECT_EQ(p.width, 647);
    EXPECT_EQ(p.height, eq->y + 24 + 3 * 16 + 30);
}

TEST(ParameterSheetLayout, AllMemoryScreen) {
    const SheetPicture p = screen(section(true), 0);
    EXPECT_EQ(headings(p),
              (std::vector<std::string>{"- TORVE Parameters -      [ALL MEMORY]", "Speaker Setting",
                                        "X-Curve", "Channel Level", "Speaker Distance",
                                        "Standing Wave Control", "Acoustic Cal EQ"}));
    EXPECT_EQ(findOp(p.ops, "Channel Level")->x, 228);
    EXPECT_EQ(findOp(p.ops, "Channel Level")->y, 40);
    // Distance below the taller of the two, after a blank line.
    EXPECT_EQ(findOp(p.ops, "Speaker Distance")->y, 40 + 24 + 2 * 16 + 16 + 24 + 16 + 16);
    // "[M1]" heads the level and distance columns, then labels the wave and EQ blocks.
    for (int occurrence : {2, 3}) {
        const SheetOp* label = findOp(p.ops, "[M1]", occurrence);
        ASSERT_NE(label, nullptr);
        EXPECT_EQ(label->x, 28);
    }
    // The EQ heading 8 below the wave tables; both memories' EQ blocks with a blank after each.
    const SheetOp* eq = findOp(p.ops, "Acoustic Cal EQ");
    const SheetOp* trim = findOp(p.ops, "TRIM");
    EXPECT_EQ(eq->y, trim->y + 16 + 16 + 8);
    EXPECT_EQ(p.height, eq->y + 24 + 2 * 4 * 16 + 30);
    EXPECT_FALSE(p.noMemoryColumns);
}

struct WidthCase {
    std::string distance;
    int memory;
    int width;
    int column;
};

TEST(ParameterSheetLayout, WidthFollowsTheLongestDistanceOnAllMemorySheets) {
    const WidthCase cases[] = {
        {"3.45m", 0, 647, 50},        {"10' 05\"", 0, 647, 50},      {"100' 05\"", 0, 887, 75},
        {"1000'05\"", 0, 827, 75},    {"1000'05\"", 3, 647, 75},     {"0' 03-1/2\"", 0, 767, 75},
        {"1234567' 8\"", 0, 707, 75}, {"12345678' 9\"", 0, 647, 75}, {"123456789' 9\"", 0, 587, 75},
    };
    for (const WidthCase& c : cases) {
        SCOPED_TRACE(c.distance + " memory " + std::to_string(c.memory));
        const SheetPicture p = screen(section(true, c.distance), c.memory);
        EXPECT_EQ(p.width, c.width);
        if (c.memory == 0) {
            EXPECT_EQ(findOp(p.ops, "2.00m")->x, 28 + 100 + c.column);
        }
    }
}

TEST(ParameterSheetLayout, WithoutMemoryColumnsTheScreenLeavesOutStandingWave) {
    for (int memory : {0, 1}) {
        SCOPED_TRACE(memory);
        const SheetPicture p = screen(section(false), memory);
        EXPECT_TRUE(p.noMemoryColumns);
        EXPECT_EQ(findOp(p.ops, "Standing Wave Control"), nullptr);
        EXPECT_NE(findOp(p.ops, "Acoustic Cal EQ"), nullptr);
    }
    // On paper the one-memory page keeps the heading (and the table where there is one).
    const SheetPicture paper = page(section(false), 1, 0, 1);
    EXPECT_TRUE(paper.noMemoryColumns);
    EXPECT_NE(findOp(paper.ops, "Standing Wave Control"), nullptr);
    EXPECT_NE(findOp(paper.ops, "  ATT"), nullptr);
    EXPECT_EQ(paper.height, 1310);
}

struct PageCase {
    int page;
    int count;
    bool standingWave;
    std::vector<std::string> headings;
    int memoLines;
};

TEST(ParameterSheetLayout, PrintPageSequences) {
    const std::string title = "- TORVE Parameters -      [ALL MEMORY]";
    const std::vector<std::string> top = {title,     "File Memo",     "Speaker Setting",
                                          "X-Curve", "Channel Level", "Speaker Distance"};
    auto with = [&](std::vector<std::string> more) {
        std::vector<std::string> all = top;
        all.insert(all.end(), more.begin(), more.end());
        return all;
    };
    const PageCase cases[] = {
        {0, 2, true, with({"Standing Wave Control"}), 3},
        {0, 2, false, with({"Acoustic Cal EQ"}), 3},
        {1, 2, true, {"Acoustic Cal EQ"}, 0},
        {0, 3, true, top, 45},
        {1, 3, true, {"Standing Wave Control"}, 0},
        {2, 3, true, {"Acoustic Cal EQ"}, 0},
    };
    std::vector<std::string> memo;
    for (int i = 0; i < 50; ++i)
        memo.push_back("memo " + std::to_string(i));
    for (const PageCase& c : cases) {
        SCOPED_TRACE("page " + std::to_string(c.page) + " of " + std::to_string(c.count) +
                     (c.standingWave ? " with" : " without") + " standing wave");
        std::vector<std::string> lines = section(true);
        if (!c.standingWave)
            lines.resize(lines.size() - 9);
        const SheetPicture p = page(lines, 0, c.page, c.count, memo);
        EXPECT_EQ(headings(p), c.headings);
        EXPECT_EQ(p.height, 1310);
        int memoLines = 0;
        for (const SheetOp& op : p.ops)
            memoLines += op.font == SheetFont::Memo;
        EXPECT_EQ(memoLines, c.memoLines);
        // Pages after the first start where the title would have left the pen.
        EXPECT_EQ(p.ops.front().y, c.page == 0 ? 2 : 40);
    }
    const SheetPicture one = page(section(true), 2, 5, 9, memo);
    EXPECT_EQ(headings(one), (std::vector<std::string>{
                                 "- TORVE Parameters -      [MEMORY2]", "File Memo",
                                 "Speaker Setting", "X-Curve", "Channel Level", "Speaker Distance",
                                 "Standing Wave Control", "Acoustic Cal EQ"}));
    int memoLines = 0;
    for (const SheetOp& op : one.ops)
        memoLines += op.font == SheetFont::Memo;
    EXPECT_EQ(memoLines, 15);
    // Distance below the settings and levels on paper, not beside them.
    EXPECT_EQ(findOp(one.ops, "Speaker Distance")->x, 28);
}

}  // namespace
}  // namespace sonalyx::test
