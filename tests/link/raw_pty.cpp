#include "raw_pty.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <cstdlib>

namespace sonalyx::test {

int openRawPort(const std::string& path) {
    const int fd = ::open(path.c_str(), O_RDWR | O_NOCTTY);
    termios modes{};
    tcgetattr(fd, &modes);
    cfmakeraw(&modes);
    tcsetattr(fd, TCSANOW, &modes);
    return fd;
}

std::vector<std::uint8_t> readAtLeast(int fd, std::size_t count) {
    std::vector<std::uint8_t> got;
    pollfd watched{fd, POLLIN, 0};
    while (got.size() < count && poll(&watched, 1, 2000) > 0) {
        std::uint8_t buffer[1024];
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n <= 0) {
            break;
        }
        got.insert(got.end(), buffer, buffer + n);
    }
    return got;
}

RawPty::RawPty() {
    master_ = posix_openpt(O_RDWR | O_NOCTTY);
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) {
        return;
    }
    portPath_ = ptsname(master_);
    portSide_ = openRawPort(portPath_);
}

RawPty::~RawPty() {
    hangUp();
}

void RawPty::write(const std::vector<std::uint8_t>& bytes) {
    std::size_t done = 0;
    while (done < bytes.size()) {
        const ssize_t written = ::write(master_, bytes.data() + done, bytes.size() - done);
        if (written <= 0) {
            return;
        }
        done += static_cast<std::size_t>(written);
    }
}

std::vector<std::uint8_t> RawPty::readSent(std::size_t count) {
    return readAtLeast(master_, count);
}

void RawPty::hangUp() {
    if (portSide_ >= 0) {
        ::close(portSide_);
        portSide_ = -1;
    }
    if (master_ >= 0) {
        ::close(master_);
        master_ = -1;
    }
}

}  // namespace sonalyx::test
