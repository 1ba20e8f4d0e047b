#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "document/parameter_rows.h"
#include "sheets/sheet_canvas.h"

namespace sonalyx {

// The table drawers of the parameter sheet. Each finds its block in the grid by its marker row
// and writes it at the canvas pen, starting at the pen's left edge; a block that is absent or
// cut short draws what there is and nothing else.
class ParameterTables {
  public:
    static constexpr int kDistanceWideFrom = 8;  // longest distance text that widens the cells

    ParameterTables(const ParameterGrid& grid, SheetCanvas& canvas)
        : grid_(grid), canvas_(canvas) {}

    void FileMemo(const std::vector<std::string>& memo, int maxLines);
    void SpeakerSetting();
    void XCurve();
    // memory 0 draws every memory column under an "[M1]".."[M6]" header; 1..6 one column.
    void ChannelLevel(int memory);
    void SpeakerDistance(int memory);
    // One memory's block; false (and nothing drawn) when the document has no such block.
    bool StandingWaveCompact(int memory);
    bool StandingWaveFull(int memory);
    bool AcousticCalEq(int memory, bool compact);

    // Set by ChannelLevel when its block has no "[M1]" header (data of a single memory).
    bool NoMemoryColumns() const { return noMemoryColumns_; }
    bool HasStandingWave() const;

  private:
    const std::string& cell(int row, int column) const { return grid_.cell(row, column); }
    int FindMarker(std::string_view marker) const;
    bool IsMarker(int row) const;
    bool IsBlank(int row) const;
    int FindMemoryRow(int marker, int memory) const;
    int FindRowInBlock(int first, std::string_view label) const;
    int FirstFilledRow(int row) const;
    void MemoryColumnsTable(std::string_view marker, int memory, int labelWidth, int valueWidth,
                            bool rightAligned, bool setsNoMemoryFlag);

    const ParameterGrid& grid_;
    SheetCanvas& canvas_;
    bool noMemoryColumns_ = false;
};

// "[M%d]"
std::string memoryLabel(int memory);

}  // namespace sonalyx
