#pragma once

#include <string>

#include "document/messenger.h"

namespace sonalyx {

// The messenger of a receive run: a failure message that has no second line of its own gets
// one naming the run's exchange log, so the user knows where the receiver's answers are kept.
class LogNamingMessenger : public Messenger {
  public:
    explicit LogNamingMessenger(Messenger& messenger) : messenger_(messenger) {}

    // An empty path names nothing (no log, or one that could not be written).
    void setLogPath(std::string path) { logPath_ = std::move(path); }

    Answer show(const std::string& text, const std::string& secondLine, MessageMode mode) override;

  private:
    Messenger& messenger_;
    std::string logPath_;
};

}  // namespace sonalyx
