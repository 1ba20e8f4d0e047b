#pragma once

#include <string>
#include <vector>

#include "emulator/parameter_feed.h"

namespace sonalyx::test {

using emulator::convertFallbackReplies;
using emulator::convertListReplies;
using emulator::toItem;

// A received document's text: the date, the parameters title and memo block, then rows.
std::vector<std::string> documentWithParameters(const std::vector<std::string>& rows);

}  // namespace sonalyx::test
