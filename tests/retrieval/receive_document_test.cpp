#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "document/document_loader.h"
#include "receive_harness.h"
#include "retrieval/date_stamp.h"
#include "support/golden.h"

namespace sonalyx::test {
namespace {

// Reverb value t of band b of a reply body, as the receiver meant it (hundredths of a dB).
double bodyValue(const std::vector<std::uint8_t>& body, int band, int t) {
    const size_t i = static_cast<size_t>(band * 64 + t * 2);
    return static_cast<std::int16_t>((body[i] << 8) | body[i + 1]) * 0.01;
}

ReceiveResult receive(FakeReceiver receiver, ReceiveOptions options) {
    ReceiveHarness h;
    h.receiver = std::move(receiver);
    EXPECT_TRUE(h.start(options));
    h.runToEnd();
    EXPECT_TRUE(h.observer.result.success);
    return h.observer.result;
}

TEST(ReceivedDocument, Configuration5WithAfterDataAndGroupDelay) {
    FakeReceiver receiver;
    receiver.configCode = 5;
    receiver.bandSelector = 2;
    receiver.reverbType = 4;
    ReceiveOptions options;
    options.parameters = false;
    const auto lines = stampedLines(receive(receiver, options));
    expectMatchesGolden(testDataPath("receive/config5_after_groupdelay.txt"), lines);

    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(doc, lines, std::string(kNewDataName), nullptr));
    EXPECT_EQ(doc.date, "2009.05.17 14:03");
    EXPECT_EQ(doc.layoutNumber, 5);
    EXPECT_EQ(doc.bandCount, 6);
    EXPECT_EQ(doc.reverbType, 3);
    EXPECT_TRUE(doc.variant1BlocksPresent);
    for (int position = 0; position < 5; ++position) {
        EXPECT_TRUE(doc.positionHasData[0][position]) << position;
        EXPECT_TRUE(doc.positionHasData[1][position]) << position;
    }
    // Position 3 of layout 5 is "SR A", asked as "SR".
    const auto measured = receiver.reverbBody("SR", false);
    const auto after = receiver.reverbBody("SR", true);
    EXPECT_NEAR(doc.reverbValues[0][3][2][7], bodyValue(measured, 2, 7), 1e-4);
    EXPECT_NEAR(doc.reverbValues[1][3][5][31], bodyValue(after, 5, 31), 1e-4);
    EXPECT_TRUE(doc.sectionLoaded[kGroupDelaySection]);
    parseGroupDelay(doc);
    EXPECT_EQ(doc.groupDelay.groupCount, 3);
    for (int g = 0; g < 3; ++g) {
        EXPECT_TRUE(doc.groupDelay.hasData[0][g]) << g;
        EXPECT_TRUE(doc.groupDelay.hasData[1][g]) << g;
    }
}

TEST(ReceivedDocument, OldReceiverWithoutAfterData) {
    FakeReceiver receiver;
    receiver.extended = false;
    receiver.afterData = false;
    const auto lines = stampedLines(receive(receiver, ReceiveOptions{}));
    expectMatchesGolden(testDataPath("receive/old_receiver.txt"), lines);

    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(doc, lines, std::string(kNewDataName), nullptr));
    EXPECT_EQ(doc.layoutNumber, 9);
    EXPECT_EQ(doc.bandCount, 9);
    EXPECT_FALSE(doc.variant1BlocksPresent);
    for (int position = 0; position < 9; ++position)
        EXPECT_TRUE(doc.positionHasData[0][position]) << position;
    const auto speakerBRight = receiver.reverbBody("SPBR", false);
    EXPECT_NEAR(doc.reverbValues[0][8][8][0], bodyValue(speakerBRight, 8, 0), 1e-4);
}

TEST(ReceivedDocument, FullConfiguration10RunLoadsEverySection) {
    FakeReceiver receiver;
    receiver.configCode = 10;
    const auto lines = stampedLines(receive(receiver, ReceiveOptions{}));
    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(doc, lines, std::string(kNewDataName), nullptr));
    EXPECT_EQ(doc.layoutNumber, 10);
    EXPECT_TRUE(doc.positionHasData[1][9]);
    EXPECT_TRUE(doc.sectionLoaded[kGroupDelaySection]);
    EXPECT_TRUE(doc.sectionLoaded[kParametersSection]);
    parseGroupDelay(doc);
    EXPECT_EQ(doc.groupDelay.groupCount, 6);
    ASSERT_FALSE(doc.parameterLines.empty());
    const auto setting =
        std::find_if(doc.parameterLines.begin(), doc.parameterLines.end(),
                     [](const auto& l) { return l.starts_with("* Speaker Setting"); });
    EXPECT_NE(setting, doc.parameterLines.end());
}

TEST(ReceivedDocument, ParameterGroupsFollowInTheOrderOfTheirReplies) {
    FakeReceiver receiver;
    receiver.configCode = 7;
    ReceiveOptions options;
    options.parametersOnly = true;
    const auto lines = receive(receiver, options).lines;
    std::vector<std::string> headings;
    for (const auto& line : lines) {
        if (line.starts_with("* "))
            headings.push_back(line);
    }
    EXPECT_EQ(headings, (std::vector<std::string>{"* Speaker Setting", "* Acoustic Cal EQ",
                                                  "* X-Curve", "* Speaker Distance",
                                                  "* Channel Level", "* Standing Wave Control"}));
    const auto title = std::find(lines.begin(), lines.end(), "  \"TORVE Parameters\"");
    ASSERT_NE(title, lines.end());
    ASSERT_GE(title - lines.begin(), 2);
    EXPECT_EQ(std::vector<std::string>(title - 2, title + 4),
              (std::vector<std::string>{"", "", "  \"TORVE Parameters\"", "", "[FILEMEMO]", ""}));
}

TEST(DateStamp, FillsTheFirstEmptyLineAfterTheDateMarker) {
    std::vector<std::string> lines = {"[DATE]", "", "", "  \"Reverb Characteristics\""};
    EXPECT_TRUE(stampDate(lines, formatDateStamp(2009, 5, 7, 4, 3)));
    EXPECT_EQ(lines, (std::vector<std::string>{"[DATE]", "2009.05.07 04:03", "",
                                               "  \"Reverb Characteristics\""}));
    EXPECT_FALSE(stampDate(lines, "2010.01.01 00:00"));
    EXPECT_EQ(lines[1], "2009.05.07 04:03");
    std::vector<std::string> noMarker = {"", ""};
    EXPECT_FALSE(stampDate(noMarker, "2010.01.01 00:00"));
}

TEST(DateStamp, TakesABrokenDownTime) {
    std::tm when{};
    when.tm_year = 2024 - 1900;
    when.tm_mon = 11;
    when.tm_mday = 31;
    when.tm_hour = 23;
    when.tm_min = 59;
    EXPECT_EQ(formatDateStamp(when), "2024.12.31 23:59");
}

}  // namespace
}  // namespace sonalyx::test
