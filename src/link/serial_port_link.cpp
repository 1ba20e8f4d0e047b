#include "link/serial_port_link.h"

#include <QDeadlineTimer>

#include "link/link_trace.h"

namespace sonalyx {

namespace {

constexpr int kTransferBoundMs = 5000;

}  // namespace

SerialPortLink::SerialPortLink(Messenger& messenger, QObject* parent)
    : QObject(parent), messenger_(messenger) {
    connect(&port_, &QSerialPort::errorOccurred, this, &SerialPortLink::onErrorOccurred);
}

SerialPortLink::~SerialPortLink() {
    if (port_.isOpen()) {
        port_.close();
    }
}

bool SerialPortLink::open(const std::string& portName, bool monitor) {
    monitor_ = monitor;
    lineLost_ = false;
    port_.setPortName(QString::fromStdString(portName));
    const bool opened = port_.open(QIODevice::ReadWrite) && configurePort();
    if (!opened) {
        if (port_.isOpen()) {
            port_.close();
        }
        const std::string text = "Cannot open the serial port(" + portName + ").";
        logLine(text);
        messenger_.show(text, "", MessageMode::Ok);
        return false;
    }
    logLine(portName + ": OPENNED");
    return true;
}

bool SerialPortLink::configurePort() {
    // A whole reply (up to 2048 bytes) must be able to wait in the input queue before it is
    // read, so Qt's own buffer is not capped at the driver's 1024 bytes.
    port_.setReadBufferSize(0);
    const bool configured =
        port_.setBaudRate(QSerialPort::Baud9600) && port_.setDataBits(QSerialPort::Data8) &&
        port_.setParity(QSerialPort::NoParity) && port_.setStopBits(QSerialPort::OneStop) &&
        port_.setFlowControl(QSerialPort::HardwareControl);
    if (!configured) {
        return false;
    }
    raiseHandshakeLines();
    port_.clear(QSerialPort::AllDirections);
    port_.clearError();
    return true;
}

void SerialPortLink::raiseHandshakeLines() {
    // A pseudo-terminal has no modem lines; refusing DTR there is harmless.
    port_.setDataTerminalReady(true);
    port_.clearError();
}

void SerialPortLink::dropHandshakeLines() {
    port_.setFlowControl(QSerialPort::NoFlowControl);
    port_.setRequestToSend(false);
    port_.setDataTerminalReady(false);
    port_.clearError();
}

bool SerialPortLink::send(const std::vector<std::uint8_t>& bytes) {
    logLine("Send " + std::to_string(bytes.size()) + " bytes.");
    logLine(sendTraceLine(bytes));
    if (!writeWithinBound(bytes)) {
        fail("Send failed.");
        return false;
    }
    logLine("Send completed.");
    return true;
}

bool SerialPortLink::writeWithinBound(const std::vector<std::uint8_t>& bytes) {
    if (!port_.isOpen() || lineLost_) {
        return false;
    }
    const qint64 size = static_cast<qint64>(bytes.size());
    if (port_.write(reinterpret_cast<const char*>(bytes.data()), size) != size) {
        return false;
    }
    QDeadlineTimer deadline(kTransferBoundMs);
    while (port_.bytesToWrite() > 0) {
        if (deadline.hasExpired() || !port_.waitForBytesWritten(deadline.remainingTime())) {
            return false;
        }
    }
    return !lineLost_;
}

bool SerialPortLink::receive(std::size_t count, std::vector<std::uint8_t>& out) {
    out.clear();
    if (!port_.isOpen()) {
        fail("Receive failed.");
        return false;
    }
    const qint64 wanted = static_cast<qint64>(count);
    if (port_.bytesAvailable() < wanted) {
        pullWaitingBytes();
    }
    if (port_.bytesAvailable() < wanted) {
        if (lineLost_) {
            fail("Receive failed.");
            return false;
        }
        return true;
    }
    logLine("Receive " + std::to_string(count) + " bytes.");
    out.resize(count);
    if (port_.read(reinterpret_cast<char*>(out.data()), wanted) != wanted) {
        out.clear();
        fail("Receive failed.");
        return false;
    }
    logLine(receiveTraceLine(out));
    return true;
}

void SerialPortLink::pullWaitingBytes() {
    // Takes what the driver already holds without waiting; Qt reports the empty wait as a
    // time-out, which means nothing here.
    if (!lineLost_) {
        port_.waitForReadyRead(0);
    }
    if (port_.error() == QSerialPort::TimeoutError) {
        port_.clearError();
    }
}

void SerialPortLink::close() {
    if (port_.isOpen()) {
        port_.clear(QSerialPort::AllDirections);
        dropHandshakeLines();
        port_.close();
    }
    lineLost_ = false;
    logLine("Port closed.");
}

void SerialPortLink::logLine(const std::string& text) {
    if (monitor_ && traceSink_) {
        traceSink_(text);
    }
}

void SerialPortLink::fail(const std::string& text) {
    logLine(text);
    messenger_.show(text, "", MessageMode::Ok);
}

void SerialPortLink::onErrorOccurred(QSerialPort::SerialPortError error) {
    if (error != QSerialPort::ReadError && error != QSerialPort::ResourceError) {
        return;
    }
    if (lineLost_ || !port_.isOpen()) {
        return;
    }
    lineLost_ = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (lineLost_ && lineLostHandler_) {
                lineLostHandler_();
            }
        },
        Qt::QueuedConnection);
}

}  // namespace sonalyx
