#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

#include "retrieval/ticker.h"

namespace sonalyx {

// A single-shot QTimer as the receive engine's Ticker: the handler gets the tag it was armed
// with, and the timer is already stopped when the handler runs.
class TimerTicker : public QObject, public Ticker {
    Q_OBJECT

  public:
    explicit TimerTicker(QObject* parent = nullptr);

    void arm(int tag, int intervalMs) override;
    void disarm() override;

    void setHandler(std::function<void(int)> handler) { handler_ = std::move(handler); }
    bool isArmed() const { return timer_.isActive(); }
    int armedTag() const { return timer_.isActive() ? tag_ : 0; }
    // Runs a pending tick now (when something happened that should not wait for it).
    void fireNow();

  private:
    void onTimeout();

    QTimer timer_;
    std::function<void(int)> handler_;
    int tag_ = 0;
};

}  // namespace sonalyx
