#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "render_fixture.h"
#include "support/golden.h"

namespace sonalyx::test {
namespace {

namespace fs = std::filesystem;

class CompareRenderTest : public RenderFixture {};

TEST_F(CompareRenderTest, ChartDataWithAReferenceMatchesTheGoldenFiles) {
    const struct Row {
        const char* golden;
        int layout;
        std::string options;
    } rows[] = {
        {"views/compare-7-ref5-channel1.json", 7, "--channel 1 --compare '" + sample(5) + "'"},
        {"views/compare-10-ref7-groupdelay-difference-2d.json", 10,
         "--tab groupdelay --2d --zoom 12 --difference --compare '" + sample(7) + "'"},
        {"views/after-minus-before-9-freq4-bar2d.json", 9,
         "--freq --channel 4 --2d --bar --slice 3 --after-minus-before"},
    };
    for (const Row& r : rows) {
        const std::string out = path("view.json");
        ASSERT_EQ(render("'" + sample(r.layout) + "' -o '" + out + "' " + r.options), 0)
            << r.golden << ": " << err_;
        EXPECT_EQ(err_, "") << r.golden;
        expectMatchesGolden(testDataPath(r.golden), readLinesOrFail(out));
    }
}

TEST_F(CompareRenderTest, ABadReferenceOrOptionWritesNothing) {
    std::ofstream(path("notes.csv")) << "hello\n";
    const std::string out = " -o '" + path("x.json") + "'";
    const struct Row {
        std::string args;
        int status;
        std::string message;  // the start of stderr
    } rows[] = {
        {"--compare '" + path("notes.csv") + "'", 1, "Illegal file format."},
        {"--difference", 2, "sonalyx-cli: --difference needs"},
        {"--compare '" + sample(5) + "' --difference --after-minus-before", 2,
         "sonalyx-cli: --difference and"},
    };
    for (const Row& r : rows) {
        EXPECT_EQ(render("'" + sample(7) + "'" + out + " " + r.args), r.status) << r.args;
        EXPECT_EQ(err_.rfind(r.message, 0), 0u) << r.args << "\n" << err_;
        EXPECT_FALSE(fs::exists(path("x.json"))) << r.args;
    }
}

}  // namespace
}  // namespace sonalyx::test
