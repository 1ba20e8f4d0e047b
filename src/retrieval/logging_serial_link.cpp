#include "retrieval/logging_serial_link.h"

namespace sonalyx {

bool LoggingSerialLink::open(const std::string& portName, bool monitor) {
    const bool ok = link_.open(portName, monitor);
    log_.opened(portName, ok);
    return ok;
}

bool LoggingSerialLink::send(const std::vector<std::uint8_t>& bytes) {
    const bool ok = link_.send(bytes);
    log_.sent(bytes, ok);
    return ok;
}

bool LoggingSerialLink::receive(std::size_t count, std::vector<std::uint8_t>& out) {
    const bool ok = link_.receive(count, out);
    log_.received(count, out, ok);
    return ok;
}

void LoggingSerialLink::close() {
    link_.close();
    log_.closed();
}

}  // namespace sonalyx
