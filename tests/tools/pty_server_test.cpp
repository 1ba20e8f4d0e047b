#include "emulator/pty_server.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <filesystem>
#include <thread>

#include "../link/raw_pty.h"

// A line the emulator closes is tested over the line: CutOffInReverb in
// tests/link/receive_integration_test.cpp.

namespace sonalyx::emulator {
namespace {

using test::openRawPort;
using test::readAtLeast;

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
        const int port = openRawPort(link);
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
