#pragma once

#include <string>
#include <vector>

#include "retrieval/receive_observer.h"

namespace sonalyx {

// Follows a run through its plan: which planned command is outstanding, how many are answered,
// and the time the run has waited on its ticker, from which the time left follows.
class ProgressTracker {
  public:
    void reset();
    // The run's full list of commands (see planCommands). The run's place in it is found again
    // from the last command sent.
    void setPlan(std::vector<std::string> plan);
    // A command went out (without its carriage return); a repeat of the outstanding one does
    // not move the run on.
    void commandSent(const std::string& command);
    // The run waits for something other than a reply ("Waiting to reopen the port").
    void setKind(std::string kind) { kind_ = std::move(kind); }
    // A tick armed with this interval fired.
    void waited(int intervalMs) { waitedMs_ += intervalMs; }
    // Every planned command is answered.
    void complete();

    ReceiveProgress current() const;
    bool planKnown() const { return !plan_.empty(); }

  private:
    std::vector<std::string> plan_;
    std::vector<std::string> sent_;  // distinct commands, in the order they first went out
    int position_ = -1;              // index of the outstanding command in plan_
    bool complete_ = false;
    std::string kind_;
    long long waitedMs_ = 0;
};

}  // namespace sonalyx
