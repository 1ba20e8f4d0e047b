#pragma once

#include <string>
#include <vector>

namespace sonalyx {

// How a receive run ended. A failed run (or one whose text was cleared by an error) carries no
// lines: a half-received measurement never reaches a document.
struct ReceiveResult {
    bool success = false;
    // The document text; the line after "[DATE]" is still empty (see stampDate).
    std::vector<std::string> lines;
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
    // The run is over and the port is closed. Any message ("Timeout occurred.", ...) is shown
    // through the Messenger right after this call.
    virtual void finished(const ReceiveResult& result) = 0;
};

}  // namespace sonalyx
