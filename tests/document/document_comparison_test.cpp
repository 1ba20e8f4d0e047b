#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <string>

#include "document/document_comparison.h"
#include "support/golden.h"

namespace sonalyx::test {
namespace {

bool contains(const std::vector<std::string>& names, int count, const std::string& name) {
    return std::find(names.begin(), names.begin() + count, name) != names.begin() + count;
}

// A difference of two values written with two decimals keeps two decimals.
bool twoDecimals(float value) {
    return static_cast<float>(std::round(value * 100.0) / 100.0) == value;
}

TEST(DocumentComparison, ChannelsGroupsAndBandsMatchByNameAcrossLayouts) {
    const struct Row {
        int layout;
        int reference;
        const char* unmatched;
    } rows[] = {
        {9, 9, ""},
        {7, 5,
         "Not in the reference: Surr Back R, Surr Back L; groups Surr Back; bands 500, 2k, 8k, "
         "16k. Only in the reference: bands 11.3k"},
        {5, 10,
         "Not in the reference: bands 11.3k. Only in the reference: Surr Back R, Surr Back L, "
         "Surround L B, Surround R B, Top Surround; groups Surr Back, Surround B, Top Surr; "
         "bands 500, 2k, 8k, 16k"},
        {10, 11,
         "Not in the reference: Top Surround; groups Top Surr; bands 63, 500, 2k, 8k, 16k. Only "
         "in the reference: bands 40, 13k"},
    };
    for (const Row& row : rows) {
        const auto doc = loadSampleDocument(std::to_string(row.layout));
        const auto ref = loadSampleDocument(std::to_string(row.reference));
        const DocumentComparison comparison(doc, ref);
        const std::string name =
            std::to_string(row.layout) + " against " + std::to_string(row.reference);
        EXPECT_EQ(comparison.UnmatchedText(), row.unmatched) << name;
        for (int p = 0; p < doc.channelCount; ++p) {
            const int match = comparison.ChannelMatch(p);
            const std::string& own = doc.channelLongNames[p];
            EXPECT_EQ(match >= 0, contains(ref.channelLongNames, ref.channelCount, own))
                << name << ", " << own;
            if (match >= 0) {
                EXPECT_EQ(ref.channelLongNames[match], own) << name;
            }
        }
        for (int b = 0; b < doc.bandCount; ++b) {
            const int match = comparison.BandMatch(b);
            EXPECT_EQ(match >= 0, contains(ref.bandLabels, ref.bandCount, doc.bandLabels[b]))
                << name << ", band " << doc.bandLabels[b];
            if (match >= 0) {
                EXPECT_EQ(ref.bandLabels[match], doc.bandLabels[b]) << name;
            }
        }
    }
}

TEST(DocumentComparison, DifferencesAreTheDocumentMinusTheReferenceAtMatchedPoints) {
    const auto doc = loadSampleDocument("7");
    const auto ref = loadSampleDocument("5");
    const DocumentComparison comparison(doc, ref);
    const MeasurementDocument difference = comparison.Difference();
    int compared = 0;
    for (int v = 0; v < kVariants; ++v) {
        for (int p = 0; p < doc.channelCount; ++p) {
            const int cm = comparison.ChannelMatch(p);
            EXPECT_EQ(difference.positionHasData[v][p],
                      cm >= 0 && doc.positionHasData[v][p] && ref.positionHasData[v][cm])
                << "variant " << v << ", channel " << p;
            if (!difference.positionHasData[v][p]) {
                continue;
            }
            for (int b = 0; b < doc.bandCount; ++b) {
                const int bm = comparison.BandMatch(b);
                for (int t = 0; t < kTimePoints; ++t) {
                    const float value = difference.reverbValues[v][p][b][t];
                    if (bm < 0) {
                        EXPECT_TRUE(std::isnan(value)) << "band " << doc.bandLabels[b];
                        continue;
                    }
                    const double expected =
                        doc.reverbValues[v][p][b][t] - ref.reverbValues[v][cm][bm][t];
                    ASSERT_NEAR(value, expected, 1e-4) << v << "/" << p << "/" << b << "/" << t;
                    ASSERT_TRUE(twoDecimals(value)) << value;
                    ++compared;
                }
            }
        }
        for (int g = 0; g < doc.groupDelay.groupCount; ++g) {
            const int gm = comparison.GroupMatch(g);
            ASSERT_EQ(difference.groupDelay.hasData[v][g],
                      gm >= 0 && doc.groupDelay.hasData[v][g] && ref.groupDelay.hasData[v][gm]);
            for (int i = 0; gm >= 0 && difference.groupDelay.hasData[v][g] && i < 64; ++i) {
                ASSERT_NEAR(difference.groupDelay.values[v][g][i],
                            doc.groupDelay.values[v][g][i] - ref.groupDelay.values[v][gm][i], 1e-4);
                ++compared;
            }
        }
    }
    EXPECT_GT(compared, 1000);
}

}  // namespace
}  // namespace sonalyx::test
