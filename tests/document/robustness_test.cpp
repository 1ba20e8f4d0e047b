// Texts the program did not write: whatever loads keeps the round-trip properties the fuzz
// targets check (tests/../fuzz/round_trip_properties.h), the kept fuzz findings replay, and
// numbers keep their full stop under a German locale. Random junk is the fuzz smoke run's.
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <filesystem>
#include <locale>
#include <map>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_writer.h"
#include "round_trip_properties.h"
#include "support/golden.h"
#include "test_documents.h"

namespace sonalyx::test {
namespace {

namespace fs = std::filesystem;
using fuzzing::checkRoundTrip;
using fuzzing::RoundTripVerdict;

std::vector<fs::path> filesIn(const fs::path& dir) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(dir)) {
        if (entry.is_regular_file())
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// A huge line and overlong fields, too many channels and bands (capped), missing sections,
// unknown names, NUL bytes, LF and lone CR endings: each loads, and its first save is already a
// fixed point.
TEST(DocumentRobustness, OddTextsRoundTripStably) {
    std::string channels = "L";
    std::string bands = "1";
    for (int i = 0; i < 40; ++i) {
        channels += ",C";
        bands += "," + std::to_string(i);
    }
    const std::string crowded =
        "[DATE]\r\nd\r\n[CHANNEL]\r\n" + channels + "\r\n[BAND]\r\n" + bands + "\r\n";
    std::string lf;
    for (const auto& line : smallDocumentLines())
        lf += line + "\n";
    for (const std::string& text :
         {"[DATE]\n2020.01.01 00:00\n[BAND]\n63\n[DATA1]\nL," + std::string(10 << 20, '9') + "\n" +
              kTimeRow + "\n63Hz," + std::string(300, '5') + ",1\n",
          crowded, lf, std::string("[DATE]\n"),
          std::string("[DATE]\0\n\0\0\n[CHANNEL]\nL\0C\n", 22),
          std::string("[DATE]\n2020\n[CHANNEL]\nQ,W,E\n[DATA1]\nQ\n"),
          std::string("[DATE]\n2020\n \"Group Delay Characteristics\"\n[Before]\n[After]\n"),
          std::string("[DATE]\n2020\n\"TORVE Parameters\"\n* Speaker Distance\n,,\"\"\"\n"),
          std::string("[DATE]\r2020\r[FILEMEMO]\ra\r\rb,\r\r\n[CHANNEL]\rL,C\r")}) {
        const RoundTripVerdict verdict = checkRoundTrip(text);
        EXPECT_TRUE(verdict.loaded) << text.substr(0, 40);
        EXPECT_EQ(verdict.problem, "") << text.substr(0, 40);
        EXPECT_EQ(verdict.savesToSettle, 1) << text.substr(0, 40);
    }
    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(doc, splitLines(crowded), "x", nullptr));
    EXPECT_EQ(doc.channelCount, kMaxPositions);
    EXPECT_EQ(doc.bandCount, kMaxBands);
    ASSERT_TRUE(DocumentLoader::load(doc, splitLines(lf), "x", nullptr));
    std::vector<std::string> written;
    DocumentWriter::write(doc, written);
    EXPECT_EQ(written, smallDocumentLines());
}

// Every kept finding replays: what once broke a property holds it now. Some seeds are there
// for an exemption; those must still be recognised as such, and where the format allows a
// reading that round-trips (they once changed or grew on every save) no exemption covers it.
TEST(DocumentRobustness, KeptFuzzSeedsHoldEveryProperty) {
    // The exemption a seed needs, or "" for one that now reads back exactly after one save.
    const std::map<std::string, std::string> named = {
        {"band-marker.csv", "a channel name or band label reads as a marker or a section title"},
        {"channel-repeated.csv", "the channel list has an empty or a repeated name"},
        {"memo-title.csv", "a memo line reads as a marker or a section title"},
        {"channel-seventeen-gaps.csv", ""},  // more than fifteen names with gaps
        {"band-seventeen-gaps.csv", ""},     // the same for band labels
    };
    const auto seeds = filesIn(SONALYX_FUZZ_SEEDS_DIR);
    ASSERT_FALSE(seeds.empty());
    for (const fs::path& seed : seeds) {
        const RoundTripVerdict verdict = checkRoundTrip(fileBytes(seed));
        EXPECT_EQ(verdict.problem, "") << seed;
        const auto it = named.find(seed.filename().string());
        if (it != named.end()) {
            EXPECT_EQ(verdict.exemption, it->second) << seed;
            EXPECT_TRUE(!it->second.empty() || verdict.savesToSettle == 1) << seed;
        }
    }
    // A memo line that reads as a title, and a group delay memo line "[Before]": exempted, yet
    // settled after the first save.
    for (const char* name : {"memo-parameters-title-grew.csv", "groupdelay-memo-before-grew.csv"}) {
        const RoundTripVerdict verdict =
            checkRoundTrip(fileBytes(fs::path(SONALYX_FUZZ_SEEDS_DIR) / name));
        EXPECT_FALSE(verdict.exemption.empty()) << name;
        EXPECT_EQ(verdict.savesToSettle, 1) << name;
    }
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
