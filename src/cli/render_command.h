#pragma once

#include <string>
#include <vector>

namespace sonalyx {

// sonalyx-cli render: builds a document window offscreen, applies the view options as a user
// would and writes what the chosen tab shows. Needs a QApplication.
int runRenderCommand(const std::vector<std::string>& args);

}  // namespace sonalyx
