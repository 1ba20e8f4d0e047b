#include "retrieval/log_naming_messenger.h"

namespace sonalyx {

Answer LogNamingMessenger::show(const std::string& text, const std::string& secondLine,
                                MessageMode mode) {
    if (secondLine.empty() && !logPath_.empty() && mode != MessageMode::YesNoCancel)
        return messenger_.show(text, "Exchange log: " + logPath_, mode);
    return messenger_.show(text, secondLine, mode);
}

}  // namespace sonalyx
