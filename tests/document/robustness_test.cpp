#include <gtest/gtest.h>

#include <clocale>
#include <locale>
#include <random>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_writer.h"
#include "test_documents.h"

namespace sonalyx::test {
namespace {

// Loads text as the program does, writes it back and loads that again: nothing may crash, and
// a second round must give the same text as the first (the writer's output is a fixed point).
void expectStableRoundTrip(const std::string& text) {
    MeasurementDocument doc;
    if (!DocumentLoader::load(doc, splitLines(text), "/tmp/junk.csv", nullptr))
        return;
    EXPECT_LE(doc.channelCount, kMaxPositions);
    EXPECT_LE(doc.bandCount, kMaxBands);
    std::vector<std::string> first;
    DocumentWriter::write(doc, first);
    MeasurementDocument again;
    ASSERT_TRUE(DocumentLoader::load(again, first, "/tmp/junk.csv", nullptr));
    std::vector<std::string> second;
    DocumentWriter::write(again, second);
    EXPECT_EQ(first, second);
}

TEST(DocumentRobustness, BinaryJunkAndNulBytes) {
    std::mt19937 random(7);
    for (int round = 0; round < 50; ++round) {
        std::string text = "[DATE]\n";
        const int size = 1 + static_cast<int>(random() % 4000);
        for (int i = 0; i < size; ++i)
            text += static_cast<char>(random() % 256);
        expectStableRoundTrip(text);
    }
    expectStableRoundTrip(std::string("[DATE]\0\n\0\0\n[CHANNEL]\nL\0C\n", 22));
}

// A huge line and overlong fields, too many channels and bands (capped), missing sections,
// LF endings and unknown names.
TEST(DocumentRobustness, OddTextsRoundTripStably) {
    std::string channels = "L";
    std::string bands = "1";
    for (int i = 0; i < 40; ++i) {
        channels += ",C";
        bands += "," + std::to_string(i);
    }
    const std::string crowded =
        "[DATE]\r\nd\r\n[CHANNEL]\r\n" + channels + "\r\n[BAND]\r\n" + bands + "\r\n";
    for (const std::string& text :
         {"[DATE]\n2020.01.01 00:00\n[BAND]\n63\n[DATA1]\nL," + std::string(10 << 20, '9') + "\n" +
              kTimeRow + "\n63Hz," + std::string(300, '5') + ",1\n",
          crowded, std::string("[DATE]\n"),
          std::string("[DATE]\n2020\n[CHANNEL]\n\n[BAND]\n\n[DATA1]\n"),
          std::string("[DATE]\n2020\n[CHANNEL]\nQ,W,E\n[DATA1]\nQ\n"),
          std::string("[DATE]\n2020\n \"Group Delay Characteristics\"\n[Before]\n[After]\n"),
          std::string("[DATE]\n2020\n\"TORVE Parameters\"\n* Speaker Distance\n,,\"\"\"\n")})
        expectStableRoundTrip(text);
    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(doc, splitLines(crowded), "x", nullptr));
    EXPECT_EQ(doc.channelCount, kMaxPositions);
    EXPECT_EQ(doc.bandCount, kMaxBands);
    std::string lf;
    for (const auto& line : smallDocumentLines())
        lf += line + "\n";
    ASSERT_TRUE(DocumentLoader::load(doc, splitLines(lf), "x", nullptr));
    std::vector<std::string> written;
    DocumentWriter::write(doc, written);
    EXPECT_EQ(written, smallDocumentLines());
}

TEST(DocumentRobustness, NumbersUseAFullStopUnderAGermanLocale) {
    const char* previous = std::setlocale(LC_ALL, nullptr);
    const std::string saved = previous ? previous : "C";
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8"))
        GTEST_SKIP() << "de_DE.UTF-8 is not installed";
    std::locale::global(std::locale("de_DE.UTF-8"));
    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(doc, smallDocumentLines(), "x", nullptr));
    std::vector<std::string> written;
    DocumentWriter::write(doc, written);
    std::locale::global(std::locale::classic());
    std::setlocale(LC_ALL, saved.c_str());
    EXPECT_FLOAT_EQ(doc.reverbValues[0][0][0][1], 9.5f);
    EXPECT_EQ(written, smallDocumentLines());
}

}  // namespace
}  // namespace sonalyx::test
