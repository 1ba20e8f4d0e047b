#include "link/receive_runner.h"

namespace sonalyx {

ReceiveRunner::ReceiveRunner(SerialPortLink& link, Messenger& messenger)
    : link_(link),
      loggedLink_(link, log_),
      messenger_(messenger),
      engine_(loggedLink_, ticker_, messenger_, *this) {
    ticker_.setHandler([this](int tag) { engine_.onTick(tag); });
    link_.setLineLostHandler([this] { onLineLost(); });
}

bool ReceiveRunner::startLog(const std::string& path, const std::string& startedAt) {
    const bool writing = log_.start(path, startedAt);
    messenger_.setLogPath(writing ? path : std::string());
    return writing;
}

ReceiveResult ReceiveRunner::run(const ReceiveOptions& options) {
    commands_.clear();
    result_ = {};
    finished_ = false;
    log_.runOptions(options);
    if (!engine_.start(options) && !finished_) {
        return {};
    }
    if (!finished_) {
        loop_.exec();
    }
    return result_;
}

void ReceiveRunner::cancel() {
    engine_.cancel();
}

void ReceiveRunner::onLineLost() {
    // A pulled cable ends the run now rather than at the next poll.
    if (ticker_.armedTag() == ReceiveEngine::kReplyPollTag) {
        ticker_.fireNow();
    }
}

void ReceiveRunner::progress(int percent) {
    if (onProgress_) {
        onProgress_(percent);
    }
}

void ReceiveRunner::commandSent(const std::string& command) {
    commands_.push_back(command);
}

void ReceiveRunner::finished(const ReceiveResult& result) {
    result_ = result;
    finished_ = true;
    log_.ended(result);
    loop_.quit();
}

}  // namespace sonalyx
