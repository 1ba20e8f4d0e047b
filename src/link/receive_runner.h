#pragma once

#include <QEventLoop>
#include <functional>
#include <string>
#include <vector>

#include "link/serial_port_link.h"
#include "link/timer_ticker.h"
#include "retrieval/exchange_log.h"
#include "retrieval/log_naming_messenger.h"
#include "retrieval/logging_serial_link.h"
#include "retrieval/receive_engine.h"

namespace sonalyx {

// One receive run without windows: the engine on a QSerialPort link, paced by a QTimer, in a
// local event loop until the run is over. The command-line tool and the link tests use it.
class ReceiveRunner : public ReceiveObserver {
  public:
    ReceiveRunner(SerialPortLink& link, Messenger& messenger);

    // Writes the next run's exchange log to path (startedAt is the wall-clock time for the
    // heading). False when the file cannot be written; the run goes ahead without it.
    bool startLog(const std::string& path, const std::string& startedAt);
    // Runs the whole dialogue; the result carries no lines when the run failed.
    ReceiveResult run(const ReceiveOptions& options);
    // Ends a run going on (from the event loop, e.g. on a signal); run() then returns a
    // cancelled result.
    void cancel();
    // The commands sent during the last run, repeats included.
    const std::vector<std::string>& commands() const { return commands_; }
    void setProgressHandler(std::function<void(int)> handler) { onProgress_ = std::move(handler); }

    void progress(int percent) override;
    void commandSent(const std::string& command) override;
    void finished(const ReceiveResult& result) override;

  private:
    void onLineLost();

    SerialPortLink& link_;
    ExchangeLog log_;
    LoggingSerialLink loggedLink_;
    LogNamingMessenger messenger_;
    TimerTicker ticker_;
    ReceiveEngine engine_;
    QEventLoop loop_;
    std::function<void(int)> onProgress_;
    std::vector<std::string> commands_;
    ReceiveResult result_;
    bool finished_ = false;
};

}  // namespace sonalyx
