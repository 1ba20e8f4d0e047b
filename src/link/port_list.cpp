#include "link/port_list.h"

#include <QFileInfo>
#include <QSerialPortInfo>
#include <algorithm>

namespace sonalyx {

QString PortChoice::caption() const {
    QString about = description;
    if (!maker.isEmpty()) {
        about = about.isEmpty() ? maker : QStringLiteral("%1 (%2)").arg(about, maker);
    }
    return about.isEmpty() ? name : QStringLiteral("%1 \u2014 %2").arg(name, about);
}

QList<PortChoice> systemPorts() {
    QList<PortChoice> ports;
    const auto available = QSerialPortInfo::availablePorts();
#ifdef Q_OS_WIN
    for (int number = 1; number <= 8; ++number) {
        ports.append({QStringLiteral("COM%1").arg(number)});
    }
    for (const QSerialPortInfo& info : available) {
        for (PortChoice& port : ports) {
            if (port.name == info.portName()) {
                port.description = info.description();
                port.maker = info.manufacturer();
            }
        }
    }
#else
    for (const QSerialPortInfo& info : available) {
        ports.append({info.systemLocation(), info.description(), info.manufacturer()});
    }
    std::sort(ports.begin(), ports.end(),
              [](const PortChoice& a, const PortChoice& b) { return a.name < b.name; });
#endif
    return ports;
}

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

QList<PortChoice> offeredPorts(const QStringList& namedPorts, const QString& lastPort,
                               const QList<PortChoice>& system) {
    const auto find = [&system](const QString& name) {
        return std::find_if(system.begin(), system.end(),
                            [&name](const PortChoice& port) { return port.name == name; });
    };
    QStringList names = namedPorts;
    // A port that went away (an adapter unplugged) is not worth offering first.
    if (!lastPort.isEmpty() && (find(lastPort) != system.end() || QFileInfo::exists(lastPort))) {
        names << lastPort;
    }
    for (const PortChoice& port : system) {
        names << port.name;
    }
    names.removeDuplicates();
    QList<PortChoice> ports;
    for (const QString& name : names) {
        const auto found = find(name);
        ports.append(found != system.end() ? *found : PortChoice{name});
    }
    return ports;
}

}  // namespace sonalyx
