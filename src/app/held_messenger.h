#pragma once

#include <string>
#include <vector>

#include "document/messenger.h"

namespace sonalyx {

// Keeps the messages of a receive run while its always-on-top "Receiving" window is up, so that
// none opens underneath it where the user can neither read nor answer it; release() shows them,
// in order, once the window has gone. A question cannot wait for its answer and passes at once.
class HeldMessenger : public Messenger {
  public:
    explicit HeldMessenger(Messenger& target) : target_(target) {}

    void hold() { holding_ = true; }
    // Stops holding and shows what was held.
    void release();

    Answer show(const std::string& text, const std::string& secondLine, MessageMode mode) override;

  private:
    struct Held {
        std::string text;
        std::string secondLine;
        MessageMode mode;
    };

    Messenger& target_;
    std::vector<Held> held_;
    bool holding_ = false;
};

}  // namespace sonalyx
