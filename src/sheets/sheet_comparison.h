#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "sheets/parameter_sheet.h"

namespace sonalyx {

// Which value cells of a sheet read differently from a reference document's sheet, built the
// same way (same memory, same metrics).
//
// A cell's place is not its pixel position: one document may have a channel or a memory block
// the other lacks, and everything below would shift. A cell is placed by the table it stands
// in (the heading above it), the memory block within that table ("[M3]"), the row's label
// ("Left", "Freq"; the n-th row of that label for labels that repeat, such as the filter rows
// of each speaker group), and its column in the row. Titles, headings and the labels
// themselves are the same by construction and are not compared; a cell that has no place in
// the reference compares with an empty text.
struct CellDifference {
    std::size_t op;     // index into the sheet's operations
    std::string table;  // the heading the cell stands under ("Channel Level")
    bool inReference;   // false: the reference has no cell at this place
    std::string referenceText;
};

class SheetComparison {
  public:
    SheetComparison() = default;
    SheetComparison(const SheetPicture& sheet, const SheetPicture& reference);

    // The cells that differ, in drawing order.
    const std::vector<CellDifference>& Differences() const { return differences_; }
    // Their indices into the sheet's operations, ascending.
    std::vector<std::size_t> DifferingOps() const;
    int DifferingCells() const { return static_cast<int>(differences_.size()); }
    // Of the differing cells, those with no place in the reference's sheet at all.
    int CellsWithoutCounterpart() const { return withoutCounterpart_; }
    // Filled cells of the reference that have no place on this sheet (a channel it lacks).
    int ReferenceOnlyCells() const { return referenceOnly_; }

  private:
    std::vector<CellDifference> differences_;
    int withoutCounterpart_ = 0;
    int referenceOnly_ = 0;
};

}  // namespace sonalyx
