#pragma once

#include <string>
#include <vector>

#include "document/document_loader.h"
#include "document/messenger.h"

namespace sonalyx::test {

// Records what the core tells the user and answers from a script.
class RecordingMessenger : public Messenger {
  public:
    struct Message {
        std::string text;
        std::string secondLine;
        MessageMode mode;
    };
    std::vector<Message> messages;
    std::vector<Answer> answers;  // given in order; Ok when exhausted

    Answer show(const std::string& text, const std::string& secondLine, MessageMode mode) override {
        messages.push_back({text, secondLine, mode});
        if (answers.empty())
            return Answer::Ok;
        const Answer a = answers.front();
        answers.erase(answers.begin());
        return a;
    }
};

// "L,0,1,...,31" style header and 32 values starting at start, falling by step.
std::string headerRow(const std::string& name);
std::string bandRow(const std::string& label, double start, double step, int count = 32);
extern const char* const kTimeRow;

// A small layout-5 document with both variants on two positions, as text lines.
std::vector<std::string> smallDocumentLines();

}  // namespace sonalyx::test
