#pragma once

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "support/golden.h"

namespace sonalyx::test {

// Runs sonalyx-cli (render, or any command) as a program in a folder of its own, keeping its
// stderr.
class RenderFixture : public ::testing::Test {
  protected:
    void SetUp() override {
        dir_ = std::filesystem::temp_directory_path() /
               ("sonalyx-render-test-" + std::to_string(getpid()));
        std::filesystem::create_directories(dir_);
    }
    void TearDown() override { std::filesystem::remove_all(dir_); }
    std::string path(const std::string& name) const { return (dir_ / name).string(); }
    static std::string sample(int layout) {
        return samplesPath("sample-layout-" + std::to_string(layout) + ".csv");
    }
    // Returns the exit status; stderr is in err_.
    int render(const std::string& args) { return run("render " + args); }
    int run(const std::string& args) {
        const std::string command =
            std::string(SONALYX_CLI) + " " + args + " 2>'" + path("stderr.txt") + "'";
        const int raw = std::system(command.c_str());
        err_ = fileBytes(path("stderr.txt"));
        return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    }
    std::string bytes(const std::string& name) const { return fileBytes(path(name)); }
    // Big-endian 32-bit number of a PNG header (the width at 16, the height at 20).
    static unsigned pngNumber(const std::string& png, size_t at) {
        unsigned value = 0;
        for (size_t i = at; i < at + 4 && i < png.size(); ++i)
            value = value << 8 | static_cast<unsigned char>(png[i]);
        return value;
    }

    std::filesystem::path dir_;
    std::string err_;
};

}  // namespace sonalyx::test
