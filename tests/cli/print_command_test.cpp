#include <gtest/gtest.h>

#include <filesystem>
#include <regex>
#include <set>

#include "render_fixture.h"

namespace sonalyx::test {
namespace {

using CliPrint = RenderFixture;

// sonalyx-cli print onto PDF files: the pages, their orientation, the refusals.
TEST_F(CliPrint, PutsThePrinterPagesOnALandscapePdf) {
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
    for (const Row& row : rows) {
        EXPECT_EQ(run("print '" + sample(7) + "' -o '" + path(row.output) + "' " + row.options),
                  row.status)
            << row.name;
        if (row.status == 1) {
            EXPECT_EQ(err_, row.said) << row.name;
        }
        EXPECT_EQ(std::filesystem::exists(path(row.output)), row.status == 0)
            << row.name << ": " << err_;
        if (row.status != 0) {
            continue;
        }
        const std::string pdf = bytes(row.output);
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
    for (const auto& entry : std::filesystem::directory_iterator(dir_)) {
        left.insert(entry.path().filename().string());
    }
    EXPECT_EQ(left, (std::set<std::string>{"a.pdf", "b.pdf", "c.pdf", "d.pdf", "stderr.txt"}));
}

}  // namespace
}  // namespace sonalyx::test
