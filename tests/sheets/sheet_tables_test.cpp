// The table drawers and the sheet layout on small hand-made parameter sections, with fixed
// metrics: every drawing call with its position goes to one golden file of named cases, so a
// changed column width, gap, wrap or rewrite shows as a diff naming the case.
#include <gtest/gtest.h>

#include <sstream>

#include "fixed_metrics.h"
#include "sheets/parameter_sheet.h"
#include "sheets/parameter_tables.h"
#include "support/golden.h"

namespace sonalyx::test {
namespace {

using Lines = std::vector<std::string>;

// "y x textX width font|text", and " /" where the call ends a text row.
void addOps(const std::vector<SheetOp>& ops, Lines& out) {
    static const char* fonts[] = {"title", "heading", "cell", "memo"};
    for (const SheetOp& op : ops) {
        out.push_back(std::to_string(op.y) + " " + std::to_string(op.x) + " " +
                      std::to_string(op.textX) + " " + std::to_string(op.width) + " " +
                      fonts[static_cast<int>(op.font)] + (op.endsRow ? " /|" : "|") + op.text);
    }
}

// Runs the drawers a script names at the pen (28, 40): "setting", "x-curve", "level M",
// "distance M", "wave M" / "wave-full M" and "eq M" / "eq-full M" (these three note what they
// return), "memo N" (the memo lines at most N).
GoldenSection drawTables(const std::string& name, Lines lines, const std::string& script,
                         const Lines& memo = {}) {
    FixedMetrics metrics;
    ParameterGrid grid;
    ParseParameterRows(lines, grid);
    SheetCanvas canvas(metrics);
    ParameterTables tables(grid, canvas);
    std::string returned;
    std::istringstream calls(script);
    for (std::string call; calls >> call;) {
        int n = 0;
        if (call != "setting" && call != "x-curve")
            calls >> n;
        if (call == "setting")
            tables.SpeakerSetting();
        else if (call == "x-curve")
            tables.XCurve();
        else if (call == "level")
            tables.ChannelLevel(n);
        else if (call == "distance")
            tables.SpeakerDistance(n);
        else if (call == "memo")
            tables.FileMemo(memo, n);
        else if (call == "wave")
            returned += std::to_string(tables.StandingWaveCompact(n));
        else if (call == "wave-full")
            returned += std::to_string(tables.StandingWaveFull(n));
        else
            returned += std::to_string(tables.AcousticCalEq(n, call == "eq"));
    }
    Lines out = {"pen " + std::to_string(canvas.penY) + ", no memory columns " +
                 std::to_string(tables.NoMemoryColumns()) + ", returned " + returned};
    addOps(canvas.ops(), out);
    return {name, out};
}

GoldenSection drawSheet(const std::string& name, Lines lines, int memory, int page = -1,
                        int pages = 0, const Lines& memo = {}) {
    FixedMetrics metrics;
    ParameterSheet sheet(metrics);
    EXPECT_TRUE(sheet.Parse(lines)) << name;
    const SheetPicture p =
        page < 0 ? sheet.BuildScreen(memory) : sheet.BuildPage(memory, page, pages, memo);
    Lines out = {std::to_string(p.width) + " x " + std::to_string(p.height) +
                 ", no memory columns " + std::to_string(p.noMemoryColumns)};
    addOps(p.ops, out);
    return {name, out};
}

const Lines kLevels = {"* Channel Level",
                       "",
                       ",,[M1],[M2],[M3],[M4],[M5],[M6]",
                       "Left,, 0.0dB,+1.0dB,-1.0dB,,,-6.0dB",
                       "Sub Woofer,,+2.0dB",
                       "",
                       "Left,,not part of the block"};
const Lines kStandingWave = {
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
const Lines kEq = {"* Acoustic Cal EQ",
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

// A whole section of two memories; the last nine lines are the standing wave block.
Lines section(bool memoryColumns, const std::string& distance = "3.45m") {
    Lines lines = {"* Speaker Setting",
                   "",
                   "Front,,Large",
                   "",
                   "Crossover,,80Hz",
                   "",
                   "* Acoustic Cal EQ",
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
                   "",
                   "* Speaker Distance"};
    const Lines header = {"", ",,[M1],[M2]"};
    if (memoryColumns)
        lines.insert(lines.end(), header.begin(), header.end());
    lines.insert(lines.end(), {"Left,," + distance + ",2.00m", "", "* Channel Level"});
    if (memoryColumns)
        lines.insert(lines.end(), header.begin(), header.end());
    lines.insert(lines.end(),
                 {"Left,,+1.0dB,-1.0dB", "Center,,+2.0dB,-2.0dB", "", "* Standing Wave Control", "",
                  "[M1]", "Main,,,,,Center,,,,,Sub Woofer,,Trim,-0.5dB",
                  "No.,Filter 1,Filter 2,Filter 3", "Freq,71Hz", "Q,0.2", "ATT,0.5dB", ""});
    return lines;
}

TEST(SheetTables, DrawersMatchGolden) {
    std::vector<GoldenSection> cases = {
        drawTables("speaker setting skips blank rows and stops after the crossover",
                   {"* Speaker Setting", "", "Front,,Large", "Center,,Small", "", "Crossover,,80Hz",
                    "Ignored,,after the crossover"},
                   "setting"),
        drawTables("x-curve", {"* X-Curve", ",,-1.5dB/oct"}, "x-curve"),
        drawTables("missing blocks draw their headings only", {"Front,,Large"},
                   "setting x-curve level 0 distance 2"),
        drawTables("channel level, all memories", kLevels, "level 0"),
        drawTables("channel level, memory 3", kLevels, "level 3"),
        drawTables("channel level without memory header",
                   {"* Channel Level", "Left,, 0.0dB", "Center,,+2.0dB", "", "x,,y"}, "level 0"),
        drawTables("standing wave compact, memories 1 and 2", kStandingWave, "wave 1 wave 2"),
        drawTables("standing wave full, memory 2", kStandingWave, "wave-full 2"),
        drawTables("eq: memory 1 compact, 2 absent, 3 full", kEq, "eq 1 eq 2 eq-full 3"),
        drawTables(
            "eq of single-memory data",
            {"* Acoustic Cal EQ", "", ",,63Hz,125Hz,250Hz,500Hz,1kHz,2kHz,4kHz,8kHz,16kHz,Trim",
             "Left,,-3.5dB", "Right,,+3.5dB", "", "* X-Curve"},
            "eq 2 eq 1"),
    };
    // Distance forms and the column widths they bring, for all memories and for memory 2.
    for (const char* field : {"345cm", "10.5feet", "125inch", "12'04\"", "12' 04\"",
                              "\"0'03-1/2\"\"\"", "0'03-1/2\"", "---", "1000'05\"", "3.45m"}) {
        const Lines lines = {"* Speaker Distance",
                             "",
                             ",,[M1],[M2],[M3],[M4],[M5],[M6]",
                             std::string("Left,,") + field + ",1.00m",
                             "",
                             "* Channel Level"};
        for (const std::string memory : {"0", "2"})
            cases.push_back(drawTables("distance " + std::string(field) + ", memory " + memory,
                                       lines, "distance " + memory));
    }
    // File memos wrap at 500 pixels (83 characters), pad to three lines and stop at the limit.
    Lines twenty;
    for (int i = 0; i < 20; ++i)
        twenty.push_back("line " + std::to_string(i));
    const std::pair<Lines, int> memos[] = {
        {{}, 15},
        {{"one", "", "three", "four"}, 3},
        {{std::string(50, 'a') + " " + std::string(40, 'b') + " c"}, 15},
        {{std::string(100, 'x')}, 45},
        {twenty, 15},
        {twenty, 45}};
    for (const auto& [memo, maxLines] : memos) {
        const std::string limit = std::to_string(maxLines);
        cases.push_back(
            drawTables("file memo of " + std::to_string(memo.size()) + " lines, at most " + limit,
                       {}, "memo " + limit, memo));
    }
    expectSectionsMatchGolden(testDataPath("sheets/tables.txt"), cases);
}

TEST(SheetTables, SheetLayoutsMatchGolden) {
    Lines memo;
    for (int i = 0; i < 50; ++i)
        memo.push_back("memo " + std::to_string(i));
    Lines noStandingWave = section(true);
    noStandingWave.resize(noStandingWave.size() - 9);
    std::vector<GoldenSection> cases = {
        drawSheet("screen, memory 2: three tables side by side", section(true), 2),
        drawSheet("screen, all memories", section(true), 0),
        drawSheet("screen without memory columns, all", section(false), 0),
        drawSheet("screen without memory columns, memory 1", section(false), 1),
        drawSheet("page without memory columns, memory 1", section(false), 1, 0, 1),
        drawSheet("page 1 of 2", section(true), 0, 0, 2, memo),
        drawSheet("page 1 of 2 without standing wave", noStandingWave, 0, 0, 2, memo),
        drawSheet("page 2 of 2", section(true), 0, 1, 2, memo),
        drawSheet("page 1 of 3", section(true), 0, 0, 3, memo),
        drawSheet("page 2 of 3", section(true), 0, 1, 3, memo),
        drawSheet("page 3 of 3", section(true), 0, 2, 3, memo),
        drawSheet("page of memory 2", section(true), 2, 5, 9, memo),
    };
    // The sheet widens with the longest distance on all-memory sheets only.
    const std::pair<const char*, int> widths[] = {
        {"10' 05\"", 0},    {"100' 05\"", 0},    {"1000'05\"", 0},     {"1000'05\"", 3},
        {"0' 03-1/2\"", 0}, {"1234567' 8\"", 0}, {"12345678' 9\"", 0}, {"123456789' 9\"", 0}};
    for (const auto& [distance, memory] : widths) {
        cases.push_back(drawSheet(
            "width with distance " + std::string(distance) + ", memory " + std::to_string(memory),
            section(true, distance), memory));
    }
    expectSectionsMatchGolden(testDataPath("sheets/layouts.txt"), cases);
}

}  // namespace
}  // namespace sonalyx::test
