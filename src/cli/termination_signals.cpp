#include "termination_signals.h"

#include <QMetaObject>

namespace sonalyx {

TerminationSignals::TerminationSignals(std::function<void()> onSignal)
    : watch_([this, onSignal = std::move(onSignal)] {
          QMetaObject::invokeMethod(&receiver_, onSignal, Qt::QueuedConnection);
      }) {}

}  // namespace sonalyx
