#include "fake_serial_link.h"

#include <algorithm>

namespace sonalyx::test {

bool FakeSerialLink::open(const std::string& portName, bool monitor) {
    const int index = openCount_++;
    portName_ = portName;
    monitorRequested_ = monitorRequested_ || monitor;
    if (index == failOpenAt)
        return false;
    open_ = true;
    return true;
}

bool FakeSerialLink::send(const std::vector<std::uint8_t>& bytes) {
    const int index = sendCount_++;
    if (!open_)
        sentWhileClosed_ = true;
    if (index == failSendAt)
        return false;
    std::string command(bytes.begin(), bytes.end());
    if (!command.empty() && command.back() == '\r')
        command.pop_back();
    commands_.push_back(command);
    if (responder_) {
        const auto reply = responder_(command);
        inFlight_.insert(inFlight_.end(), reply.begin(), reply.end());
    }
    return true;
}

bool FakeSerialLink::receive(std::size_t count, std::vector<std::uint8_t>& out) {
    out.clear();
    if (failReceive)
        return false;
    if (waiting_.size() < count)
        return true;
    out.assign(waiting_.begin(), waiting_.begin() + static_cast<std::ptrdiff_t>(count));
    waiting_.erase(waiting_.begin(), waiting_.begin() + static_cast<std::ptrdiff_t>(count));
    return true;
}

void FakeSerialLink::close() {
    ++closeCount_;
    open_ = false;
    // Closing purges both directions, like the real port.
    inFlight_.clear();
    waiting_.clear();
}

void FakeSerialLink::deliver() {
    const std::size_t n =
        bytesPerDelivery == 0 ? inFlight_.size() : std::min(bytesPerDelivery, inFlight_.size());
    waiting_.insert(waiting_.end(), inFlight_.begin(),
                    inFlight_.begin() + static_cast<std::ptrdiff_t>(n));
    inFlight_.erase(inFlight_.begin(), inFlight_.begin() + static_cast<std::ptrdiff_t>(n));
}

}  // namespace sonalyx::test
