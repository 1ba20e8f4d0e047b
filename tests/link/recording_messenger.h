#pragma once

#include <string>
#include <vector>

#include "document/messenger.h"

namespace sonalyx::test {

// Keeps every message instead of showing it.
class RecordingMessenger : public Messenger {
  public:
    Answer show(const std::string& text, const std::string&, MessageMode) override {
        messages.push_back(text);
        return Answer::Ok;
    }
    std::vector<std::string> messages;
};

}  // namespace sonalyx::test
