#include "app/receive_session.h"

#include <QDateTime>
#include <QDir>

#include "app/receive_log_folder.h"

namespace sonalyx {

ReceiveSession::ReceiveSession(Messenger& messenger, QWidget* window)
    : QObject(window),
      held_(messenger),
      messenger_(held_),
      form_(new TFormRS232C(messenger_, window)),
      loggedLink_(std::make_unique<LoggingSerialLink>(form_->link(), log_)),
      engine_(std::make_unique<ReceiveEngine>(*loggedLink_, ticker_, messenger_, *this)) {
    ticker_.setHandler([this](int tag) { engine_->onTick(tag); });
    form_->link().setLineLostHandler([this] { onLineLost(); });
    connect(form_.data(), &TFormRS232C::CancelRequested, this, &ReceiveSession::cancel);
}

ReceiveSession::~ReceiveSession() {
    // The engine closes the port of a run still going, so the session must outlive it.
    engine_.reset();
    delete form_.data();
}

bool ReceiveSession::start(const ReceiveOptions& options) {
    startLog(options);
    held_.hold();
    const bool started = engine_->start(options);
    if (!started) {
        held_.release();
        return false;
    }
    if (!ended_) {
        form_->show();
    }
    return true;
}

void ReceiveSession::startLog(const ReceiveOptions& options) {
    const QString path = ReceiveLogFolder::newLogFile();
    if (path.isEmpty()) {
        return;
    }
    const QString startedAt =
        QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd HH:mm:ss"));
    if (log_.start(path.toStdString(), startedAt.toStdString())) {
        messenger_.setLogPath(QDir::toNativeSeparators(path).toStdString());
    }
    log_.runOptions(options);
}

QString ReceiveSession::logPath() const {
    return log_.writing() ? QString::fromStdString(log_.path()) : QString();
}

void ReceiveSession::cancel() {
    if (engine_->isRunning()) {
        engine_->cancel();
    }
}

void ReceiveSession::onLineLost() {
    // A pulled cable ends the run now rather than at the next poll.
    if (ticker_.armedTag() == ReceiveEngine::kReplyPollTag) {
        ticker_.fireNow();
    }
}

void ReceiveSession::progress(int /*percent*/) {}

void ReceiveSession::commandSent(const std::string& /*command*/) {}

void ReceiveSession::progressed(const ReceiveProgress& progress) {
    if (form_ != nullptr) {
        form_->ShowProgress(progress);
    }
}

void ReceiveSession::finished(const ReceiveResult& result) {
    ended_ = true;
    log_.ended(result);
    if (form_ != nullptr) {
        form_->hide();
    }
    held_.release();
    if (onEnd_) {
        onEnd_(result);
    }
}

}  // namespace sonalyx
