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

class RenderSheetTest : public RenderFixture {};

// Big-endian 32-bit number of the PNG header (the width at 16, the height at 20).
unsigned pngNumber(const std::string& png, size_t at) {
    unsigned value = 0;
    for (size_t i = at; i < at + 4 && i < png.size(); ++i)
        value = value << 8 | static_cast<unsigned char>(png[i]);
    return value;
}

struct FormatCase {
    std::string options;
    std::string file;
    std::string start;  // the first bytes of a good file
    unsigned width;
    unsigned height;  // PNG only
};

TEST_F(RenderSheetTest, WritesEveryFormat) {
    const std::string sample = samplesPath("sample-layout-9.csv");
    const FormatCase cases[] = {
        {"", "all.txt", "- TORVE Parameters -      [ALL MEMORY]\r\nSpeaker Setting\r\n", 0, 0},
        {"--memory 4", "four.txt", "- TORVE Parameters -      [MEMORY4]\r\n", 0, 0},
        {"--channel 2", "two.txt", "- TORVE Parameters -      [MEMORY2]\r\n", 0, 0},
        {"", "all.png", "\x89PNG", 647, 0},
        {"--memory 2 --page 1 --pages 1", "page.png", "\x89PNG", 647, 1310},
        {"--page 2 --pages 3", "two-of-three.txt", "Standing Wave Control\r\n[M1]\tMain", 0, 0},
        {"", "all.svg", "<?xml", 0, 0},
        {"--page 1 --pages 2", "page.pdf", "%PDF", 0, 0},
    };
    for (const FormatCase& c : cases) {
        SCOPED_TRACE(c.file);
        EXPECT_EQ(render(sample + " --tab parameters " + c.options + " -o " + path(c.file)), 0)
            << err_;
        EXPECT_EQ(err_, "");
        const std::string out = bytes(c.file);
        EXPECT_EQ(out.substr(0, c.start.size()), c.start);
        if (c.width != 0) {
            EXPECT_EQ(pngNumber(out, 16), c.width);
        }
        if (c.height != 0) {
            EXPECT_EQ(pngNumber(out, 20), c.height);
        }
    }
    EXPECT_NE(bytes("all.svg").find("Speaker Distance"), std::string::npos);
}

struct FailureCase {
    std::string args;
    int status;
    std::string message;
};

TEST_F(RenderSheetTest, RefusesWhatItCannotDraw) {
    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(doc, readLinesOrFail(samplesPath("sample-layout-5.csv")), "x",
                                     nullptr));
    doc.parameterLines.clear();
    std::vector<std::string> lines;
    DocumentWriter::write(doc, lines);
    ASSERT_TRUE(writeDocumentLinesAtomically(path("bare.csv"), lines));
    const std::string sample = samplesPath("sample-layout-5.csv");
    const FailureCase cases[] = {
        {path("bare.csv") + " --tab parameters -o " + path("out.txt"), 1, "No data."},
        {path("missing.csv") + " --tab parameters -o " + path("out.txt"), 1,
         "The file is not exist."},
        {sample + " --tab parameters -o " + path("no/such/dir/out.png"), 1,
         "Can't write the file."},
        {sample + " --tab parameters --memory 7 -o " + path("out.txt"), 2, "--memory"},
        {sample + " --tab parameters --page 3 --pages 2 -o " + path("out.txt"), 2, "--page"},
        {sample + " --tab parameters --page 1 -o " + path("out.txt"), 2, "--page"},
        {sample + " --tab parameters -o " + path("out.json"), 2, ".json is the chart data"},
        {sample + " -o " + path("out.txt"), 2, ".txt is the parameters tab"},
    };
    for (const FailureCase& c : cases) {
        SCOPED_TRACE(c.args);
        EXPECT_EQ(render(c.args), c.status);
        EXPECT_NE(err_.find(c.message), std::string::npos) << err_;
        EXPECT_FALSE(fs::exists(path("out.txt")));
    }
}

}  // namespace
}  // namespace sonalyx::test
