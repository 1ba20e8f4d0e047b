#include "platform/stop_requests.h"

#include <fcntl.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <thread>

namespace sonalyx::platform {

namespace {

// The handler cannot reach an object, and writing a byte is about all it may safely do.
std::atomic<int> wakeFd{-1};

constexpr char kStop = 1;
constexpr char kQuit = 0;

void onSignal(int /*signal*/) {
    const int savedErrno = errno;
    const char byte = kStop;
    [[maybe_unused]] const ssize_t written = ::write(wakeFd.load(), &byte, 1);
    errno = savedErrno;
}

}  // namespace

struct StopRequests::State {
    int pipe[2] = {-1, -1};
    struct sigaction previousInterrupt {};
    struct sigaction previousTerminate {};
    std::thread watcher;
};

StopRequests::StopRequests(std::function<void()> onStop) {
    auto state = std::make_unique<State>();
    if (::pipe2(state->pipe, O_CLOEXEC) != 0)
        return;
    ::fcntl(state->pipe[1], F_SETFL, O_NONBLOCK);  // a burst of signals must never block
    wakeFd = state->pipe[1];
    state->watcher = std::thread([readFd = state->pipe[0], onStop = std::move(onStop)] {
        while (true) {
            char byte = kQuit;
            const ssize_t got = ::read(readFd, &byte, 1);
            if (got < 0 && errno == EINTR)
                continue;
            if (got != 1 || byte == kQuit)
                return;
            onStop();
        }
    });
    struct sigaction action {};
    action.sa_handler = &onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, &state->previousInterrupt);
    sigaction(SIGTERM, &action, &state->previousTerminate);
    state_ = std::move(state);
}

StopRequests::~StopRequests() {
    if (state_ == nullptr)
        return;
    sigaction(SIGINT, &state_->previousInterrupt, nullptr);
    sigaction(SIGTERM, &state_->previousTerminate, nullptr);
    const char byte = kQuit;
    while (::write(state_->pipe[1], &byte, 1) != 1 && errno == EINTR) {
    }
    state_->watcher.join();
    wakeFd = -1;
    ::close(state_->pipe[0]);
    ::close(state_->pipe[1]);
}

}  // namespace sonalyx::platform
