#include "link/port_list.h"

#include <QSerialPortInfo>

namespace sonalyx {

namespace {

QStringList systemPorts() {
    QStringList ports;
#ifdef Q_OS_WIN
    for (int number = 1; number <= 8; ++number) {
        ports << QStringLiteral("COM%1").arg(number);
    }
#else
    for (const QSerialPortInfo& info : QSerialPortInfo::availablePorts()) {
        ports << info.systemLocation();
    }
    ports.sort();
#endif
    return ports;
}

}  // namespace

QStringList portsNamedOnCommandLine(const QStringList& arguments) {
    static const QString kOption = QStringLiteral("--port");
    static const QString kOptionWithValue = QStringLiteral("--port=");
    QStringList ports;
    for (qsizetype i = 0; i < arguments.size(); ++i) {
        const QString& argument = arguments.at(i);
        if (argument == kOption && i + 1 < arguments.size()) {
            ports << arguments.at(++i);
        } else if (argument.startsWith(kOptionWithValue)) {
            ports << argument.mid(kOptionWithValue.size());
        }
    }
    ports.removeAll(QString());
    return ports;
}

QStringList offeredPorts(const QStringList& namedPorts) {
    QStringList ports = namedPorts;
    ports << systemPorts();
    ports.removeDuplicates();
    return ports;
}

}  // namespace sonalyx
