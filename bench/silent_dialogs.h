#pragma once

#include <optional>
#include <string>

#include "document/document_saver.h"
#include "document/messenger.h"

namespace sonalyx::bench {

// A document window needs someone to talk to; a benchmark answers nothing and saves nothing.
class NoMessages : public Messenger {
  public:
    Answer show(const std::string&, const std::string&, MessageMode) override { return Answer::Ok; }
};

class NoChooser : public FileChooser {
  public:
    std::optional<std::string> chooseSaveFile(const std::string&) override { return {}; }
};

}  // namespace sonalyx::bench
