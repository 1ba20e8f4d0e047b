#pragma once

#include <QObject>
#include <QPointer>
#include <functional>
#include <memory>

#include "link/form_rs232c.h"
#include "link/timer_ticker.h"
#include "retrieval/receive_engine.h"

namespace sonalyx {

// One receive run of the main window: the "Receiving" window, which owns the serial session,
// the engine on that session and the ticker that paces it. The end handler hears the result
// once; the owner may then deleteLater() the session, never delete it inside the handler.
class ReceiveSession : public QObject, public ReceiveObserver {
    Q_OBJECT

  public:
    using EndHandler = std::function<void(const ReceiveResult&)>;

    ReceiveSession(Messenger& messenger, QWidget* window);
    ~ReceiveSession() override;

    void setEndHandler(EndHandler handler) { onEnd_ = std::move(handler); }
    // Shows the "Receiving" window and starts the dialogue. False when nothing started (the
    // port did not open); the end handler is then not called.
    bool start(const ReceiveOptions& options);
    TFormRS232C* window() const { return form_.data(); }

    void progress(int percent) override;
    void commandSent(const std::string& command) override;
    void finished(const ReceiveResult& result) override;

  private:
    void onLineLost();

    // The window is a child of the main window, which may take it down first when it closes.
    QPointer<TFormRS232C> form_;
    TimerTicker ticker_;
    std::unique_ptr<ReceiveEngine> engine_;
    EndHandler onEnd_;
    bool ended_ = false;
};

}  // namespace sonalyx
