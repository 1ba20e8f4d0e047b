#pragma once

#include "document/messenger.h"

namespace sonalyx {

// The command-line tool's voice: messages go to stderr, questions are never asked interactively
// (the tool overwrites what it is told to write), so they answer YES.
class StderrMessenger : public Messenger {
  public:
    Answer show(const std::string& text, const std::string& secondLine, MessageMode mode) override;
};

}  // namespace sonalyx
