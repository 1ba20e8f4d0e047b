#pragma once

#include <QList>
#include <QString>
#include <QStringList>

namespace sonalyx {

// A serial port as the port dialog offers it: the name to open and what the system says of it.
struct PortChoice {
    QString name;
    QString description{};  // "FT232R USB UART"
    QString maker{};        // "FTDI"

    // "name — description (maker)"; the bare name when the system says nothing of the port.
    QString caption() const;
    bool operator==(const PortChoice&) const = default;
};

// The names given with "--port NAME" (or "--port=NAME") on a command line, in order.
QStringList portsNamedOnCommandLine(const QStringList& arguments);

// The serial ports of this system: "COM1" ... "COM8" on Windows, those the system lists
// elsewhere; each with the description and maker the system reports.
QList<PortChoice> systemPorts();

// The ports the port dialog offers: the named ports first, then the port of the last successful
// receive while it is still there, then the system's ports; each name once, described as the
// system describes it.
QList<PortChoice> offeredPorts(const QStringList& namedPorts, const QString& lastPort,
                               const QList<PortChoice>& system);

}  // namespace sonalyx
