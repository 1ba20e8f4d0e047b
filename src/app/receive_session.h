#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

#include "app/held_messenger.h"
#include "link/form_rs232c.h"
#include "link/timer_ticker.h"
#include "retrieval/exchange_log.h"
#include "retrieval/log_naming_messenger.h"
#include "retrieval/logging_serial_link.h"
#include "retrieval/receive_engine.h"

namespace sonalyx {

// One receive run of the main window: the "Receiving" window, which owns the serial session,
// the engine on that session, the ticker that paces it and the run's exchange log. The window
// is shown only once the port is open; when the run ends the port is closed, the log finished
// and the window hidden before any message of the run is shown. The end handler hears the
// result once; the owner may then deleteLater() the session, never delete it inside the
// handler.
class ReceiveSession : public QObject, public ReceiveObserver {
    Q_OBJECT

  public:
    using EndHandler = std::function<void(const ReceiveResult&)>;

    ReceiveSession(Messenger& messenger, QWidget* window);
    ~ReceiveSession() override;

    void setEndHandler(EndHandler handler) { onEnd_ = std::move(handler); }
    // Starts the run's log and the dialogue, and shows the "Receiving" window. False when nothing
    // started (the port did not open, which has been said); the end handler is then not called.
    bool start(const ReceiveOptions& options);
    // Stops a run still going; the end handler hears a cancelled result.
    void cancel();
    TFormRS232C* window() const { return form_.data(); }
    // The run's exchange log; empty when none could be written.
    QString logPath() const;

    void progress(int percent) override;
    void commandSent(const std::string& command) override;
    void progressed(const ReceiveProgress& progress) override;
    void finished(const ReceiveResult& result) override;

  private:
    void onLineLost();
    void startLog(const ReceiveOptions& options);

    HeldMessenger held_;
    LogNamingMessenger messenger_;
    // The window is a child of the main window, which may take it down first when it closes.
    QPointer<TFormRS232C> form_;
    ExchangeLog log_;
    std::unique_ptr<LoggingSerialLink> loggedLink_;
    TimerTicker ticker_;
    std::unique_ptr<ReceiveEngine> engine_;
    EndHandler onEnd_;
    bool ended_ = false;
};

}  // namespace sonalyx
