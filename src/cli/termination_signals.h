#pragma once

#include <csignal>
#include <functional>
#include <memory>

class QSocketNotifier;

namespace sonalyx {

// Turns SIGINT and SIGTERM into a call from the event loop while the object lives. The
// handler itself only writes a byte to a pipe, which is all a signal handler may safely do.
class TerminationSignals {
  public:
    explicit TerminationSignals(std::function<void()> onSignal);
    ~TerminationSignals();
    TerminationSignals(const TerminationSignals&) = delete;
    TerminationSignals& operator=(const TerminationSignals&) = delete;

  private:
    static void handle(int signal);
    void drain();

    std::function<void()> onSignal_;
    std::unique_ptr<QSocketNotifier> notifier_;
    struct sigaction previousInterrupt_ {};
    struct sigaction previousTerminate_ {};
};

}  // namespace sonalyx
