#pragma once

#include <QObject>
#include <functional>

#include "platform/stop_requests.h"

namespace sonalyx {

// Turns Ctrl+C and the system's request to end (SIGINT and SIGTERM, or their Windows console
// events) into a call from the event loop while the object lives.
class TerminationSignals {
  public:
    explicit TerminationSignals(std::function<void()> onSignal);

  private:
    // Declared first, so that the watch ends before the calls it posts lose their receiver.
    QObject receiver_;
    platform::StopRequests watch_;
};

}  // namespace sonalyx
