#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <set>
#include <string>

#include "support/golden.h"

namespace {

namespace fs = std::filesystem;

std::string Read(const fs::path& file) {
    std::ifstream in(file, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), {});
}

// sonalyx-cli print onto PDF files: the pages, their orientation, the refusals.
TEST(CliPrint, PutsThePrinterPagesOnALandscapePdf) {
    // pages: of the PDF when the status is 0; said: on stderr when it is 1.
    // clang-format off
    struct Row { const char* name; const char* options; const char* output; int status; int pages; const char* said; };
    // clang-format on
    const Row rows[] = {
        {"one channel", "--channel 1", "a.pdf", 0, 1, ""},
        {"group delay", "--tab groupdelay --2d", "b.pdf", 0, 1, ""},
        {"all memories", "--tab parameters", "c.pdf", 0, 3, ""},
        {"one memory", "--tab parameters --memory 3", "d.pdf", 0, 1, ""},
        {"all channels", "", "e.pdf", 1, 0, "Select the channel.\n"},
        {"all bands", "--freq", "f.pdf", 1, 0, "Select the frequency.\n"},
        {"not a pdf", "--channel 1", "g.png", 2, 0, ""},
        {"a render page", "--tab parameters --page 1 --pages 2", "h.pdf", 2, 0, ""},
    };
    const fs::path dir = fs::temp_directory_path() / ("sonalyx-print-" + std::to_string(getpid()));
    fs::create_directories(dir);
    const std::string sample = sonalyx::test::samplesPath("sample-layout-7.csv");
    for (const Row& row : rows) {
        const fs::path out = dir / row.output;
        const std::string command = std::string(SONALYX_CLI) + " print '" + sample + "' -o '" +
                                    out.string() + "' " + row.options + " 2>'" +
                                    (dir / "err.txt").string() + "'";
        const int raw = std::system(command.c_str());
        ASSERT_TRUE(WIFEXITED(raw)) << row.name;
        EXPECT_EQ(WEXITSTATUS(raw), row.status) << row.name;
        const std::string err = Read(dir / "err.txt");
        if (row.status == 1) {
            EXPECT_EQ(err, row.said) << row.name;
        }
        EXPECT_EQ(fs::exists(out), row.status == 0) << row.name << ": " << err;
        if (row.status != 0) {
            continue;
        }
        const std::string pdf = Read(out);
        const std::regex page("/Type\\s*/Page[^s]");
        EXPECT_EQ(std::distance(std::sregex_iterator(pdf.begin(), pdf.end(), page), {}), row.pages)
            << row.name;
        const std::regex box("/MediaBox\\s*\\[\\s*0\\s+0\\s+([0-9.]+)\\s+([0-9.]+)");
        std::smatch m;
        ASSERT_TRUE(std::regex_search(pdf, m, box)) << row.name;
        EXPECT_GT(std::stod(m[1]), std::stod(m[2])) << row.name << ": landscape";
    }
    // Nothing half-written is left behind by the refusals.
    std::set<std::string> left;
    for (const auto& entry : fs::directory_iterator(dir)) {
        left.insert(entry.path().filename().string());
    }
    EXPECT_EQ(left, (std::set<std::string>{"a.pdf", "b.pdf", "c.pdf", "d.pdf", "err.txt"}));
    fs::remove_all(dir);
}

}  // namespace
