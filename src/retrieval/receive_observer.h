#pragma once

#include <string>
#include <vector>

namespace sonalyx {

// How a receive run ended. A failed run (or one whose text was cleared by an error) carries no
// lines: a half-received measurement never reaches a document.
struct ReceiveResult {
    bool success = false;
    // The user stopped the run; nothing is said about it.
    bool cancelled = false;
    // The document text; the line after "[DATE]" is still empty (see stampDate).
    std::vector<std::string> lines;
    // The engine's own failure message ("Timeout occurred.", ...); empty when the run
    // succeeded, was cancelled, or the link reported the failure itself.
    std::string message;
};

// Where a run stands: commands answered out of the commands it will send, what is being
// fetched now and how long the rest will take at the pace so far.
struct ReceiveProgress {
    int answered = 0;
    // 0 while the receiver has not yet told its configuration.
    int total = 0;
    // "Reverb, Left, measured", "Group delay", "Parameters: distances", ...
    std::string kind;
    // -1 while there is no pace to go by.
    long long remainingMs = -1;
};

// What the owner of a receive run hears about it. Called on the thread that calls
// ReceiveEngine::start and onTick; the engine must not be destroyed inside a callback.
class ReceiveObserver {
  public:
    virtual ~ReceiveObserver() = default;
    // The progress bar position in percent: 0 at the start, never past 95 before the end.
    virtual void progress(int percent) = 0;
    // A command went out (also a repeat), without its closing carriage return: "?RVFL".
    virtual void commandSent(const std::string& command) = 0;
    // The run moved on: a command went out, the plan changed, or the run is complete (then
    // answered equals total).
    virtual void progressed(const ReceiveProgress& /*progress*/) {}
    // The run is over and the port is closed. Any message ("Timeout occurred.", ...) is shown
    // through the Messenger right after this call.
    virtual void finished(const ReceiveResult& result) = 0;
};

}  // namespace sonalyx
