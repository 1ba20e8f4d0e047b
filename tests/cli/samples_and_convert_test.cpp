#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <filesystem>
#include <fstream>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_writer.h"
#include "sample_documents.h"
#include "support/golden.h"

namespace sonalyx::test {
namespace {

namespace fs = std::filesystem;

struct RunResult {
    int status = -1;
    std::string err;
};

// Runs sonalyx-cli with the arguments, capturing stderr.
RunResult runCli(const std::string& args) {
    const fs::path errFile =
        fs::temp_directory_path() / ("sonalyx-cli-" + std::to_string(getpid()));
    const std::string command = std::string(SONALYX_CLI) + " " + args + " 2>" + errFile.string();
    const int raw = std::system(command.c_str());
    RunResult result;
    result.status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    std::ifstream in(errFile);
    result.err.assign(std::istreambuf_iterator<char>(in), {});
    fs::remove(errFile);
    return result;
}

class CliTest : public ::testing::Test {
  protected:
    void SetUp() override {
        dir_ = fs::temp_directory_path() / ("sonalyx-cli-test-" + std::to_string(getpid()));
        fs::create_directories(dir_);
    }
    void TearDown() override { fs::remove_all(dir_); }
    std::string path(const std::string& name) const { return (dir_ / name).string(); }
    fs::path dir_;
};

TEST(Samples, ShippedFilesAreTheGeneratorsOutput) {
    for (int layout : kSampleLayouts) {
        expectMatchesGolden(samplesPath(sampleFileName(layout)), makeSampleDocument(layout));
    }
}

TEST(Samples, EachLoadsWithItsLayoutAndRoundTrips) {
    for (int layout : kSampleLayouts) {
        const auto lines = readLinesOrFail(samplesPath(sampleFileName(layout)));
        MeasurementDocument doc;
        ASSERT_TRUE(DocumentLoader::load(doc, lines, "sample.csv", nullptr));
        EXPECT_EQ(doc.layoutNumber, layout);
        EXPECT_TRUE(doc.anyVariantData[0] && doc.anyVariantData[1]) << layout;
        EXPECT_TRUE(doc.sectionLoaded[kGroupDelaySection]) << layout;
        EXPECT_TRUE(doc.sectionLoaded[kParametersSection]) << layout;
        EXPECT_GT(doc.groupDelay.groupCount, 2) << layout;
        // Every curve decays: the last time point is well below the first.
        for (int p = 0; p < doc.channelCount; ++p) {
            if (!doc.positionHasData[0][p])
                continue;
            EXPECT_LT(doc.reverbValues[0][p][0][31], doc.reverbValues[0][p][0][0] - 5.0f);
        }
        std::vector<std::string> written;
        DocumentWriter::write(doc, written);
        const std::string diff = unifiedDiff(lines, written);
        EXPECT_TRUE(diff.empty()) << "layout " << layout << ":\n" << diff;
    }
}

TEST_F(CliTest, ConvertWritesTheDocumentBack) {
    const std::string in = samplesPath(sampleFileName(10));
    const RunResult r = runCli("convert '" + in + "' -o '" + path("out.csv") + "'");
    EXPECT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(readDocumentLines(path("out.csv")), readDocumentLines(in));
}

TEST_F(CliTest, ConvertNormalisesAForeignFile) {
    {
        std::ofstream out(path("lf.csv"), std::ios::binary);
        out << "[DATE]\n2020.01.02 03:04 extra\n[CHANNEL]\nL,C,R,SR A,SL A,,,\n"
               "[REVERB TYPE]\nEQ ON,FRONT ALIGN SYMMETRY\n";
    }
    const RunResult r = runCli("convert '" + path("lf.csv") + "' -o '" + path("out.csv") + "'");
    ASSERT_EQ(r.status, 0) << r.err;
    const auto lines = *readDocumentLines(path("out.csv"));
    EXPECT_EQ(lines[1], "2020.01.02 03:04");
    EXPECT_NE(std::find(lines.begin(), lines.end(), "L,C,R,SR A,SL A"), lines.end());
    EXPECT_NE(std::find(lines.begin(), lines.end(), "EQ ON,FRONT ALIGN"), lines.end());
    std::ifstream raw(path("out.csv"), std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(raw)), {});
    EXPECT_EQ(text.substr(0, 8), "[DATE]\r\n");
}

TEST_F(CliTest, FailuresAndUsage) {
    { std::ofstream(path("bad.csv")) << "DATE\n"; }
    RunResult r = runCli("convert '" + path("bad.csv") + "' -o '" + path("out.csv") + "'");
    EXPECT_EQ(r.status, 1);
    EXPECT_EQ(r.err.substr(0, 21), "Illegal file format.\n");
    EXPECT_FALSE(fs::exists(path("out.csv")));

    r = runCli("convert '" + path("missing.csv") + "' -o '" + path("out.csv") + "'");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("The file is not exist."), std::string::npos);

    r = runCli("convert '" + samplesPath(sampleFileName(5)) + "' -o '" + path("no/such/dir.csv") +
               "'");
    EXPECT_EQ(r.status, 1);
    EXPECT_NE(r.err.find("Can't write the file."), std::string::npos);

    r = runCli("convert only-input.csv");
    EXPECT_EQ(r.status, 2);
    EXPECT_NE(r.err.find("usage:"), std::string::npos);
    EXPECT_EQ(runCli("frobnicate").status, 2);
    EXPECT_EQ(runCli("").status, 2);
}

}  // namespace
}  // namespace sonalyx::test
