#include "sheets/parameter_sheet.h"

#include <algorithm>

#include "document/text_format.h"
#include "sheets/parameter_tables.h"

namespace sonalyx {

namespace {

constexpr int kLevelColumnOffset = 200;
constexpr int kDistanceColumnOffset = 400;
constexpr int kEqHeadingGap = 8;
constexpr int kPageMemoLines = 15;
constexpr int kShortPageMemoLines = 3;
constexpr int kLongPageMemoLines = 45;
constexpr int kWideDistanceBase = 12;
constexpr int kWideDistanceStep = 60;

void blankLine(SheetCanvas& canvas) {
    canvas.DrawLastCell("", canvas.penX);
}

}  // namespace

bool hasParameterRows(const std::vector<std::string>& lines) {
    return std::any_of(lines.begin(), lines.end(),
                       [](const std::string& line) { return startsWith(line, "* "); });
}

std::string sheetTitle(int memory) {
    std::string title = "- TORVE Parameters -      [";
    if (memory == ParameterSheet::kAllMemories) {
        title += "ALL MEMORY";
    } else {
        title += "MEMORY";
        appendInt(title, memory);
    }
    title += ']';
    return title;
}

int ParameterSheet::SheetWidth(int memory, int longestDistanceText) {
    if (memory != kAllMemories || longestDistanceText < ParameterTables::kDistanceWideFrom)
        return kSheetWidth;
    return kSheetWidth + (kWideDistanceBase - longestDistanceText) * kWideDistanceStep;
}

bool ParameterSheet::Parse(std::vector<std::string>& lines) {
    return ParseParameterRows(lines, grid_);
}

bool ParameterSheet::HasStandingWave() const {
    SheetCanvas unused(metrics_);
    return ParameterTables(grid_, unused).HasStandingWave();
}

// Speaker Setting and X-Curve down the left, the channel levels 200 to the right from the same
// top and, when asked, the distances 400 to the right; the pen continues below the longest.
void ParameterSheet::SettingsAndLevels(SheetCanvas& canvas, ParameterTables& tables, int memory,
                                       bool distanceBeside) const {
    const int left = canvas.penX;
    const int top = canvas.penY;
    tables.SpeakerSetting();
    tables.XCurve();
    int bottom = canvas.penY;
    canvas.penX = left + kLevelColumnOffset;
    canvas.penY = top;
    tables.ChannelLevel(memory);
    bottom = std::max(bottom, canvas.penY);
    if (distanceBeside) {
        canvas.penX = left + kDistanceColumnOffset;
        canvas.penY = top;
        tables.SpeakerDistance(memory);
        bottom = std::max(bottom, canvas.penY);
    }
    canvas.penY = bottom;
    canvas.penX = left;
}

void ParameterSheet::StandingWaveTables(SheetCanvas& canvas, ParameterTables& tables) const {
    canvas.DrawHeading("Standing Wave Control");
    for (int m = 1; m <= kMemoryCount; ++m)
        tables.StandingWaveCompact(m);
}

// Memories without a block in the document take no room (not even their blank line).
void ParameterSheet::AcousticCalEqTables(SheetCanvas& canvas, ParameterTables& tables) const {
    canvas.DrawHeading("Acoustic Cal EQ");
    for (int m = 1; m <= kMemoryCount; ++m) {
        if (tables.AcousticCalEq(m, true))
            blankLine(canvas);
    }
}

SheetPicture ParameterSheet::BuildScreen(int memory) const {
    SheetCanvas canvas(metrics_);
    ParameterTables tables(grid_, canvas);
    memory = std::clamp(memory, 0, kMemoryCount);
    canvas.DrawTitle(sheetTitle(memory));
    if (memory != kAllMemories) {
        SettingsAndLevels(canvas, tables, memory, true);
        if (!tables.NoMemoryColumns()) {
            blankLine(canvas);
            canvas.DrawHeading("Standing Wave Control");
            tables.StandingWaveFull(memory);
        }
        blankLine(canvas);
        canvas.DrawHeading("Acoustic Cal EQ");
        tables.AcousticCalEq(memory, false);
    } else {
        SettingsAndLevels(canvas, tables, memory, false);
        blankLine(canvas);
        tables.SpeakerDistance(memory);
        if (!tables.NoMemoryColumns()) {
            blankLine(canvas);
            StandingWaveTables(canvas, tables);
        }
        canvas.penY += kEqHeadingGap;
        AcousticCalEqTables(canvas, tables);
    }
    SheetPicture picture;
    picture.width = SheetWidth(memory, grid_.longestDistanceText);
    picture.height = canvas.penY + kBottomMargin;
    picture.noMemoryColumns = tables.NoMemoryColumns();
    picture.ops = canvas.takeOps();
    return picture;
}

SheetPicture ParameterSheet::BuildPage(int memory, int page, int pageCount,
                                       const std::vector<std::string>& memo) const {
    SheetCanvas canvas(metrics_);
    ParameterTables tables(grid_, canvas);
    memory = std::clamp(memory, 0, kMemoryCount);
    if (memory != kAllMemories) {
        canvas.DrawTitle(sheetTitle(memory));
        tables.FileMemo(memo, kPageMemoLines);
        blankLine(canvas);
        SettingsAndLevels(canvas, tables, memory, false);
        blankLine(canvas);
        tables.SpeakerDistance(memory);
        blankLine(canvas);
        // On paper the heading stands even for single-memory data.
        canvas.DrawHeading("Standing Wave Control");
        tables.StandingWaveFull(memory);
        blankLine(canvas);
        canvas.DrawHeading("Acoustic Cal EQ");
        tables.AcousticCalEq(memory, false);
    } else if (page <= 0) {
        canvas.DrawTitle(sheetTitle(memory));
        tables.FileMemo(memo, pageCount == 3 ? kLongPageMemoLines : kShortPageMemoLines);
        blankLine(canvas);
        SettingsAndLevels(canvas, tables, memory, false);
        blankLine(canvas);
        tables.SpeakerDistance(memory);
        if (pageCount == 2) {
            blankLine(canvas);
            if (tables.HasStandingWave())
                StandingWaveTables(canvas, tables);
            else
                AcousticCalEqTables(canvas, tables);
        }
    } else if (page == 1 && pageCount != 2) {
        StandingWaveTables(canvas, tables);
    } else {
        AcousticCalEqTables(canvas, tables);
    }
    SheetPicture picture;
    picture.width = SheetWidth(memory, grid_.longestDistanceText);
    picture.height = kPageHeight;
    picture.noMemoryColumns = tables.NoMemoryColumns();
    picture.ops = canvas.takeOps();
    return picture;
}

}  // namespace sonalyx
