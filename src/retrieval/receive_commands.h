#pragma once

#include <string>

#include "retrieval/receive_run.h"

namespace sonalyx {

// What the chooser of commands needs of the engine that runs the dialogue.
class CommandSender {
  public:
    virtual ~CommandSender() = default;
    // Sends a command and waits for its reply; false when the link failed (the run is over).
    virtual bool sendCommand(const std::string& command) = 0;
    // Ends the run with what has been collected.
    virtual void FinishRun() = 0;
    // The progress bar position in percent.
    virtual void showProgress(int percent) = 0;
};

// Chooses the receiver's next command from what the run has learnt: the front-left probe,
// the configuration query, the reverb blocks channel by channel (measured and after), the
// group delay bands, the parameter lists and, when the EQ list is refused, the channel by
// channel fallback. Finished sections are written into the run's text on the way.
class ReceiveCommands {
  public:
    ReceiveCommands(ReceiveRun& run, CommandSender& sender) : run_(run), sender_(sender) {}

    // Sends the command that follows the last answered one, or ends the run.
    void SendNextCommand();

  private:
    void continueWithPhase();
    void assumeConfiguration9();
    void sendNextReverbCommand();
    void enterParameterPhase();
    void sendNextGroupDelayCommand();
    void endGroupDelayPhase();
    void sendNextParameterCommand();
    void convertListReply(int entry);
    void sendNextFallbackCommand();
    void advanceProgress();

    ReceiveRun& run_;
    CommandSender& sender_;
};

}  // namespace sonalyx
