// The text a receive run hands to the document side, byte for byte, as the receiver emulator's
// replies convert: what a fresh "New Data" holds before loading could tidy anything away. Each
// run is also loaded: every reverb value must read back as the emulator sent it, and the
// parameter rows as a sheet. Its progress reports keep to the rules of a plan; a few runs show
// them whole.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <set>

#include "document/document_loader.h"
#include "emulator/measurement_replies.h"
#include "receive_harness.h"
#include "retrieval/date_stamp.h"
#include "support/golden.h"
#include "support/receive_scenarios.h"

namespace sonalyx::test {
namespace {

double bodyValue(const std::vector<std::uint8_t>& body, int band, int t) {
    const size_t i = static_cast<size_t>(band * 64 + t * 2);
    return static_cast<std::int16_t>((body[i] << 8) | body[i + 1]) * 0.01;
}

// Every reverb value of the loaded document as the emulator sent it; the number of blocks seen.
int expectReverbAsSent(const MeasurementDocument& doc, int bandSelector) {
    int blocks = 0;
    for (int variant = 0; variant < kVariants; ++variant) {
        for (int p = 0; p < kMaxPositions; ++p) {
            if (!doc.positionHasData[variant][p])
                continue;
            ++blocks;
            const auto body = emulator::reverbBody(p, bandSelector, variant == 1);
            EXPECT_EQ(static_cast<int>(body.size()), doc.bandCount * 64);
            for (int band = 0; band < doc.bandCount; ++band) {
                for (int t = 0; t < kTimePoints; ++t) {
                    EXPECT_NEAR(doc.reverbValues[variant][p][band][t], bodyValue(body, band, t),
                                1e-4)
                        << "variant " << variant << " position " << p << " band " << band
                        << " time " << t;
                }
            }
        }
    }
    return blocks;
}

// The plan is the engine's own road: once known, the total can change only where the receiver
// refuses a command or has no after data, and every run ends with each command it sent
// answered. The bar rises from 0 and stays at most 95.
void expectProgressKeepsToThePlan(const ReceiveHarness& h, bool planMayChange) {
    const auto& reports = h.observer.reports;
    ASSERT_GE(reports.size(), 2u);
    std::set<int> totals;
    for (std::size_t i = 0; i < reports.size(); ++i) {
        if (reports[i].total > 0)
            totals.insert(reports[i].total);
        if (i + 1 == reports.size())
            break;
        EXPECT_TRUE(reports[i].total == 0 || reports[i].answered < reports[i].total) << i;
        EXPECT_LE(reports[i].answered, reports[i + 1].answered) << "report " << i;
    }
    EXPECT_TRUE(planMayChange || totals.size() == 1) << totals.size() << " totals";
    const auto& sent = h.link.commands();
    EXPECT_EQ(reports.back().total,
              static_cast<int>(std::set<std::string>(sent.begin(), sent.end()).size()));
    EXPECT_EQ(reports.back().answered, reports.back().total);
    EXPECT_EQ(reports.back().remainingMs, 0);
    const auto& bar = h.observer.progressValues;
    ASSERT_FALSE(bar.empty());
    EXPECT_EQ(bar.front(), 0);
    EXPECT_LE(bar.back(), 95);
    EXPECT_TRUE(std::is_sorted(bar.begin(), bar.end()));
}

class ReceivedText : public ::testing::TestWithParam<ReceiveScenario> {};

TEST_P(ReceivedText, MatchesGoldenAndLoadsTheSentValues) {
    const ReceiveScenario& scenario = GetParam();
    ReceiveHarness h;
    ASSERT_TRUE(h.playReceiver(scenario.emulatorArguments));
    ASSERT_TRUE(h.start(receiveOptions(scenario.kinds)));
    h.runToEnd();
    ASSERT_TRUE(h.observer.result.success) << ::testing::PrintToString(h.messenger.texts());
    const auto lines = stampedLines(h.observer.result);
    expectMatchesGolden(testDataPath("receive/" + scenario.name + ".txt"), lines);
    const auto& arguments = scenario.emulatorArguments;
    expectProgressKeepsToThePlan(
        h, std::any_of(arguments.begin(), arguments.end(),
                       [](const std::string& a) { return a == "--no-after" || a == "--refuse"; }));

    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(doc, lines, std::string(kNewDataName), nullptr));
    const int blocks = expectReverbAsSent(doc, h.receiver.parameters.bandSelector);
    const ReceiveOptions asked = receiveOptions(scenario.kinds);
    EXPECT_EQ(blocks > 0, asked.reverb && !asked.parametersOnly);
    // The parameter rows (an old receiver has none) must read as a sheet.
    EXPECT_EQ(doc.sectionLoaded[kParametersSection],
              (asked.parameters || asked.parametersOnly) && h.receiver.extended);
}

INSTANTIATE_TEST_SUITE_P(Emulator, ReceivedText, ::testing::ValuesIn(receiveScenarios()),
                         [](const auto& info) { return info.param.name; });

// Report by report on the fake clock (one second a tick): commands answered out of the commands
// the run will send, the time left and the kind being fetched, then the bar's percentages.
GoldenSection progressOf(const std::string& name, const std::string& arguments,
                         const std::string& kinds = "all") {
    ReceiveHarness h;
    EXPECT_TRUE(h.playReceiver(words(arguments))) << name;
    EXPECT_TRUE(h.start(receiveOptions(kinds))) << name;
    h.runToEnd();
    EXPECT_TRUE(h.observer.result.success) << name;
    std::vector<std::string> lines;
    for (const ReceiveProgress& p : h.observer.reports) {
        lines.push_back(std::to_string(p.answered) + "/" + std::to_string(p.total) + " " +
                        std::to_string(p.remainingMs) + " " + p.kind);
    }
    std::string bar = "bar:";
    for (const int percent : h.observer.progressValues)
        bar += " " + std::to_string(percent);
    lines.push_back(bar);
    return {name, lines};
}

TEST(ReceiveProgress, ReportsMatchGolden) {
    expectSectionsMatchGolden(testDataPath("receive/progress.txt"),
                              {progressOf("configuration 5", "--config 5"),
                               progressOf("configuration 10 without after data", "--no-after"),
                               progressOf("after data refused twice", "--config 5 --refuse RAFL:2"),
                               progressOf("EQ list refused", "--config 5 --refuse EQALL"),
                               progressOf("group delay only", "", "g"),
                               progressOf("old receiver, group delay only", "--old", "g")});
}

TEST(DateStamp, FillsTheFirstEmptyLineAfterTheDateMarkerOnce) {
    std::vector<std::string> lines = {"[DATE]", "", "", "  \"Reverb Characteristics\""};
    std::tm when{};
    when.tm_year = 2024 - 1900;
    when.tm_mon = 11;
    when.tm_mday = 31;
    when.tm_hour = 23;
    when.tm_min = 59;
    EXPECT_TRUE(stampDate(lines, formatDateStamp(when)));
    EXPECT_FALSE(stampDate(lines, formatDateStamp(2009, 5, 7, 4, 3)));
    EXPECT_EQ(lines, (std::vector<std::string>{"[DATE]", "2024.12.31 23:59", "",
                                               "  \"Reverb Characteristics\""}));
    std::vector<std::string> noMarker = {"", ""};
    EXPECT_FALSE(stampDate(noMarker, "2010.01.01 00:00"));
}

}  // namespace
}  // namespace sonalyx::test
