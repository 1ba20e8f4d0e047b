#pragma once

#include "retrieval/exchange_log.h"
#include "retrieval/serial_link.h"

namespace sonalyx {

// A serial link that writes everything going over the line into an exchange log and otherwise
// behaves exactly like the link it wraps.
class LoggingSerialLink : public SerialLink {
  public:
    LoggingSerialLink(SerialLink& link, ExchangeLog& log) : link_(link), log_(log) {}

    bool open(const std::string& portName, bool monitor) override;
    bool send(const std::vector<std::uint8_t>& bytes) override;
    bool receive(std::size_t count, std::vector<std::uint8_t>& out) override;
    void close() override;

  private:
    SerialLink& link_;
    ExchangeLog& log_;
};

}  // namespace sonalyx
