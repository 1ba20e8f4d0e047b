#pragma once

#include <functional>
#include <memory>

namespace sonalyx::platform {

// Ctrl+C and the system's request to end a console program (SIGINT and SIGTERM; on Windows the
// console's Ctrl+C, Ctrl+Break and close) become a call to `onStop` while the object lives,
// instead of ending the process. The call comes on a thread of its own, never inside a signal
// handler, so it may post to an event loop; it must not block. One watch at a time.
class StopRequests {
  public:
    explicit StopRequests(std::function<void()> onStop);
    ~StopRequests();
    StopRequests(const StopRequests&) = delete;
    StopRequests& operator=(const StopRequests&) = delete;

    // False when the system would not let us watch; stop requests then end the process as usual.
    bool watching() const { return state_ != nullptr; }

  private:
    struct State;
    std::unique_ptr<State> state_;
};

}  // namespace sonalyx::platform
