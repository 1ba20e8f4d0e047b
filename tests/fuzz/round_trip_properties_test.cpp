#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <map>

#include "round_trip_properties.h"
#include "support/golden.h"

namespace sonalyx::fuzzing {
namespace {

namespace fs = std::filesystem;

std::vector<fs::path> filesIn(const fs::path& dir) {
    std::vector<fs::path> files;
    for (const auto& entry : fs::directory_iterator(dir)) {
        if (entry.is_regular_file())
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    return files;
}

// Every kept finding replays: what once broke a property holds it now. Some seeds are there
// for an exemption; those must still be recognised as such.
TEST(RoundTripProperties, KeptSeedsHoldEveryProperty) {
    const std::map<std::string, std::string> exempted = {
        {"band-marker.csv", "a channel name or band label reads as a marker or a section title"},
        {"channel-repeated.csv", "the channel list has an empty or a repeated name"},
        {"memo-title.csv", "a memo line reads as a marker or a section title"},
    };
    const auto seeds = filesIn(SONALYX_FUZZ_SEEDS_DIR);
    ASSERT_FALSE(seeds.empty());
    for (const fs::path& seed : seeds) {
        const RoundTripVerdict verdict = checkRoundTrip(test::fileBytes(seed));
        EXPECT_EQ(verdict.problem, "") << seed;
        const auto it = exempted.find(seed.filename().string());
        if (it != exempted.end()) {
            EXPECT_EQ(verdict.exemption, it->second) << seed;
        }
    }
}

// Where the format allows a reading that round-trips, no exemption covers it: these documents
// once changed (or grew) on every save and now read back exactly after the first.
TEST(RoundTripProperties, RoundTripReadingsNeedNoSecondSave) {
    const std::map<std::string, bool> seeds = {
        {"channel-seventeen-gaps.csv", false},      // more than fifteen names with gaps
        {"band-seventeen-gaps.csv", false},         // the same for band labels
        {"memo-parameters-title-grew.csv", true},   // a reverb memo line reads as a title
        {"groupdelay-memo-before-grew.csv", true},  // a group delay memo line "[Before]"
    };
    for (const auto& [name, exempted] : seeds) {
        const RoundTripVerdict verdict =
            checkRoundTrip(test::fileBytes(fs::path(SONALYX_FUZZ_SEEDS_DIR) / name));
        EXPECT_TRUE(verdict.loaded) << name;
        EXPECT_EQ(verdict.exemption.empty(), !exempted) << name;
        EXPECT_EQ(verdict.savesToSettle, 1) << name;
    }
}

}  // namespace
}  // namespace sonalyx::fuzzing
