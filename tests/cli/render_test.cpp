// sonalyx-cli render as a program: chart data (alone and compared) against golden files, every
// picture format of the charts and the parameter sheet, and the refusals that write nothing.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_writer.h"
#include "render_fixture.h"
#include "support/golden.h"

namespace sonalyx::test {
namespace {

namespace fs = std::filesystem;

using RenderTest = RenderFixture;

TEST_F(RenderTest, ChartDataOfAFewViewsMatchesTheGoldenFiles) {
    const struct {
        const char* golden;
        int layout;
        std::string options;
    } rows[] = {
        {"views/reverb-5-bar3d-slice10.json", 5, "--bar --slice 10 --zoom 15 --size 900x600"},
        {"views/reverb-9-channel3-after-2d.json", 9, "--channel 3 --after --2d --move 24"},
        {"views/reverb-7-pair-freq-bar2d.json", 7,
         "--pair --freq --2d --bar --slice 2 --elevation 30 --rotation 80"},
        {"views/groupdelay-9-3d-move.json", 9, "--tab groupdelay --size 900x600 --move 25"},
        {"views/groupdelay-10-group2-after-bar2d.json", 10,
         "--tab groupdelay --channel 2 --after --2d --bar --slice 23 --zoom 14"},
        // Compared with another document, and the two differences.
        {"views/compare-7-ref5-channel1.json", 7, "--channel 1 --compare '" + sample(5) + "'"},
        {"views/compare-10-ref7-groupdelay-difference-2d.json", 10,
         "--tab groupdelay --2d --zoom 12 --difference --compare '" + sample(7) + "'"},
        {"views/after-minus-before-9-freq4-bar2d.json", 9,
         "--freq --channel 4 --2d --bar --slice 3 --after-minus-before"},
        // Fit to Data comes last, whatever the order given.
        {"views/groupdelay-11-fit.json", 11, "--fit --tab groupdelay --zoom 19 --move 3"},
    };
    for (const auto& r : rows) {
        const std::string out = path("view.json");
        ASSERT_EQ(render("'" + sample(r.layout) + "' -o '" + out + "' " + r.options), 0)
            << r.golden << ": " << err_;
        EXPECT_EQ(err_, "") << r.golden;
        expectMatchesGolden(testDataPath(r.golden), readLinesOrFail(out));
    }
}

// Charts are vectors in SVG and PDF, never a bitmap inside; PNG has the asked size. A
// document without data (layout 0) is drawn as its graph tabs show it: "No Data".
TEST_F(RenderTest, WritesEveryFormat) {
    const std::string sheet = "- TORVE Parameters -      ";
    std::ofstream(path("empty.csv")) << "[DATE]\r\n2026.01.02 03:04\r\n";
    const struct {
        int layout;
        std::string options;
        std::string file;
        std::string start;                    // the first bytes of a good file
        unsigned width = 0, height = 0;       // PNG only
        std::vector<std::string> holds = {};  // texts the file holds
        std::vector<std::string> lacks = {};
    } cases[] = {
        {10, "--size 800x500", "w.png", "\x89PNG", 800, 500},
        // Text in a family browsers know, the tab's file memo, no comparison key without one.
        {9,
         "--freq",
         "v.svg",
         "<?xml",
         0,
         0,
         {"Time[msec]", "<path", "<title>sample-layout-9.csv</title>", "Living room with second"},
         {"Sans Serif", "(dashed)"}},
        {7,
         "--channel 1 --difference --compare '" + sample(5) + "'",
         "cmp.svg",
         "<?xml",
         0,
         0,
         {"Reference: sample-layout-5.csv   Difference: this document minus the reference"}},
        {5, "--channel 1", "v.pdf", "%PDF-"},
        {5, "--tab groupdelay", "gd.png", "\x89PNG"},
        {5,
         "--tab groupdelay --2d",
         "gd.svg",
         "<?xml",
         0,
         0,
         {"Group Delay[msec]", "20kHz", "Before mean", "Measured after moving the subwoofer"}},
        {7, "--tab groupdelay --bar", "gd.pdf", "%PDF-"},
        {9, "--tab parameters", "all.txt", sheet + "[ALL MEMORY]\r\nSpeaker Setting\r\n"},
        {9, "--tab parameters --memory 4", "four.txt", sheet + "[MEMORY4]\r\n"},
        {9, "--tab parameters --channel 2", "two.txt", sheet + "[MEMORY2]\r\n"},
        {9, "--tab parameters", "all.png", "\x89PNG", 647},
        {9, "--tab parameters --memory 2 --page 1 --pages 1", "page.png", "\x89PNG", 647, 1310},
        {9, "--tab parameters --page 2 --pages 3", "3.txt", "Standing Wave Control\r\n[M1]\tMain"},
        {9, "--tab parameters", "all.svg", "<?xml", 0, 0, {"Speaker Distance"}},
        {9, "--tab parameters --page 1 --pages 2", "page.pdf", "%PDF"},
        {0, "--tab groupdelay --fit", "none.svg", "<?xml", 0, 0, {">No Data<"}},
        {0, "", "none.json", "{", 0, 0, {"\"noData\": true"}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.file + " " + c.options);
        const std::string in = c.layout != 0 ? sample(c.layout) : path("empty.csv");
        EXPECT_EQ(render("'" + in + "' " + c.options + " -o '" + path(c.file) + "'"), 0) << err_;
        EXPECT_EQ(err_, "");
        const std::string out = bytes(c.file);
        EXPECT_EQ(out.substr(0, c.start.size()), c.start);
        for (const std::string& text : c.holds)
            EXPECT_NE(out.find(text), std::string::npos) << text;
        for (const std::string& text : c.lacks)
            EXPECT_EQ(out.find(text), std::string::npos) << text;
        if (c.file.ends_with(".svg")) {
            EXPECT_EQ(out.find("<image"), std::string::npos);
        }
        if (c.width != 0) {
            EXPECT_EQ(pngNumber(out, 16), c.width);
        }
        if (c.height != 0) {
            EXPECT_EQ(pngNumber(out, 20), c.height);
        }
    }
}

TEST_F(RenderTest, FailuresWriteNothing) {
    std::ofstream(path("notes.csv")) << "hello\n";
    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(doc, readLinesOrFail(sample(5)), "x", nullptr));
    doc.parameterLines.clear();
    std::vector<std::string> lines;
    DocumentWriter::write(doc, lines);
    ASSERT_TRUE(writeDocumentLinesAtomically(path("bare.csv"), lines));
    const std::string five = "'" + sample(5) + "'";
    const std::string params = five + " --tab parameters";
    const struct {
        std::string args;
        int status;
        std::string message;
    } rows[] = {
        {"'" + path("notes.csv") + "' -o '" + path("x.png") + "'", 1, "Illegal file format."},
        {five + " -o '" + path("x.json") + "' --compare '" + path("notes.csv") + "'", 1,
         "Illegal file format."},
        {five + " -o '" + path("x.json") + "' --difference", 2, "sonalyx-cli: --difference needs"},
        {five + " -o '" + path("x.json") + "' --compare " + five +
             " --difference --after-minus-before",
         2, "sonalyx-cli: --difference and"},
        {"'" + path("missing.csv") + "' -o '" + path("x.png") + "'", 1, "The file is not exist."},
        {"'" + path("bare.csv") + "' --tab parameters -o '" + path("x.txt") + "'", 1, "No data."},
        {params + " -o '" + path("no/such/dir/out.png") + "'", 1, "Can't write the file."},
        {five + " -o '" + path("x.json") + "' --channel 9", 1, "No entry 9"},
        {five + " -o '" + path("x.json") + "' --zoom 20", 2, "sonalyx-cli: --zoom"},
        {five + " -o '" + path("x.json") + "' --memory 2", 2, "sonalyx-cli: --memory"},
        {five + " -o '" + path("x.json") + "' --tab sideways", 2, "sonalyx-cli: --tab"},
        {five + " -o '" + path("x.json") + "' --page 1", 2, "sonalyx-cli: --page"},
        {five + " -o '" + path("x.bmp") + "'", 2, "sonalyx-cli: OUT"},
        {five + " -o '" + path("x.txt") + "'", 2, "sonalyx-cli: .txt is the parameters tab"},
        {five + " --wobble -o '" + path("x.png") + "'", 2, "sonalyx-cli: unexpected"},
        {five, 2, "sonalyx-cli: render needs"},
        {params + " --memory 7 -o '" + path("x.txt") + "'", 2, "--memory"},
        {params + " --page 3 --pages 2 -o '" + path("x.txt") + "'", 2, "--page"},
        {params + " --page 1 -o '" + path("x.txt") + "'", 2, "--page"},
        {params + " -o '" + path("x.json") + "'", 2, ".json is the chart data"},
    };
    for (const auto& r : rows) {
        EXPECT_EQ(render(r.args), r.status) << r.args;
        EXPECT_NE(err_.find(r.message), std::string::npos) << r.args << "\n" << err_;
        if (r.status == 2) {
            EXPECT_NE(err_.find("usage:"), std::string::npos) << r.args;
        }
        for (const char* name : {"x.png", "x.json", "x.bmp", "x.txt"})
            EXPECT_FALSE(fs::exists(path(name))) << r.args;
    }
}

}  // namespace
}  // namespace sonalyx::test
