#include "app/receive_session.h"

namespace sonalyx {

ReceiveSession::ReceiveSession(Messenger& messenger, QWidget* window)
    : QObject(window),
      form_(new TFormRS232C(messenger, window)),
      engine_(std::make_unique<ReceiveEngine>(form_->link(), ticker_, messenger, *this)) {
    ticker_.setHandler([this](int tag) { engine_->onTick(tag); });
    form_->link().setLineLostHandler([this] { onLineLost(); });
}

ReceiveSession::~ReceiveSession() {
    // The engine closes the port of a run still going, so the session must outlive it.
    engine_.reset();
    delete form_.data();
}

bool ReceiveSession::start(const ReceiveOptions& options) {
    form_->setProgress(0);
    form_->show();
    return engine_->start(options) || ended_;
}

void ReceiveSession::onLineLost() {
    // A pulled cable ends the run now rather than at the next poll.
    if (ticker_.armedTag() == ReceiveEngine::kReplyPollTag) {
        ticker_.fireNow();
    }
}

void ReceiveSession::progress(int percent) {
    if (form_ != nullptr) {
        form_->setProgress(percent);
    }
}

void ReceiveSession::commandSent(const std::string& /*command*/) {}

void ReceiveSession::finished(const ReceiveResult& result) {
    ended_ = true;
    if (form_ != nullptr) {
        form_->hide();
    }
    if (onEnd_) {
        onEnd_(result);
    }
}

}  // namespace sonalyx
