#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "sheets/text_metrics.h"

namespace sonalyx {

// Word-wraps memo lines to a width the way a memo editor does: at the last blank that fits,
// or inside a word that is wider than the whole line. An empty memo line stays an empty line.
// Stops once maxLines lines are made.
std::vector<std::string> wrapMemoLines(const std::vector<std::string>& memo, int width,
                                       SheetFont font, const TextMetrics& metrics,
                                       std::size_t maxLines);

}  // namespace sonalyx
