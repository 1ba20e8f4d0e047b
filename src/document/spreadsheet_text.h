#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sonalyx {

// Users open documents in a spreadsheet and save them back. What the spreadsheet changed is
// undone here, so that the loader reads the document it is: a byte order mark, every text cell
// in quotes (or the cells that hold a quote), rows padded with empty cells, numbers with their
// trailing zeros cut off.
class SpreadsheetText {
  public:
    // When lines need restoring, fills restored with the document's own lines and returns
    // true; otherwise leaves restored alone and returns false (the lines are read as they are).
    static bool restore(const std::vector<std::string>& lines, std::vector<std::string>& restored);

    // The number cells of a row after its heading, written back as the document writes them:
    // with `decimals` decimals (a spreadsheet writes 0.840000 as 0.84 and 1.0 as 1). Cells
    // that are not numbers, and numbers already in that form, stay as they are.
    static void restoreDecimals(std::string& row, int decimals);

    // Whether a line's fields are separated by semicolons rather than commas: the text before
    // its first semicolon has no comma, and `accept` takes it as the row's first field.
    template <typename Predicate>
    static bool separatedBySemicolon(std::string_view line, Predicate accept) {
        const size_t semicolon = line.find(';');
        return semicolon != std::string_view::npos &&
               line.substr(0, semicolon).find(',') == std::string_view::npos &&
               accept(line.substr(0, semicolon));
    }
};

}  // namespace sonalyx
