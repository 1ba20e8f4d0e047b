#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sonalyx {

// The serial session with the receiver: 9600 8N1, RTS/CTS and DTR handshake. Implementations
// report their own failures to the user ("Cannot open the serial port(NAME).", "Send failed.",
// "Receive failed.") and return false to the caller.
class SerialLink {
  public:
    virtual ~SerialLink() = default;
    virtual bool open(const std::string& portName, bool monitor) = 0;
    // Writes all bytes; false when the write failed or did not finish within 5 s.
    virtual bool send(const std::vector<std::uint8_t>& bytes) = 0;
    // Asks for exactly count bytes. When fewer are waiting, returns true with out empty and
    // consumes nothing; otherwise out holds count bytes. False means the read itself failed
    // (including a line that went away).
    virtual bool receive(std::size_t count, std::vector<std::uint8_t>& out) = 0;
    virtual void close() = 0;
};

}  // namespace sonalyx
