#pragma once

#include <string>
#include <vector>

#include "sheets/sheet_canvas.h"

namespace sonalyx {

// The sheet as text lines, for pasting into a forum post or a mail: one line per drawn row,
// its cells (empty cells and indents too) joined with a TAB, each as drawn.
std::vector<std::string> sheetTextLines(const std::vector<SheetOp>& ops);

}  // namespace sonalyx
