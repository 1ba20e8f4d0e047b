#pragma once

#include <string>
#include <vector>

namespace sonalyx {

// sonalyx-cli convert IN -o OUT: loads a document and writes it back.
// Returns the exit status: 0 done, 1 failed with a message, 2 usage error.
int runConvertCommand(const std::vector<std::string>& args);

}  // namespace sonalyx
