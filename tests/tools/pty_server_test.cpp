#include "emulator/pty_server.h"

#include <sys/stat.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <filesystem>

// Serving, a port closed and opened again, and a line the emulator closes are tested over the
// line: BadProbeOnce and CutOffInReverb in tests/link/receive_integration_test.cpp.

namespace sonalyx::emulator {
namespace {

TEST(PtyServer, KeepsAStableLinkToThePortWhileOpen) {
    PtyServer server;
    std::string error;
    ASSERT_TRUE(server.open(error)) << error;
    const std::string link =
        (std::filesystem::temp_directory_path() / ("sonalyx-rx-" + std::to_string(getpid())))
            .string();
    ASSERT_TRUE(server.makeLink(link, error)) << error;
    EXPECT_EQ(std::filesystem::read_symlink(link).string(), server.portPath());
    server.close();
    struct stat gone {};
    EXPECT_NE(lstat(link.c_str(), &gone), 0);
}

}  // namespace
}  // namespace sonalyx::emulator
