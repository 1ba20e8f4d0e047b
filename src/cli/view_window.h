#pragma once

#include <memory>

#include "render_options.h"

class TMDIChild;

namespace sonalyx {

class Messenger;

// A document window built offscreen for the command line: the document of options.input
// loaded into a window of the options' size, with the view options applied in the order a
// user would set them. Returns nullptr with status set (1, the message already given) when
// the file can't be opened or an option names no entry.
std::unique_ptr<TMDIChild> openViewWindow(const RenderOptions& options, Messenger& messenger,
                                          int& status);

}  // namespace sonalyx
