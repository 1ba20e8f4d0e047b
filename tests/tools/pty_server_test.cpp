#include "emulator/pty_server.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <termios.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <filesystem>
#include <thread>

// A line the emulator closes is tested over the line: CutOffInReverb in
// tests/link/receive_integration_test.cpp.

namespace sonalyx::emulator {
namespace {

// Opens the port side the way a serial program would: raw, both directions.
int openPort(const std::string& path) {
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

TEST(PtyServer, ServesThePortAndItsLink) {
    PtyServer server;
    std::string error;
    ASSERT_TRUE(server.open(error)) << error;
    const std::string link =
        (std::filesystem::temp_directory_path() / ("sonalyx-rx-" + std::to_string(getpid())))
            .string();
    ASSERT_TRUE(server.makeLink(link, error)) << error;
    EXPECT_EQ(std::filesystem::read_symlink(link).string(), server.portPath());

    ReceiverEmulator emulator(ReceiverProfile{});
    std::atomic<bool> stop{false};
    std::thread serving([&] { server.serve(emulator, false, false, stop); });

    // The port can be closed and opened again: the server holds its own end.
    for (int round = 0; round < 2; ++round) {
        const int port = openPort(link);
        ASSERT_GE(port, 0);
        ASSERT_EQ(::write(port, "?EI\r", 4), 4);
        EXPECT_EQ(readAtLeast(port, 7), std::vector<std::uint8_t>({0, 0, 4, 10, 0, 2, 0}));
        ::close(port);
    }
    stop.store(true);
    serving.join();
    server.close();
    struct stat gone {};
    EXPECT_NE(lstat(link.c_str(), &gone), 0);
}

}  // namespace
}  // namespace sonalyx::emulator
