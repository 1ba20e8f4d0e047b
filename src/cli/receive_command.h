#pragma once

#include <string>
#include <vector>

namespace sonalyx {

// sonalyx-cli receive --port PORT [--data reverb,groupdelay,parameters] [--parameters-only]
//                     [--tick-ms N] [--raw] -o FILE
// Runs the whole receive dialogue and writes the document. Returns the exit status: 0 done,
// 1 failed with a message on stderr (no file written), 2 usage error.
int runReceiveCommand(const std::vector<std::string>& args);

}  // namespace sonalyx
