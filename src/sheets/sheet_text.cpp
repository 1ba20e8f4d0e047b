#include "sheets/sheet_text.h"

namespace sonalyx {

std::vector<std::string> sheetTextLines(const std::vector<SheetOp>& ops) {
    std::vector<std::string> lines;
    std::string row;
    bool open = false;
    for (const SheetOp& op : ops) {
        if (open)
            row += '\t';
        row += op.text;
        open = true;
        if (op.endsRow) {
            lines.push_back(std::move(row));
            row.clear();
            open = false;
        }
    }
    if (open)
        lines.push_back(std::move(row));
    return lines;
}

}  // namespace sonalyx
