#include "stderr_messenger.h"

#include <iostream>

namespace sonalyx {

Answer StderrMessenger::show(const std::string& text, const std::string& secondLine,
                             MessageMode mode) {
    std::cerr << text << '\n';
    if (!secondLine.empty())
        std::cerr << "  " << secondLine << '\n';
    return mode == MessageMode::YesNoCancel ? Answer::Yes : Answer::Ok;
}

}  // namespace sonalyx
