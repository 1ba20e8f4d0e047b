// The text a receive run hands to the document side, byte for byte, as the receiver emulator's
// replies convert: what a fresh "New Data" holds before loading could tidy anything away. Each
// run is also loaded: every reverb value must read back as the emulator sent it, and the
// parameter rows as a sheet.
#include <gtest/gtest.h>

#include <cstdint>

#include "document/document_loader.h"
#include "emulator/emulator_options.h"
#include "emulator/measurement_replies.h"
#include "emulator/receiver_emulator.h"
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

class ReceivedText : public ::testing::TestWithParam<ReceiveScenario> {};

TEST_P(ReceivedText, MatchesGoldenAndLoadsTheSentValues) {
    const ReceiveScenario& scenario = GetParam();
    std::string error;
    const auto options = emulator::EmulatorOptions::parse(scenario.emulatorArguments, error);
    ASSERT_TRUE(options) << error;
    emulator::ReceiverEmulator receiver(options->profile);
    ReceiveHarness h;
    h.link.setResponder([&receiver](const std::string& command) {
        const std::string line = command + "\r";
        return receiver.feed({line.begin(), line.end()}).bytes;
    });
    ASSERT_TRUE(h.start(receiveOptions(scenario.kinds)));
    h.runToEnd();
    ASSERT_TRUE(h.observer.result.success) << ::testing::PrintToString(h.messenger.texts());
    const auto lines = stampedLines(h.observer.result);
    expectMatchesGolden(testDataPath("receive/" + scenario.name + ".txt"), lines);

    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(doc, lines, std::string(kNewDataName), nullptr));
    const int blocks = expectReverbAsSent(doc, options->profile.parameters.bandSelector);
    const ReceiveOptions asked = receiveOptions(scenario.kinds);
    EXPECT_EQ(blocks > 0, asked.reverb && !asked.parametersOnly);
    // The parameter rows (an old receiver has none) must read as a sheet.
    EXPECT_EQ(doc.sectionLoaded[kParametersSection],
              (asked.parameters || asked.parametersOnly) && options->profile.extended);
}

INSTANTIATE_TEST_SUITE_P(Emulator, ReceivedText, ::testing::ValuesIn(receiveScenarios()),
                         [](const auto& info) { return info.param.name; });

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
