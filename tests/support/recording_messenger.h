#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "document/document_saver.h"
#include "document/messenger.h"

namespace sonalyx::test {

// Records what the code under test tells the user and answers from a script (Ok when the
// script is used up).
class RecordingMessenger : public Messenger {
  public:
    struct Message {
        std::string text;
        std::string secondLine;
        MessageMode mode;
    };

    Answer show(const std::string& text, const std::string& secondLine, MessageMode mode) override {
        messages.push_back({text, secondLine, mode});
        if (answers.empty())
            return Answer::Ok;
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }

    // The first lines, in order.
    std::vector<std::string> texts() const {
        std::vector<std::string> out;
        for (const auto& m : messages)
            out.push_back(m.text);
        return out;
    }
    // "first|second" per message, in order.
    std::vector<std::string> said() const {
        std::vector<std::string> out;
        for (const auto& m : messages)
            out.push_back(m.text + "|" + m.secondLine);
        return out;
    }

    std::vector<Message> messages;
    std::deque<Answer> answers;
};

// A save dialog that answers from a script (cancel when it is used up) and notes the names it
// was offered.
class ScriptedChooser : public FileChooser {
  public:
    std::optional<std::string> chooseSaveFile(const std::string& presetPath) override {
        presets.push_back(presetPath);
        if (picks.empty())
            return std::nullopt;
        auto pick = picks.front();
        picks.pop_front();
        return pick;
    }

    std::deque<std::optional<std::string>> picks;
    std::vector<std::string> presets;
};

}  // namespace sonalyx::test
