#include "link/timer_ticker.h"

namespace sonalyx {

TimerTicker::TimerTicker(QObject* parent) : QObject(parent) {
    timer_.setSingleShot(true);
    timer_.setTimerType(Qt::PreciseTimer);
    connect(&timer_, &QTimer::timeout, this, &TimerTicker::onTimeout);
}

void TimerTicker::arm(int tag, int intervalMs) {
    tag_ = tag;
    timer_.start(intervalMs);
}

void TimerTicker::disarm() {
    timer_.stop();
}

void TimerTicker::fireNow() {
    if (timer_.isActive()) {
        timer_.stop();
        onTimeout();
    }
}

void TimerTicker::onTimeout() {
    if (handler_) {
        handler_(tag_);
    }
}

}  // namespace sonalyx
