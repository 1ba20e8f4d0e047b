#pragma once

#include <string>

namespace sonalyx {

// The usage text of sonalyx-cli.
const char* cliUsage();
// Prints the problem and the usage on stderr; returns exit status 2.
int usageError(const std::string& problem);

}  // namespace sonalyx
