#include "emulator/pty_server.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace sonalyx::emulator {

namespace {

// 9600 baud, 8N1: ten bits on the wire per byte.
constexpr double kBytesPerSecond = 960.0;
constexpr int kPollMs = 5;

std::string systemError(const std::string& what) {
    return what + ": " + std::strerror(errno);
}

}  // namespace

PtyServer::~PtyServer() {
    close();
}

bool PtyServer::open(std::string& error) {
    master_ = posix_openpt(O_RDWR | O_NOCTTY);
    if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) {
        error = systemError("cannot create a pseudo-terminal");
        return false;
    }
    const char* name = ptsname(master_);
    if (name == nullptr) {
        error = systemError("cannot name the pseudo-terminal");
        return false;
    }
    portPath_ = name;
    portSide_ = ::open(name, O_RDWR | O_NOCTTY);
    if (portSide_ < 0) {
        error = systemError("cannot open " + portPath_);
        return false;
    }
    // Raw bytes both ways: no echo, no CR translation, until the computer sets its own modes.
    termios modes{};
    tcgetattr(portSide_, &modes);
    cfmakeraw(&modes);
    tcsetattr(portSide_, TCSANOW, &modes);
    fcntl(master_, F_SETFL, fcntl(master_, F_GETFL) | O_NONBLOCK);
    // Packet mode tells us when the computer purges its input, as it does when it opens or
    // closes the port: the reply being sent is then dropped, as a receiver stops talking when
    // the handshake lines fall.
    int packetMode = 1;
    if (ioctl(master_, TIOCPKT, &packetMode) != 0) {
        error = systemError("cannot watch the port's purges");
        return false;
    }
    return true;
}

bool PtyServer::makeLink(const std::string& linkPath, std::string& error) {
    struct stat existing {};
    if (lstat(linkPath.c_str(), &existing) == 0) {
        if (!S_ISLNK(existing.st_mode)) {
            error = linkPath + " exists and is not a symlink";
            return false;
        }
        ::unlink(linkPath.c_str());
    }
    if (symlink(portPath_.c_str(), linkPath.c_str()) != 0) {
        error = systemError("cannot make the link " + linkPath);
        return false;
    }
    linkPath_ = linkPath;
    return true;
}

void PtyServer::serve(ReceiverEmulator& emulator, bool pace, bool verbose,
                      const std::atomic<bool>& stop) {
    while (!stop.load() && master_ >= 0) {
        pollfd watched{master_, POLLIN, 0};
        if (!outgoing_.empty() && bytesAllowed(pace) > 0) {
            watched.events |= POLLOUT;
        }
        const int ready = poll(&watched, 1, kPollMs);
        if (ready < 0 && errno != EINTR) {
            return;
        }
        if (ready > 0 && (watched.revents & POLLIN) != 0 && !readCommands(emulator, verbose)) {
            return;
        }
        writePending(pace);
        if (closeAfterWrite_ && outgoing_.empty()) {
            // Let the computer take the partial reply, then pull the cable.
            tcdrain(master_);
            close();
            return;
        }
    }
}

bool PtyServer::readCommands(ReceiverEmulator& emulator, bool verbose) {
    std::vector<std::uint8_t> buffer(256);
    const ssize_t count = ::read(master_, buffer.data(), buffer.size());
    if (count < 0) {
        return errno == EAGAIN || errno == EINTR;
    }
    if (count == 0) {
        return true;
    }
    if (buffer[0] != TIOCPKT_DATA) {
        if ((buffer[0] & TIOCPKT_FLUSHREAD) != 0) {
            outgoing_.clear();
        }
        return true;
    }
    buffer.erase(buffer.begin());
    buffer.resize(static_cast<std::size_t>(count) - 1);
    const std::size_t known = emulator.commands().size();
    const ReceiverEmulator::Output output = emulator.feed(buffer);
    if (verbose) {
        for (std::size_t i = known; i < emulator.commands().size(); ++i) {
            std::fprintf(stderr, "?%s\n", emulator.commands()[i].c_str());
        }
    }
    queueReply(output);
    return true;
}

void PtyServer::queueReply(const ReceiverEmulator::Output& output) {
    if (outgoing_.empty()) {
        paceStart_ = Clock::now();
        pacedSent_ = 0;
    }
    outgoing_.insert(outgoing_.end(), output.bytes.begin(), output.bytes.end());
    closeAfterWrite_ = closeAfterWrite_ || output.closeLine;
}

std::size_t PtyServer::bytesAllowed(bool pace) const {
    if (!pace) {
        return outgoing_.size();
    }
    const std::chrono::duration<double> elapsed = Clock::now() - paceStart_;
    const auto due = static_cast<std::size_t>(elapsed.count() * kBytesPerSecond) + 1;
    return std::min(outgoing_.size(), due > pacedSent_ ? due - pacedSent_ : 0);
}

void PtyServer::writePending(bool pace) {
    const std::size_t allowed = bytesAllowed(pace);
    if (allowed == 0) {
        return;
    }
    const std::vector<std::uint8_t> chunk(outgoing_.begin(),
                                          outgoing_.begin() + static_cast<std::ptrdiff_t>(allowed));
    const ssize_t written = ::write(master_, chunk.data(), chunk.size());
    if (written > 0) {
        outgoing_.erase(outgoing_.begin(), outgoing_.begin() + written);
        pacedSent_ += static_cast<std::size_t>(written);
    }
}

void PtyServer::close() {
    if (!linkPath_.empty()) {
        ::unlink(linkPath_.c_str());
        linkPath_.clear();
    }
    if (portSide_ >= 0) {
        ::close(portSide_);
        portSide_ = -1;
    }
    if (master_ >= 0) {
        ::close(master_);
        master_ = -1;
    }
}

}  // namespace sonalyx::emulator
