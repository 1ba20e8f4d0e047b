#pragma once

#include <QObject>
#include <QSerialPort>
#include <functional>
#include <string>

#include "document/messenger.h"
#include "retrieval/serial_link.h"

namespace sonalyx {

// The serial session on QSerialPort: 9600 8N1 with RTS/CTS and DTR handshake, every transfer
// bounded to 5 s. Failures go to the user through the Messenger and to the caller as false.
// In monitor mode every step is written to the trace sink.
class SerialPortLink : public QObject, public SerialLink {
    Q_OBJECT

  public:
    using TraceSink = std::function<void(const std::string&)>;

    explicit SerialPortLink(Messenger& messenger, QObject* parent = nullptr);
    ~SerialPortLink() override;

    bool open(const std::string& portName, bool monitor) override;
    bool send(const std::vector<std::uint8_t>& bytes) override;
    bool receive(std::size_t count, std::vector<std::uint8_t>& out) override;
    void close() override;

    bool isOpen() const { return port_.isOpen(); }
    void setTraceSink(TraceSink sink) { traceSink_ = std::move(sink); }
    // Called from the event loop (never from inside a transfer) when the line went away, so
    // the owner can let the run see the failure at once instead of at the next tick.
    void setLineLostHandler(std::function<void()> handler) {
        lineLostHandler_ = std::move(handler);
    }
    // Writes a trace line when, and only when, monitor mode is on.
    void logLine(const std::string& text);

  private:
    bool configurePort();
    void raiseHandshakeLines();
    void dropHandshakeLines();
    bool writeWithinBound(const std::vector<std::uint8_t>& bytes);
    void pullWaitingBytes();
    void fail(const std::string& text);
    void onErrorOccurred(QSerialPort::SerialPortError error);

    Messenger& messenger_;
    QSerialPort port_;
    TraceSink traceSink_;
    std::function<void()> lineLostHandler_;
    bool monitor_ = false;
    bool lineLost_ = false;
};

}  // namespace sonalyx
