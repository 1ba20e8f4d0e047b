#include <gtest/gtest.h>

#include <functional>

#include "fixed_metrics.h"
#include "sheets/parameter_tables.h"
#include "sheets/sheet_text.h"

namespace sonalyx::test {
namespace {

// Runs one drawer on the lines with the pen at (28, 40).
struct Drawn {
    std::vector<SheetOp> ops;
    std::vector<std::string> text;
    int penY = 0;
    bool noMemoryColumns = false;
};

Drawn draw(std::vector<std::string> lines, const std::function<void(ParameterTables&)>& drawer) {
    FixedMetrics metrics;
    ParameterGrid grid;
    ParseParameterRows(lines, grid);
    SheetCanvas canvas(metrics);
    ParameterTables tables(grid, canvas);
    drawer(tables);
    Drawn out;
    out.penY = canvas.penY;
    out.noMemoryColumns = tables.NoMemoryColumns();
    out.ops = canvas.takeOps();
    out.text = sheetTextLines(out.ops);
    return out;
}

const std::vector<std::string> kSpeakerSetting = {
    "* Speaker Setting",           "", "Front,,Large", "Center,,Small", "", "Crossover,,80Hz",
    "Ignored,,after the crossover"};

TEST(SheetTables, SpeakerSettingSkipsBlankRowsAndStopsAfterCrossover) {
    const Drawn d = draw(kSpeakerSetting, [](ParameterTables& t) { t.SpeakerSetting(); });
    EXPECT_EQ(d.text, (std::vector<std::string>{"Speaker Setting", "Front\tLarge", "Center\tSmall",
                                                "Crossover\t80Hz"}));
    // Heading 16 + 8 below the pen, rows 13 + 3 apart; values 80 right of the labels.
    const SheetOp* large = findOp(d.ops, "Large");
    ASSERT_NE(large, nullptr);
    EXPECT_EQ(large->x, 108);
    EXPECT_EQ(large->y, 64);
    EXPECT_EQ(findOp(d.ops, "80Hz")->y, 96);
    EXPECT_EQ(d.penY, 112);
}

TEST(SheetTables, XCurveAndMissingBlocksDrawTheirHeadingsOnly) {
    const Drawn curve = draw({"* X-Curve", ",,-1.5dB/oct"}, [](ParameterTables& t) { t.XCurve(); });
    EXPECT_EQ(curve.text, (std::vector<std::string>{"", "X-Curve", "-1.5dB/oct"}));
    const Drawn none = draw({"Front,,Large"}, [](ParameterTables& t) {
        t.SpeakerSetting();
        t.XCurve();
        t.ChannelLevel(0);
        t.SpeakerDistance(2);
    });
    EXPECT_EQ(none.text, (std::vector<std::string>{"Speaker Setting", "", "X-Curve",
                                                   "Channel Level", "Speaker Distance"}));
}

const std::vector<std::string> kLevels = {"* Channel Level",
                                          "",
                                          ",,[M1],[M2],[M3],[M4],[M5],[M6]",
                                          "Left,, 0.0dB,+1.0dB,-1.0dB,,,-6.0dB",
                                          "Sub Woofer,,+2.0dB",
                                          "",
                                          "Left,,not part of the block"};

TEST(SheetTables, ChannelLevelForAllAndForOneMemory) {
    const Drawn all = draw(kLevels, [](ParameterTables& t) { t.ChannelLevel(0); });
    EXPECT_FALSE(all.noMemoryColumns);
    EXPECT_EQ(all.text,
              (std::vector<std::string>{"Channel Level", "\t[M1]\t[M2]\t[M3]\t[M4]\t[M5]\t  [M6]",
                                        "Left\t 0.0dB\t+1.0dB\t-1.0dB\t\t\t-6.0dB",
                                        "Sub Woofer\t+2.0dB\t\t\t\t\t"}));
    // Right-aligned in 50-wide cells after the 80-wide label: "[M1]" is 24 wide.
    const SheetOp* m1 = findOp(all.ops, "[M1]");
    EXPECT_EQ(m1->x, 108);
    EXPECT_EQ(m1->textX, 134);
    EXPECT_EQ(findOp(all.ops, "  [M6]")->textX, 108 + 300 - 36);
    EXPECT_EQ(findOp(all.ops, "-6.0dB")->x, 358);

    const Drawn third = draw(kLevels, [](ParameterTables& t) { t.ChannelLevel(3); });
    EXPECT_EQ(third.text,
              (std::vector<std::string>{"Channel Level", "Left\t-1.0dB", "Sub Woofer\t"}));
}

TEST(SheetTables, ChannelLevelWithoutMemoryHeaderSetsTheFlag) {
    const Drawn d = draw({"* Channel Level", "Left,, 0.0dB", "Center,,+2.0dB", "", "x,,y"},
                         [](ParameterTables& t) { t.ChannelLevel(0); });
    EXPECT_TRUE(d.noMemoryColumns);
    EXPECT_EQ(d.text[1], "Left\t 0.0dB\t\t\t\t\t");
    EXPECT_EQ(d.text.size(), 3u);
}

struct DistanceCase {
    const char* field;
    const char* drawn;
    int valueWidth;
};

TEST(SheetTables, DistanceFormsAndColumnWidths) {
    const DistanceCase cases[] = {
        {"345cm", "3.45m", 50},
        {"10.5feet", "10' 06\"", 50},
        {"125inch", "10' 05\"", 50},
        {"12'04\"", "12' 04\"", 50},
        {"12' 04\"", "12' 04\"", 50},
        {"\"0'03-1/2\"\"\"", "0' 03-1/2\"", 75},
        {"0'03-1/2\"", "0' 03-1/2\"", 75},
        {"---", "---", 50},
        {"1000'05\"", "1000' 05\"", 75},
        {"3.45m", "3.45m", 50},
    };
    for (const DistanceCase& c : cases) {
        SCOPED_TRACE(c.field);
        const std::vector<std::string> lines = {"* Speaker Distance",
                                                "",
                                                ",,[M1],[M2],[M3],[M4],[M5],[M6]",
                                                std::string("Left,,") + c.field + ",1.00m",
                                                "",
                                                "* Channel Level"};
        const Drawn all = draw(lines, [](ParameterTables& t) { t.SpeakerDistance(0); });
        ASSERT_EQ(all.text.size(), 3u);
        EXPECT_EQ(all.text[2], std::string("Left\t") + c.drawn + "\t1.00m\t\t\t\t");
        // Label 100 wide, then the value columns, left-aligned.
        const SheetOp* second = findOp(all.ops, "1.00m");
        EXPECT_EQ(second->x, 28 + 100 + c.valueWidth);
        EXPECT_EQ(second->textX, second->x);
        EXPECT_EQ(findOp(all.ops, "[M3]")->x, 28 + 100 + 2 * c.valueWidth);

        const Drawn one = draw(lines, [](ParameterTables& t) { t.SpeakerDistance(2); });
        EXPECT_EQ(one.text[1], "Left\t1.00m");
    }
}

const std::vector<std::string> kStandingWave = {
    "* Standing Wave Control",
    "",
    "[M2]",
    "Main,,,,,Center,,,,,Sub Woofer,,Trim,-0.5dB",
    "No.,Filter 1,Filter 2,Filter 3,,No.,Filter 1,Filter 2,Filter 3,,No.,Filter 1,Filter 2,Filter "
    "3",
    "Freq,71Hz,85Hz,101Hz,,Freq,120Hz,142Hz,169Hz,,Freq,201Hz,239Hz,68Hz",
    "Q,0.2,1.2,2.2,,Q,3.2,0.0,1.0,,Q,2.0,3.0,4.0",
    "ATT,0.5dB,0.0dB,+3.5dB,,ATT,5.0dB,6.5dB,8.0dB,,ATT,9.5dB,11.0dB,-0.5dB",
    ""};

TEST(SheetTables, StandingWaveCompactForm) {
    const Drawn d = draw(kStandingWave, [](ParameterTables& t) {
        EXPECT_FALSE(t.StandingWaveCompact(1));  // no block for memory 1: nothing drawn
        EXPECT_TRUE(t.StandingWaveCompact(2));
    });
    EXPECT_EQ(
        d.text,
        (std::vector<std::string>{
            "[M2]\tMain\t\tCenter\t\tSub Woofer",
            "\t\tNo.\t1\t2\t3\t\tNo.\t1\t2\t3\t\tNo.\t1\t2\t3",
            "\t\tFreq\t71Hz\t85Hz\t101Hz\t\tFreq\t120Hz\t142Hz\t169Hz\t\tFreq\t201Hz\t239Hz\t68Hz",
            "\t\tQ\t0.2\t1.2\t2.2\t\tQ\t3.2\t0.0\t1.0\t\tQ\t2.0\t3.0\t4.0",
            "\t\tATT\t-0.5dB\t "
            "0.0dB\t+3.5dB\t\tATT\t-5.0dB\t-6.5dB\t-8.0dB\t\tATT\t-9.5dB\t-11.0dB\t-0.5dB",
            "\tTRIM\t-0.5dB", ""}));
    // Groups of 30 + 3 x 50 with 10 between; rows below the memory label indent by 40.
    EXPECT_EQ(findOp(d.ops, "Center")->x, 28 + 30 + 180 + 10);
    EXPECT_EQ(findOp(d.ops, "Sub Woofer")->x, 28 + 30 + 2 * 190);
    EXPECT_EQ(findOp(d.ops, "No.", 1)->x, 28 + 40 + 190);
    EXPECT_EQ(findOp(d.ops, "68Hz")->x, 28 + 40 + 2 * 190 + 130);
    EXPECT_EQ(findOp(d.ops, "TRIM")->x, 28 + 420);
    EXPECT_EQ(findOp(d.ops, "TRIM")->y, 40 + 5 * 16);
    EXPECT_EQ(d.penY, 40 + 7 * 16);
}

TEST(SheetTables, StandingWaveFullForm) {
    const Drawn d = draw(kStandingWave, [](ParameterTables& t) { t.StandingWaveFull(2); });
    ASSERT_EQ(d.text.size(), 13u);
    EXPECT_EQ(d.text[0], "Main\t\tFilter 1\tFilter 2\tFilter 3");
    EXPECT_EQ(d.text[3], "  ATT\t\t-0.5dB\t 0.0dB\t+3.5dB");
    EXPECT_EQ(d.text[4], "Center\t\tFilter 1\tFilter 2\tFilter 3");
    EXPECT_EQ(d.text[9], "  Freq\t\t201Hz\t239Hz\t68Hz");
    EXPECT_EQ(d.text[12], "TRIM\t\t-0.5dB");
    EXPECT_EQ(findOp(d.ops, "201Hz")->x, 28 + 80 + 30);
}

const std::vector<std::string> kEq = {
    "* Acoustic Cal EQ",
    "",
    "[M1],,63Hz,125Hz,250Hz,500Hz,1kHz,2kHz,4kHz,8kHz,16kHz,Trim",
    "Front Ch Align",
    "Left,,-3.5dB,-2.0dB,-0.5dB,+1.0dB,+2.5dB,+4.0dB,+5.5dB,-5.5dB,-4.0dB,-1.0dB",
    "  Front Align Symmetry,,+1.0dB",
    "",
    "[M3],,40Hz,125Hz,250Hz,4kHz,13kHz,Trim",
    "Custom1",
    "Left,,+1.5dB,+3.0dB,+4.5dB,+6.0dB,-5.0dB, 0.0dB",
    "",
    "* X-Curve"};

TEST(SheetTables, AcousticCalEqCompactAndFull) {
    const Drawn d = draw(kEq, [](ParameterTables& t) {
        EXPECT_TRUE(t.AcousticCalEq(1, true));
        EXPECT_FALSE(t.AcousticCalEq(2, true));
        EXPECT_TRUE(t.AcousticCalEq(3, false));
    });
    EXPECT_EQ(
        d.text,
        (std::vector<std::string>{
            "[M1]\t63Hz\t125Hz\t250Hz\t500Hz\t1kHz\t2kHz\t4kHz\t8kHz\t16kHz\tTRIM",
            "Front Ch Align\t\t\t\t\t\t\t\t\t\t",
            "Left\t-3.5dB\t-2.0dB\t-0.5dB\t+1.0dB\t+2.5dB\t+4.0dB\t+5.5dB\t-5.5dB\t-4.0dB\t-1.0dB",
            "  Front Align\t+1.0dB\t\t\t\t\t\t\t\t\t",
            "\t40Hz\t125Hz\t250Hz\t4kHz\t13kHz\tTRIM\t\t\t\t", "Custom1\t\t\t\t\t\t\t\t\t\t",
            "Left\t+1.5dB\t+3.0dB\t+4.5dB\t+6.0dB\t-5.0dB\t 0.0dB\t\t\t\t"}));
    // Bands right-aligned in 50 after the 80-wide label; the trim ends the row at 80 + 9 x 50.
    const SheetOp* trim = findOp(d.ops, "-1.0dB");
    EXPECT_EQ(trim->x, 28 + 80 + 450);
    EXPECT_EQ(trim->textX, 28 + 80 + 500 - 36);
    EXPECT_TRUE(trim->endsRow);
}

TEST(SheetTables, AcousticCalEqOfSingleMemoryData) {
    const std::vector<std::string> lines = {
        "* Acoustic Cal EQ",
        "",
        ",,63Hz,125Hz,250Hz,500Hz,1kHz,2kHz,4kHz,8kHz,16kHz,Trim",
        "Left,,-3.5dB",
        "Right,,+3.5dB",
        "",
        "* X-Curve"};
    const Drawn d = draw(lines, [](ParameterTables& t) {
        EXPECT_FALSE(t.AcousticCalEq(2, true));
        EXPECT_TRUE(t.AcousticCalEq(1, true));
    });
    ASSERT_EQ(d.text.size(), 3u);
    EXPECT_EQ(d.text[0].substr(0, 10), "[M1]\t63Hz\t");
    EXPECT_EQ(d.text[2].substr(0, 13), "Right\t+3.5dB\t");
}

struct MemoCase {
    std::vector<std::string> memo;
    int maxLines;
    std::vector<std::string> expected;  // after the heading
};

TEST(SheetTables, FileMemoWrapsPadsAndCuts) {
    // 500 pixels hold 83 characters of 6 pixels.
    const std::string words = std::string(50, 'a') + " " + std::string(40, 'b') + " c";
    const std::string longWord(100, 'x');
    std::vector<std::string> twenty;
    for (int i = 0; i < 20; ++i)
        twenty.push_back("line " + std::to_string(i));
    const MemoCase cases[] = {
        {{}, 15, {"", "", ""}},
        {{"one", "two"}, 15, {"one", "two", ""}},
        {{"one", "", "three", "four"}, 3, {"one", "", "three"}},
        {{words}, 15, {std::string(50, 'a'), std::string(40, 'b') + " c", ""}},
        {{longWord}, 45, {std::string(83, 'x'), std::string(17, 'x'), ""}},
        {twenty, 15, std::vector<std::string>(twenty.begin(), twenty.begin() + 15)},
        {twenty, 45, twenty},
    };
    for (const MemoCase& c : cases) {
        SCOPED_TRACE(c.maxLines);
        const Drawn d = draw({}, [&](ParameterTables& t) { t.FileMemo(c.memo, c.maxLines); });
        ASSERT_FALSE(d.text.empty());
        EXPECT_EQ(d.text.front(), "File Memo");
        EXPECT_EQ(std::vector<std::string>(d.text.begin() + 1, d.text.end()), c.expected);
        EXPECT_EQ(d.penY, 40 + 24 + 16 * static_cast<int>(c.expected.size()));
    }
}

}  // namespace
}  // namespace sonalyx::test
