#pragma once

#include <string>
#include <vector>

namespace sonalyx {

// sonalyx-cli report IN -o OUT.pdf [--compare REF.csv] [--paper a4|letter]: the whole
// document as one portrait PDF, as File > Report... writes it.
int runReportCommand(const std::vector<std::string>& args);

}  // namespace sonalyx
