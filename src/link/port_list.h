#pragma once

#include <QStringList>

namespace sonalyx {

// The names given with "--port NAME" (or "--port=NAME") on a command line, in order.
QStringList portsNamedOnCommandLine(const QStringList& arguments);

// The ports the port dialog offers: the named ports first, then "COM1" ... "COM8" on Windows
// or the serial ports the system lists elsewhere; each name once.
QStringList offeredPorts(const QStringList& namedPorts);

}  // namespace sonalyx
