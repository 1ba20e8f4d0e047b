#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_writer.h"
#include "render_fixture.h"
#include "sample_documents.h"
#include "support/golden.h"

namespace sonalyx::test {
namespace {

namespace fs = std::filesystem;

TEST(Samples, ShippedFilesAreTheGeneratorsOutputAndRoundTrip) {
    for (int layout : kSampleLayouts) {
        SCOPED_TRACE("layout " + std::to_string(layout));
        expectMatchesGolden(samplesPath(sampleFileName(layout)), makeSampleDocument(layout));
        const auto lines = readLinesOrFail(samplesPath(sampleFileName(layout)));
        MeasurementDocument doc;
        ASSERT_TRUE(DocumentLoader::load(doc, lines, "sample.csv", nullptr));
        EXPECT_EQ(doc.layoutNumber, layout);
        EXPECT_TRUE(doc.anyVariantData[0] && doc.anyVariantData[1]);
        EXPECT_TRUE(doc.sectionLoaded[kGroupDelaySection]);
        EXPECT_TRUE(doc.sectionLoaded[kParametersSection]);
        EXPECT_GT(doc.groupDelay.groupCount, 2);
        // Every curve decays: the last time point is well below the first.
        for (int p = 0; p < doc.channelCount; ++p) {
            if (doc.positionHasData[0][p]) {
                EXPECT_LT(doc.reverbValues[0][p][0][31], doc.reverbValues[0][p][0][0] - 3.5f);
            }
        }
        std::vector<std::string> written;
        DocumentWriter::write(doc, written);
        const std::string diff = unifiedDiff(lines, written);
        EXPECT_TRUE(diff.empty()) << diff;
    }
}

using ConvertTest = RenderFixture;

TEST_F(ConvertTest, WritesTheDocumentBackAndNormalisesAForeignFile) {
    const std::string sample = samplesPath(sampleFileName(10));
    ASSERT_EQ(run("convert '" + sample + "' -o '" + path("out.csv") + "'"), 0) << err_;
    EXPECT_EQ(readDocumentLines(path("out.csv")), readDocumentLines(sample));

    std::ofstream(path("lf.csv"), std::ios::binary)
        << "[DATE]\n2020.01.02 03:04 extra\n[CHANNEL]\nL,C,R,SR A,SL A,,,\n"
           "[REVERB TYPE]\nEQ ON,FRONT ALIGN SYMMETRY\n";
    ASSERT_EQ(run("convert '" + path("lf.csv") + "' -o '" + path("out.csv") + "'"), 0) << err_;
    const auto lines = *readDocumentLines(path("out.csv"));
    EXPECT_EQ(lines[1], "2020.01.02 03:04");
    EXPECT_NE(std::find(lines.begin(), lines.end(), "L,C,R,SR A,SL A"), lines.end());
    EXPECT_NE(std::find(lines.begin(), lines.end(), "EQ ON,FRONT ALIGN"), lines.end());
    EXPECT_EQ(bytes("out.csv").substr(0, 8), "[DATE]\r\n");
}

TEST_F(ConvertTest, FailuresAndUsage) {
    std::ofstream(path("bad.csv")) << "DATE\n";
    const std::string out = " -o '" + path("out.csv") + "'";
    const struct {
        std::string args;
        int status;
        std::string message;  // the start of stderr
    } rows[] = {
        {"convert '" + path("bad.csv") + "'" + out, 1, "Illegal file format.\n"},
        {"convert '" + path("missing.csv") + "'" + out, 1, "The file is not exist."},
        {"convert '" + samplesPath(sampleFileName(5)) + "' -o '" + path("no/such/dir.csv") + "'", 1,
         "Can't write the file."},
        {"convert only-input.csv", 2, ""},
        {"frobnicate", 2, ""},
        {"", 2, ""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(run(row.args), row.status) << row.args;
        EXPECT_EQ(err_.rfind(row.message, 0), 0u) << row.args << "\n" << err_;
        if (row.status == 2) {
            EXPECT_NE(err_.find("usage:"), std::string::npos) << row.args;
        }
        EXPECT_FALSE(fs::exists(path("out.csv"))) << row.args;
    }
}

}  // namespace
}  // namespace sonalyx::test
