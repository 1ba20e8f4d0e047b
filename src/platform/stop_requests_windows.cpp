#include "platform/stop_requests.h"

#include <windows.h>

#include <mutex>

namespace sonalyx::platform {

namespace {

// The console calls its handlers on a thread it starts for the event, which is already the
// thread of its own the interface promises.
std::mutex watchMutex;
std::function<void()>* watchCall = nullptr;

BOOL WINAPI onConsoleEvent(DWORD event) {
    switch (event) {
        case CTRL_C_EVENT:
        case CTRL_BREAK_EVENT:
        case CTRL_CLOSE_EVENT: {
            const std::lock_guard lock(watchMutex);
            if (watchCall == nullptr)
                return FALSE;
            (*watchCall)();
            return TRUE;
        }
        default:
            return FALSE;
    }
}

}  // namespace

struct StopRequests::State {
    std::function<void()> onStop;
};

StopRequests::StopRequests(std::function<void()> onStop) {
    auto state = std::make_unique<State>(State{std::move(onStop)});
    {
        const std::lock_guard lock(watchMutex);
        watchCall = &state->onStop;
    }
    if (!SetConsoleCtrlHandler(&onConsoleEvent, TRUE)) {
        const std::lock_guard lock(watchMutex);
        watchCall = nullptr;
        return;
    }
    state_ = std::move(state);
}

StopRequests::~StopRequests() {
    if (state_ == nullptr)
        return;
    SetConsoleCtrlHandler(&onConsoleEvent, FALSE);
    const std::lock_guard lock(watchMutex);
    watchCall = nullptr;
}

}  // namespace sonalyx::platform
