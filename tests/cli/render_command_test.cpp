#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <vector>

#include "render_fixture.h"
#include "support/golden.h"

namespace sonalyx::test {
namespace {

namespace fs = std::filesystem;

class RenderTest : public RenderFixture {
  protected:
    static std::vector<std::string> lines(const std::string& file) {
        std::ifstream in(file);
        std::vector<std::string> out;
        for (std::string line; std::getline(in, line);) {
            out.push_back(line);
        }
        return out;
    }
};

TEST_F(RenderTest, ChartDataOfAFewViewsMatchesTheGoldenFiles) {
    struct Row {
        const char* golden;
        int layout;
        const char* options;
    } rows[] = {
        {"views/reverb-5-bar3d-slice10.json", 5, "--bar --slice 10 --zoom 15 --size 900x600"},
        {"views/reverb-9-channel3-after-2d.json", 9, "--channel 3 --after --2d --move 24"},
        {"views/reverb-7-pair-freq-bar2d.json", 7,
         "--pair --freq --2d --bar --slice 2 --elevation 30 --rotation 80"},
        {"views/groupdelay-9-3d-move.json", 9, "--tab groupdelay --size 900x600 --move 25"},
        {"views/groupdelay-10-group2-after-bar2d.json", 10,
         "--tab groupdelay --channel 2 --after --2d --bar --slice 23 --zoom 14"},
    };
    for (const Row& r : rows) {
        const std::string out = path("view.json");
        ASSERT_EQ(render("'" + sample(r.layout) + "' -o '" + out + "' " + r.options), 0)
            << r.golden << ": " << err_;
        EXPECT_EQ(err_, "") << r.golden;
        expectMatchesGolden(testDataPath(r.golden), lines(out));
    }
}

TEST_F(RenderTest, PicturesAndVectorsAreWritten) {
    ASSERT_EQ(render("'" + sample(10) + "' -o '" + path("w.png") + "' --size 800x500"), 0) << err_;
    const std::string png = read(path("w.png"));
    ASSERT_GT(png.size(), 24u);
    // The PNG header's width and height, big-endian at bytes 16 and 20.
    const auto be32 = [&](size_t at) {
        return (static_cast<unsigned char>(png[at]) << 24) |
               (static_cast<unsigned char>(png[at + 1]) << 16) |
               (static_cast<unsigned char>(png[at + 2]) << 8) |
               static_cast<unsigned char>(png[at + 3]);
    };
    EXPECT_EQ(be32(16), 800);
    EXPECT_EQ(be32(20), 500);

    ASSERT_EQ(render("'" + sample(9) + "' -o '" + path("v.svg") + "' --freq"), 0) << err_;
    const std::string svg = read(path("v.svg"));
    EXPECT_NE(svg.find("<svg"), std::string::npos);
    EXPECT_NE(svg.find("<path"), std::string::npos);
    EXPECT_EQ(svg.find("<image"), std::string::npos) << "charts must be vectors, not a bitmap";
    EXPECT_NE(svg.find("Time[msec]"), std::string::npos);

    ASSERT_EQ(render("'" + sample(5) + "' -o '" + path("v.pdf") + "' --channel 1"), 0) << err_;
    EXPECT_EQ(read(path("v.pdf")).rfind("%PDF-", 0), 0u);
    ASSERT_EQ(render("'" + sample(5) + "' -o '" + path("gd.png") + "' --tab groupdelay"), 0);
    ASSERT_EQ(render("'" + sample(5) + "' -o '" + path("gd.svg") + "' --tab groupdelay --2d"), 0)
        << err_;
    const std::string gdSvg = read(path("gd.svg"));
    EXPECT_NE(gdSvg.find("Group Delay[msec]"), std::string::npos);
    EXPECT_NE(gdSvg.find("20kHz"), std::string::npos);
    EXPECT_EQ(gdSvg.find("<image"), std::string::npos);
    ASSERT_EQ(render("'" + sample(7) + "' -o '" + path("gd.pdf") + "' --tab groupdelay --bar"), 0)
        << err_;
    EXPECT_EQ(read(path("gd.pdf")).rfind("%PDF-", 0), 0u);
}

TEST_F(RenderTest, FailuresWriteNothing) {
    std::ofstream(path("notes.csv")) << "hello\n";
    std::ofstream(path("empty.csv")) << "[DATE]\r\n2026.01.02 03:04\r\n";
    struct Row {
        std::string args;
        int status;
        std::string message;  // the start of stderr
    } rows[] = {
        {"'" + path("notes.csv") + "' -o '" + path("x.png") + "'", 1, "Illegal file format."},
        {"'" + path("empty.csv") + "' -o '" + path("x.json") + "'", 1, "No data."},
        {"'" + path("missing.csv") + "' -o '" + path("x.png") + "'", 1, "The file is not exist."},
        {"'" + sample(5) + "' -o '" + path("x.json") + "' --channel 9", 1, "No entry 9"},
        {"'" + sample(5) + "' -o '" + path("x.json") + "' --zoom 20", 2, "sonalyx-cli: --zoom"},
        {"'" + sample(5) + "' -o '" + path("x.json") + "' --memory 2", 2, "sonalyx-cli: --memory"},
        {"'" + sample(5) + "' -o '" + path("x.json") + "' --tab sideways", 2, "sonalyx-cli: --tab"},
        {"'" + sample(5) + "' -o '" + path("x.json") + "' --page 1", 2, "sonalyx-cli: --page"},
        {"'" + sample(5) + "' -o '" + path("x.bmp") + "'", 2, "sonalyx-cli: OUT"},
        {"'" + sample(5) + "' -o '" + path("x.txt") + "'", 2, "sonalyx-cli: .txt"},
        {"'" + sample(5) + "' --wobble -o '" + path("x.png") + "'", 2, "sonalyx-cli: unexpected"},
        {"'" + sample(5) + "'", 2, "sonalyx-cli: render needs"},
    };
    for (const Row& r : rows) {
        EXPECT_EQ(render(r.args), r.status) << r.args;
        EXPECT_EQ(err_.rfind(r.message, 0), 0u) << r.args << "\n" << err_;
        if (r.status == 2) {
            EXPECT_NE(err_.find("usage:"), std::string::npos) << r.args;
        }
        for (const char* name : {"x.png", "x.json", "x.bmp", "x.txt"}) {
            EXPECT_FALSE(fs::exists(path(name))) << r.args;
        }
    }
}

}  // namespace
}  // namespace sonalyx::test
