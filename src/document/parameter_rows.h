#pragma once

#include <array>
#include <string>
#include <vector>

namespace sonalyx {

inline constexpr int kParameterColumns = 15;

// The parameters section split into cells: row r is line r, column c its c-th field.
struct ParameterGrid {
    std::vector<std::array<std::string, kParameterColumns>> rows;
    // Greatest length of a distance cell (columns 1..7 of the distance block).
    int longestDistanceText = 0;

    const std::string& cell(int row, int column) const;
    int rowCount() const { return static_cast<int>(rows.size()); }
};

// Splits the section's lines into the grid, converting distance cells ("345cm", "10.5feet",
// "125inch", quoted feet-and-inches) into display units and writing converted rows back into
// lines. Returns false when there is nothing to parse.
bool ParseParameterRows(std::vector<std::string>& lines, ParameterGrid& grid);

// The display text of one distance cell; returns true (and sets out) when it was converted.
bool convertDistanceCell(const std::string& field, std::string& out);

}  // namespace sonalyx
