#include "app/held_messenger.h"

namespace sonalyx {

void HeldMessenger::release() {
    holding_ = false;
    // Taken out first: showing one message runs an event loop that may hold or release again.
    std::vector<Held> held;
    held.swap(held_);
    for (const Held& message : held) {
        target_.show(message.text, message.secondLine, message.mode);
    }
}

Answer HeldMessenger::show(const std::string& text, const std::string& secondLine,
                           MessageMode mode) {
    if (!holding_ || mode == MessageMode::YesNoCancel) {
        return target_.show(text, secondLine, mode);
    }
    held_.push_back({text, secondLine, mode});
    return Answer::Ok;
}

}  // namespace sonalyx
