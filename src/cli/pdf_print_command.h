#pragma once

#include <string>
#include <vector>

namespace sonalyx {

// sonalyx-cli print IN -o OUT.pdf [the view options of render]: the File Print pipeline of
// that view onto a landscape PDF, the pages a printer would get. Returns the exit status.
int runPrintCommand(const std::vector<std::string>& args);

}  // namespace sonalyx
