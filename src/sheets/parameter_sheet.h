#pragma once

#include <string>
#include <vector>

#include "document/parameter_rows.h"
#include "sheets/sheet_canvas.h"
#include "sheets/text_metrics.h"

namespace sonalyx {

class ParameterTables;

// A drawn sheet: its size in pixels and what to draw on it, in drawing order.
struct SheetPicture {
    int width = 0;
    int height = 0;
    std::vector<SheetOp> ops;
    // The channel level group has no memory columns (data of a single memory).
    bool noMemoryColumns = false;
};

// The parameters section as a sheet of titled tables: for the screen (one memory or all of
// them) and for the printed pages. Parse once, then build as often as needed.
class ParameterSheet {
  public:
    static constexpr int kSheetWidth = 647;
    static constexpr int kPageHeight = 1310;
    static constexpr int kBottomMargin = 30;
    static constexpr int kAllMemories = 0;
    static constexpr int kMemoryCount = 6;

    explicit ParameterSheet(const TextMetrics& metrics) : metrics_(metrics) {}

    // Splits the section's lines into the grid; distance rows are rewritten in the lines in
    // display units. False when the section holds no lines.
    bool Parse(std::vector<std::string>& lines);

    // The screen sheet of memory 1..6, or of all memories (0). Its height ends 30 pixels
    // below the last row.
    SheetPicture BuildScreen(int memory) const;
    // A printed page: for one memory the single page (page and count are not used); for all
    // memories page 0..pageCount-1 of 2 or 3. Always kPageHeight tall.
    SheetPicture BuildPage(int memory, int page, int pageCount,
                           const std::vector<std::string>& memo) const;

    bool HasStandingWave() const;
    const ParameterGrid& Grid() const { return grid_; }

    // 647 pixels, or for an all-memory sheet with a distance text of 8 characters or more
    // 647 + (12 - longest) x 60.
    static int SheetWidth(int memory, int longestDistanceText);

  private:
    void SettingsAndLevels(SheetCanvas& canvas, ParameterTables& tables, int memory,
                           bool distanceBeside) const;
    void StandingWaveTables(SheetCanvas& canvas, ParameterTables& tables) const;
    void AcousticCalEqTables(SheetCanvas& canvas, ParameterTables& tables) const;

    const TextMetrics& metrics_;
    ParameterGrid grid_;
};

// Whether the section holds any parameter group ("* Speaker Setting" and the like); a document
// saved without parameters keeps only its memo block there.
bool hasParameterRows(const std::vector<std::string>& lines);

// "- TORVE Parameters -      [MEMORY%d]" or "... [ALL MEMORY]".
std::string sheetTitle(int memory);

}  // namespace sonalyx
