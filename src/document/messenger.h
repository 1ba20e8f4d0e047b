#pragma once

#include <string>

namespace sonalyx {

// The answer a user gives to a message; the values are the dialog's modal results.
enum class Answer { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

// How a message is asked: 0 a single OK at design size, 1 YES/NO/CANCEL (narrowed for short
// texts), 2 a single OK with the dialog sized to its texts.
enum class MessageMode { Ok = 0, YesNoCancel = 1, OkFitted = 2 };

// The one way the core talks to the user. The GUI shows TFormDialog, the command-line tool
// writes to stderr, tests record.
class Messenger {
  public:
    virtual ~Messenger() = default;
    virtual Answer show(const std::string& text, const std::string& secondLine,
                        MessageMode mode) = 0;
};

}  // namespace sonalyx
