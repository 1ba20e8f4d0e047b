#include "termination_signals.h"

#include <fcntl.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <cerrno>

namespace sonalyx {

namespace {

// One pair for the process: a handler cannot reach an object.
int signalPipe[2] = {-1, -1};

}  // namespace

TerminationSignals::TerminationSignals(std::function<void()> onSignal)
    : onSignal_(std::move(onSignal)) {
    if (signalPipe[0] < 0 && ::pipe2(signalPipe, O_CLOEXEC | O_NONBLOCK) != 0) {
        signalPipe[0] = signalPipe[1] = -1;
        return;
    }
    notifier_ = std::make_unique<QSocketNotifier>(signalPipe[0], QSocketNotifier::Read);
    QObject::connect(notifier_.get(), &QSocketNotifier::activated, [this] { drain(); });
    struct sigaction action {};
    action.sa_handler = &TerminationSignals::handle;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, &previousInterrupt_);
    sigaction(SIGTERM, &action, &previousTerminate_);
}

TerminationSignals::~TerminationSignals() {
    if (notifier_ == nullptr) {
        return;
    }
    sigaction(SIGINT, &previousInterrupt_, nullptr);
    sigaction(SIGTERM, &previousTerminate_, nullptr);
}

void TerminationSignals::handle(int /*signal*/) {
    const int savedErrno = errno;
    const char byte = 1;
    [[maybe_unused]] const ssize_t written = ::write(signalPipe[1], &byte, 1);
    errno = savedErrno;
}

void TerminationSignals::drain() {
    char buffer[16];
    while (::read(signalPipe[0], buffer, sizeof buffer) > 0) {
    }
    if (onSignal_) {
        onSignal_();
    }
}

}  // namespace sonalyx
