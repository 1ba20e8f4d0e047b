#include <gtest/gtest.h>

#include <algorithm>

#include "receive_harness.h"

namespace sonalyx::test {
namespace {

using Commands = std::vector<std::string>;

constexpr const char* kCommandError = "Command error occurred. Please try again.";

int countOf(const Commands& commands, const std::string& command) {
    return static_cast<int>(std::count(commands.begin(), commands.end(), command));
}

bool contains(const std::vector<std::string>& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

Commands startingWith(const Commands& commands, const std::string& prefix) {
    Commands matching;
    for (const auto& c : commands) {
        if (c.starts_with(prefix))
            matching.push_back(c);
    }
    return matching;
}

ReceiveOptions kinds(bool reverb, bool groupDelay, bool parameters) {
    ReceiveOptions options;
    options.reverb = reverb;
    options.groupDelay = groupDelay;
    options.parameters = parameters;
    return options;
}

// The run ended as a failure: no text, the port closed, one message (or none when the link
// reports the failure itself).
void expectFailedRun(const ReceiveHarness& h, const std::vector<std::string>& messages) {
    EXPECT_FALSE(h.engine.isRunning());
    EXPECT_EQ(h.observer.finishCount, 1);
    EXPECT_FALSE(h.observer.result.success);
    EXPECT_TRUE(h.observer.result.lines.empty());
    EXPECT_TRUE(h.observer.portClosedAtFinish);
    EXPECT_EQ(h.messenger.texts, messages);
    EXPECT_FALSE(h.ticker.armed);
}

void expectSucceeded(const ReceiveHarness& h) {
    EXPECT_EQ(h.observer.finishCount, 1);
    EXPECT_TRUE(h.observer.result.success);
    EXPECT_TRUE(h.messenger.texts.empty()) << h.messenger.texts.front();
    EXPECT_TRUE(h.observer.portClosedAtFinish);
    EXPECT_FALSE(h.ticker.armed);
}

// ---- The order of commands -------------------------------------------------------------------

TEST(ReceiveCommandOrder, FullRunOfConfiguration5AsksEveryKindInOrder) {
    ReceiveHarness h;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    const Commands expected = {"?RVFL", "?EI",   "?RAFL", "?RVCT",  "?RACT",  "?RVFR",  "?RAFR",
                               "?RVSR", "?RASR", "?RVSL", "?RASL",  "?FBF",   "?FBS",   "?FBC",
                               "?FBB",  "?SI",   "?SP",   "?EQALL", "?DLALL", "?LVALL", "?STALL"};
    EXPECT_EQ(h.link.commands(), expected);
    EXPECT_EQ(h.observer.sent, expected);
    EXPECT_EQ(h.link.openCount(), 1);
    EXPECT_EQ(h.link.portName(), "COM1");
    EXPECT_FALSE(h.link.monitorRequested());
    EXPECT_FALSE(h.link.everSentWhileClosed());
}

TEST(ReceiveCommandOrder, EveryCommandArmsTheReplyPollAtTheChosenInterval) {
    ReceiveHarness h;
    ReceiveOptions options;
    options.tickMs = 20;
    ASSERT_TRUE(h.start(options));
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_FALSE(h.ticker.armedIntervals.empty());
    for (int interval : h.ticker.armedIntervals)
        EXPECT_EQ(interval, 20);
    // Every reply fits in one tick here, so the run takes one tick per command.
    EXPECT_EQ(h.ticks, static_cast<int>(h.link.commands().size()));
}

struct ConfigurationCase {
    int configCode;
    Commands reverbCodes;  // after FL
    Commands groupDelay;
};

class ReceiveConfiguration : public ::testing::TestWithParam<ConfigurationCase> {};

TEST_P(ReceiveConfiguration, AsksTheChannelsAndGroupsOfItsLayout) {
    const auto& c = GetParam();
    ReceiveHarness h;
    h.receiver.configCode = c.configCode;
    h.receiver.afterData = false;
    h.receiver.refusals["?RAFL"] = -1;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    Commands reverb = {"?RVFL"};
    for (const auto& code : c.reverbCodes)
        reverb.push_back("?RV" + code);
    EXPECT_EQ(startingWith(h.link.commands(), "?RV"), reverb);
    EXPECT_EQ(startingWith(h.link.commands(), "?FB"), c.groupDelay);
}

INSTANTIATE_TEST_SUITE_P(
    Layouts, ReceiveConfiguration,
    ::testing::Values(
        ConfigurationCase{5, {"CT", "FR", "SR", "SL"}, {"?FBF", "?FBS", "?FBC", "?FBB"}},
        ConfigurationCase{6, {"CT", "FR", "SR", "SBL", "SL"}, {"?FBF", "?FBS", "?FBC", "?FBB"}},
        ConfigurationCase{
            7, {"CT", "FR", "SR", "SBR", "SBL", "SL"}, {"?FBF", "?FBS", "?FBC", "?FBB"}},
        ConfigurationCase{9,
                          {"CT", "FR", "SR", "SBR", "SBL", "SL", "SPBL", "SPBR"},
                          {"?FBF", "?FBS", "?FBC", "?FBB"}},
        ConfigurationCase{10,
                          {"CT", "FR", "SR", "SBR", "SBL", "SL", "EXSL", "EXSR", "TS"},
                          {"?FBF", "?FBS", "?FBC", "?FBB", "?FBES", "?FBTS"}},
        ConfigurationCase{11,
                          {"CT", "FR", "SR", "SBR", "SBL", "SL", "EXSL", "EXSR"},
                          {"?FBF", "?FBS", "?FBC", "?FBB", "?FBES"}}),
    [](const auto& info) { return "Configuration" + std::to_string(info.param.configCode); });

TEST(ReceiveCommandOrder, UnselectedKindsAreNotAskedButTheProbeAlwaysIs) {
    {
        ReceiveHarness h;
        ASSERT_TRUE(h.start(kinds(false, true, false)));
        h.runToEnd();
        expectSucceeded(h);
        EXPECT_EQ(h.link.commands(), (Commands{"?RVFL", "?EI", "?FBF", "?FBS", "?FBC", "?FBB"}));
        for (const auto& line : h.observer.result.lines)
            EXPECT_FALSE(line.starts_with("[DATA")) << line;
    }
    {
        ReceiveHarness h;
        ASSERT_TRUE(h.start(kinds(true, false, false)));
        h.runToEnd();
        expectSucceeded(h);
        EXPECT_TRUE(startingWith(h.link.commands(), "?FB").empty());
        EXPECT_TRUE(startingWith(h.link.commands(), "?S").empty());
        EXPECT_EQ(h.link.commands().back(), "?RASL");
    }
    {
        ReceiveHarness h;
        ASSERT_TRUE(h.start(kinds(false, false, true)));
        h.runToEnd();
        expectSucceeded(h);
        EXPECT_EQ(h.link.commands(),
                  (Commands{"?RVFL", "?EI", "?SI", "?SP", "?EQALL", "?DLALL", "?LVALL", "?STALL"}));
    }
}

TEST(ReceiveCommandOrder, NothingSelectedStartsNothing) {
    ReceiveHarness h;
    EXPECT_FALSE(h.start(kinds(false, false, false)));
    EXPECT_EQ(h.link.openCount(), 0);
    EXPECT_EQ(h.observer.finishCount, 0);
}

TEST(ReceiveCommandOrder, OtherReceiveAsksParametersOnlyWhateverIsSelected) {
    ReceiveHarness h;
    ReceiveOptions options = kinds(true, true, false);
    options.parametersOnly = true;
    ASSERT_TRUE(h.start(options));
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(h.link.commands(),
              (Commands{"?RVFL", "?EI", "?SI", "?SP", "?EQALL", "?DLALL", "?LVALL", "?STALL"}));
    const auto& lines = h.observer.result.lines;
    ASSERT_GE(lines.size(), 4u);
    EXPECT_EQ(lines[0], "[DATE]");
    EXPECT_FALSE(contains(lines, "  \"Reverb Characteristics\""));
    EXPECT_TRUE(contains(lines, "  \"TORVE Parameters\""));
}

TEST(ReceiveCommandOrder, AnOldReceiverIsTreatedAsConfiguration9AndEndsAfterReverb) {
    ReceiveHarness h;
    h.receiver.extended = false;
    h.receiver.configCode = 9;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    const auto& commands = h.link.commands();
    EXPECT_EQ(countOf(commands, "?EI"), 0);
    EXPECT_TRUE(startingWith(commands, "?FB").empty());
    EXPECT_TRUE(startingWith(commands, "?S").empty());
    EXPECT_EQ(startingWith(commands, "?RV").size(), 9u);
    EXPECT_EQ(startingWith(commands, "?RA").size(), 9u);
    const auto& lines = h.observer.result.lines;
    EXPECT_FALSE(contains(lines, "[CHANNEL]"));
    EXPECT_TRUE(contains(lines, "[DATA9A]"));
    EXPECT_TRUE(contains(lines, "[DATA1]"));
}

TEST(ReceiveCommandOrder, AnOldReceiverAskedForParametersOnlyEndsAfterTheProbe) {
    ReceiveHarness h;
    h.receiver.extended = false;
    ReceiveOptions options;
    options.parametersOnly = true;
    ASSERT_TRUE(h.start(options));
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(h.link.commands(), Commands{"?RVFL"});
}

// ---- Error replies ---------------------------------------------------------------------------

TEST(ReceiveErrorReply, AfterDataRefusedThreeTimesIsNeverAskedAgain) {
    ReceiveHarness h;
    h.receiver.afterData = false;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    const auto& commands = h.link.commands();
    EXPECT_EQ(countOf(commands, "?RAFL"), 3);
    EXPECT_EQ(startingWith(commands, "?RA").size(), 3u);
    EXPECT_EQ(startingWith(commands, "?RV").size(), 5u);
    const auto& lines = h.observer.result.lines;
    for (const auto& line : lines)
        EXPECT_FALSE(line.starts_with("[DATA") && line.ends_with("A]")) << line;
    // Each heading is followed by a single measured block, numbered on from the front left.
    for (int n = 1; n <= 5; ++n) {
        const auto memo = std::find(lines.begin(), lines.end(), "[MEMO" + std::to_string(n) + "]");
        ASSERT_NE(memo, lines.end()) << n;
        ASSERT_LT(memo + 2, lines.end());
        EXPECT_EQ(*(memo + 2), "[DATA" + std::to_string(n) + "]");
    }
    EXPECT_FALSE(contains(lines, "[MEMO6]"));
}

TEST(ReceiveErrorReply, AfterDataRefusedTwiceIsStillAskedForEveryChannel) {
    ReceiveHarness h;
    h.receiver.refusals["?RAFL"] = 2;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(countOf(h.link.commands(), "?RAFL"), 3);
    EXPECT_EQ(startingWith(h.link.commands(), "?RA").size(), 7u);
    EXPECT_TRUE(contains(h.observer.result.lines, "[DATA5A]"));
}

TEST(ReceiveErrorReply, AKeptCommandIsRepeatedAndTheRunGoesOn) {
    ReceiveHarness h;
    h.receiver.refusals["?RVCT"] = 2;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(countOf(h.link.commands(), "?RVCT"), 3);
    EXPECT_TRUE(contains(h.observer.result.lines, "[DATA2A]"));
}

TEST(ReceiveErrorReply, AReverbCommandRefusedThreeTimesEndsTheRun) {
    ReceiveHarness h;
    h.receiver.refusals["?RVCT"] = -1;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectFailedRun(h, {kCommandError});
    EXPECT_EQ(countOf(h.link.commands(), "?RVCT"), 3);
}

TEST(ReceiveErrorReply, RepeatsAreCountedOverTheWholeRun) {
    // The repeat count is not reset by a good reply: two refusals of one command and one of
    // a later one use up the three.
    ReceiveHarness h;
    h.receiver.refusals["?RVCT"] = 1;
    h.receiver.refusals["?RVFR"] = 2;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectFailedRun(h, {kCommandError});
    EXPECT_EQ(countOf(h.link.commands(), "?RVFR"), 2);
}

TEST(ReceiveErrorReply, AGroupDelayCommandRefusedThreeTimesEndsThatPhaseOnly) {
    ReceiveHarness h;
    h.receiver.refusals["?FBC"] = -1;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    const auto& commands = h.link.commands();
    EXPECT_EQ(countOf(commands, "?FBC"), 3);
    EXPECT_EQ(countOf(commands, "?FBB"), 0);
    EXPECT_EQ(countOf(commands, "?SI"), 1);
    EXPECT_TRUE(contains(h.observer.result.lines, "Front,Surround A"));
}

TEST(ReceiveErrorReply, TheInformationQueryRefusedThreeTimesEndsTheRun) {
    ReceiveHarness h;
    h.receiver.refusals["?EI"] = -1;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectFailedRun(h, {kCommandError});
    EXPECT_EQ(countOf(h.link.commands(), "?EI"), 3);
}

TEST(ReceiveErrorReply, AParameterCommandOtherThanTheEqListIsNotRepeated) {
    for (const std::string command : {"?SI", "?SP", "?DLALL", "?LVALL", "?STALL"}) {
        ReceiveHarness h;
        h.receiver.refusals[command] = 1;
        ASSERT_TRUE(h.start());
        h.runToEnd();
        expectFailedRun(h, {kCommandError});
        EXPECT_EQ(countOf(h.link.commands(), command), 1) << command;
        EXPECT_EQ(h.link.commands().back(), command);
    }
}

TEST(ReceiveErrorReply, TheEqListRefusedThreeTimesFallsBackToSingleChannels) {
    ReceiveHarness h;
    h.receiver.configCode = 10;
    h.receiver.refusals["?EQALL"] = -1;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    const auto& commands = h.link.commands();
    EXPECT_EQ(countOf(commands, "?EQALL"), 3);
    const auto last = std::find(commands.rbegin(), commands.rend(), "?EQALL").base();
    ASSERT_GE(commands.end() - last, 3);
    EXPECT_EQ(*last, "?DL");
    EXPECT_EQ(*(last + 1), "?LV");
    const Commands eqs(last + 2, commands.end());
    ASSERT_FALSE(eqs.empty());
    EXPECT_EQ(eqs.front(), "?EQFL");
    for (const auto& c : eqs)
        EXPECT_TRUE(c.starts_with("?EQ") && c != "?EQALL") << c;
    // The single-channel queries start at index 0 without asking the probe again.
    EXPECT_EQ(countOf(commands, "?RVFL"), 1);
    EXPECT_TRUE(contains(h.observer.result.lines, "* Acoustic Cal EQ"));
}

TEST(ReceiveErrorReply, ASingleChannelQueryOfTheFallbackIsRepeatedLikeAnyKeptCommand) {
    ReceiveHarness h;
    h.receiver.refusals["?EQALL"] = -1;
    h.receiver.refusals["?EQFL"] = 2;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(countOf(h.link.commands(), "?EQFL"), 3);
}

TEST(ReceiveErrorReply, TheEqListRefusedTwiceIsTakenOnTheThirdAsk) {
    ReceiveHarness h;
    h.receiver.refusals["?EQALL"] = 2;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(countOf(h.link.commands(), "?EQALL"), 3);
    EXPECT_EQ(countOf(h.link.commands(), "?DL"), 0);
    EXPECT_EQ(h.link.commands().back(), "?STALL");
}

TEST(ReceiveErrorReply, AnotherErrorInPlaceOfACountByteEndsTheRun) {
    ReceiveHarness h;
    h.receiver.scripted["?EQALL"] = {{'E', '9', '9', 0, 0}};
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectFailedRun(h, {kCommandError});
    EXPECT_EQ(countOf(h.link.commands(), "?EQALL"), 1);
}

TEST(ReceiveErrorReply, AnErrorInPlaceOfARecordPrefixEndsTheRun) {
    ReceiveHarness h;
    h.receiver.scripted["?EQALL"] = {{2, 'E', '0', '4', 0, 0}};
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectFailedRun(h, {kCommandError});
}

TEST(ReceiveErrorReply, AnErrorReplySplitOverTicksIsReadWhole) {
    ReceiveHarness h;
    h.receiver.refusals["?RVCT"] = 1;
    ASSERT_TRUE(h.start());
    while (h.link.commands().back() != "?RVCT")
        ASSERT_TRUE(h.tick());
    // Two bytes a tick: the header and the rest of the error reply come on different ticks.
    h.link.bytesPerDelivery = 2;
    for (int i = 0; i < 3; ++i)
        ASSERT_TRUE(h.tick());
    EXPECT_EQ(countOf(h.link.commands(), "?RVCT"), 2);
    h.link.bytesPerDelivery = 0;
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(countOf(h.link.commands(), "?RVCT"), 2);
}

// ---- Lengths -----------------------------------------------------------------------------------

TEST(ReceiveLength, AProbeOf500BytesOnceReopensThePortAfterAPause) {
    ReceiveHarness h;
    h.receiver.scripted["?RVFL"] = {replyOfLength(500, true)};
    ASSERT_TRUE(h.start());
    ASSERT_TRUE(h.tick());  // the bad reply arrives
    EXPECT_TRUE(h.ticker.armed);
    EXPECT_EQ(h.ticker.tag, ReceiveEngine::kReopenTag);
    EXPECT_EQ(h.ticker.intervalMs, 3000);
    EXPECT_EQ(h.link.openCount(), 1);
    EXPECT_EQ(h.link.commands().size(), 1u);
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(h.reopenTimes, (std::vector<long long>{4000}));
    EXPECT_EQ(h.link.openCount(), 2);
    EXPECT_EQ(h.link.closeCount(), 2);
    EXPECT_EQ(countOf(h.link.commands(), "?RVFL"), 2);
    EXPECT_EQ(h.link.commands()[1], "?RVFL");
    EXPECT_FALSE(h.link.everSentWhileClosed());
}

TEST(ReceiveLength, AProbeOf500BytesTwiceEndsWithIllegalDataSize) {
    ReceiveHarness h;
    h.receiver.scripted["?RVFL"] = {replyOfLength(500, true), replyOfLength(500, true)};
    ReceiveOptions options;
    options.reopenPauseMs = 30;
    ASSERT_TRUE(h.start(options));
    h.runToEnd();
    expectFailedRun(h, {"Command error occurred. Please try again.(Illegal data size)"});
    EXPECT_EQ(h.link.openCount(), 2);
    EXPECT_EQ(h.link.commands(), (Commands{"?RVFL", "?RVFL"}));
    EXPECT_EQ(h.reopenTimes.size(), 1u);
}

TEST(ReceiveLength, AProbeOf384BytesIsASixBandReceiver) {
    ReceiveHarness h;
    h.receiver.bandSelector = 1;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(h.link.openCount(), 1);
    EXPECT_TRUE(contains(h.observer.result.lines, "63,125,250,1k,4k,11.3k"));
}

TEST(ReceiveLength, AnEmptyProbeIsNoLengthErrorAndLeavesAnEmptyFirstBlock) {
    ReceiveHarness h;
    h.receiver.scripted["?RVFL"] = {replyOfLength(0, true)};
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(h.link.openCount(), 1);
    const auto& lines = h.observer.result.lines;
    const auto data1 = std::find(lines.begin(), lines.end(), "[DATA1]");
    ASSERT_NE(data1, lines.end());
    EXPECT_EQ(*(data1 + 1), "");
    EXPECT_EQ(*(data1 + 2), "[DATA1A]");
    EXPECT_EQ(*(data1 + 3),
              "L,0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,"
              "25,26,27,28,29,30,31");
}

TEST(ReceiveLength, ABodyOf2048BytesIsAccepted) {
    ReceiveHarness h;
    h.receiver.scripted["?RVCT"] = {replyOfLength(2048, true)};
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_TRUE(contains(h.observer.result.lines, "[DATA2A]"));
}

TEST(ReceiveLength, ABodyOf2049BytesIsRefused) {
    ReceiveHarness h;
    h.receiver.scripted["?RVCT"] = {replyOfLength(2049, true)};
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectFailedRun(h, {"Command error occurred. Please try again.(Too long data)"});
    EXPECT_EQ(h.link.commands().back(), "?RVCT");
}

TEST(ReceiveLength, AnInformationReplyOfAnotherLengthEndsTheRun) {
    for (std::vector<std::uint8_t> reply : {std::vector<std::uint8_t>{0, 0, 3, 5, 0, 0},
                                            std::vector<std::uint8_t>{0, 0x80, 2, 5, 0}}) {
        ReceiveHarness h;
        h.receiver.scripted["?EI"] = {reply};
        ASSERT_TRUE(h.start());
        h.runToEnd();
        expectFailedRun(h, {kCommandError});
    }
}

TEST(ReceiveLength, ATwoByteInformationReplyMeansEqOff) {
    ReceiveHarness h;
    h.receiver.reverbType = 3;
    h.receiver.scripted["?EI"] = {{0, 0, 2, 6, 0}};
    ASSERT_TRUE(h.start(kinds(true, false, false)));
    h.runToEnd();
    expectSucceeded(h);
    const auto& lines = h.observer.result.lines;
    EXPECT_TRUE(contains(lines, "L,C,R,SR A,SB,SL A"));
    EXPECT_TRUE(contains(lines, "EQ OFF"));
}

TEST(ReceiveLength, AnEmptyListGoesOnToTheNextCommand) {
    ReceiveHarness h;
    h.receiver.scripted["?DLALL"] = {{0}};
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(h.link.commands().back(), "?STALL");
}

// ---- Time-outs and broken lines --------------------------------------------------------------

TEST(ReceiveTimeout, ASilentReceiverTimesOutAfterTenEmptyPolls) {
    ReceiveHarness h;
    h.receiver.silent.insert("?RVFL");
    ASSERT_TRUE(h.start());
    for (int i = 0; i < 10; ++i)
        ASSERT_TRUE(h.tick());
    EXPECT_TRUE(h.engine.isRunning());
    EXPECT_TRUE(h.messenger.texts.empty());
    ASSERT_TRUE(h.tick());
    expectFailedRun(h, {"Timeout occurred."});
    EXPECT_EQ(h.clockMs, 11000);
    EXPECT_EQ(h.link.commands(), Commands{"?RVFL"});
    EXPECT_EQ(h.messenger.modes, std::vector<MessageMode>{MessageMode::Ok});
}

TEST(ReceiveTimeout, AReceiverFallingSilentMidRunLosesEverything) {
    ReceiveHarness h;
    h.receiver.silent.insert("?FBS");
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectFailedRun(h, {"Timeout occurred."});
    EXPECT_EQ(h.link.commands().back(), "?FBS");
}

TEST(ReceiveTimeout, AReplyCutOffTimesOut) {
    ReceiveHarness h;
    auto cut = h.receiver.frame(0, h.receiver.reverbBody("CT", false));
    cut.resize(100);
    h.receiver.scripted["?RVCT"] = {cut};
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectFailedRun(h, {"Timeout occurred."});
}

TEST(ReceiveTimeout, ASlowLineIsNoTimeout) {
    ReceiveHarness fast;
    ASSERT_TRUE(fast.start());
    fast.runToEnd();
    ReceiveHarness slow;
    slow.link.bytesPerDelivery = 96;  // about a tenth of a second's bytes at 9600 baud
    ASSERT_TRUE(slow.start());
    slow.runToEnd(20000);
    expectSucceeded(slow);
    EXPECT_GT(slow.ticks, fast.ticks);
    EXPECT_EQ(slow.link.commands(), fast.link.commands());
    EXPECT_EQ(slow.observer.result.lines, fast.observer.result.lines);
}

TEST(ReceiveBrokenLine, AFailedOpenStartsNothing) {
    ReceiveHarness h;
    h.link.failOpenAt = 0;
    EXPECT_FALSE(h.start());
    EXPECT_FALSE(h.engine.isRunning());
    EXPECT_TRUE(h.link.commands().empty());
    EXPECT_EQ(h.observer.finishCount, 0);
    EXPECT_TRUE(h.messenger.texts.empty());  // the link says why
}

TEST(ReceiveBrokenLine, AFailedSendEndsTheRunWithoutText) {
    for (int failing : {0, 3, 15}) {
        ReceiveHarness h;
        h.link.failSendAt = failing;
        const bool started = h.start();
        EXPECT_TRUE(started);
        if (h.engine.isRunning())
            h.runToEnd();
        expectFailedRun(h, {});
        EXPECT_EQ(static_cast<int>(h.link.commands().size()), failing);
    }
}

TEST(ReceiveBrokenLine, AFailedReadEndsTheRunAtOnce) {
    ReceiveHarness h;
    ASSERT_TRUE(h.start());
    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(h.tick());
    h.link.failReceive = true;
    ASSERT_TRUE(h.tick());
    expectFailedRun(h, {});
}

TEST(ReceiveBrokenLine, AFailedReopenEndsTheRunWithoutText) {
    ReceiveHarness h;
    h.receiver.scripted["?RVFL"] = {replyOfLength(500, true)};
    h.link.failOpenAt = 1;
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectFailedRun(h, {});
    EXPECT_EQ(h.link.commands().size(), 1u);
}

TEST(ReceiveBrokenLine, TicksThatWereNotArmedAreIgnored) {
    ReceiveHarness h;
    ASSERT_TRUE(h.start());
    h.link.deliver();
    h.engine.onTick(11);
    h.engine.onTick(ReceiveEngine::kReopenTag);
    EXPECT_EQ(h.link.commands().size(), 1u);
    h.runToEnd();
    expectSucceeded(h);
    h.engine.onTick(ReceiveEngine::kReplyPollTag);
    EXPECT_EQ(h.observer.finishCount, 1);
}

TEST(ReceiveBrokenLine, ASecondStartWhileRunningIsRefused) {
    ReceiveHarness h;
    ASSERT_TRUE(h.start());
    EXPECT_FALSE(h.start());
    EXPECT_EQ(h.link.openCount(), 1);
}

TEST(ReceiveBrokenLine, AnEngineGoneMidRunClosesThePort) {
    ReceiveHarness h;
    {
        ReceiveEngine engine(h.link, h.ticker, h.messenger, h.observer);
        ReceiveOptions options;
        options.portName = "COM3";
        ASSERT_TRUE(engine.start(options));
        EXPECT_TRUE(h.link.isOpen());
    }
    EXPECT_FALSE(h.link.isOpen());
    EXPECT_FALSE(h.ticker.armed);
}

// ---- Attributes --------------------------------------------------------------------------------

TEST(ReceiveAttribute, AnInvalidReverbReplyKeepsItsHeadingsOnly) {
    ReceiveHarness h;
    h.receiver.scripted["?RVCT"] = {h.receiver.frame(0xF0, h.receiver.reverbBody("CT", false))};
    ASSERT_TRUE(h.start(kinds(true, false, false)));
    h.runToEnd();
    expectSucceeded(h);
    const auto& lines = h.observer.result.lines;
    const auto data2 = std::find(lines.begin(), lines.end(), "[DATA2]");
    ASSERT_NE(data2, lines.end());
    EXPECT_EQ(*(data2 + 1), "");
    EXPECT_EQ(*(data2 + 2), "[DATA2A]");
}

TEST(ReceiveAttribute, AnInvalidGroupDelayReplyIsLeftOut) {
    ReceiveHarness h;
    h.receiver.scripted["?FBS"] = {h.receiver.frame(0xF1, h.receiver.groupDelayBody("S"))};
    ASSERT_TRUE(h.start(kinds(false, true, false)));
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_TRUE(contains(h.observer.result.lines, "Front,Center,Surr Back"));
}

TEST(ReceiveAttribute, AFrontLeftProbeWithAHighAttributeIsNotKept) {
    ReceiveHarness h;
    h.receiver.scripted["?RVFL"] = {h.receiver.frame(0x10, h.receiver.reverbBody("FL", false))};
    ASSERT_TRUE(h.start(kinds(true, false, false)));
    h.runToEnd();
    expectSucceeded(h);
    const auto& lines = h.observer.result.lines;
    const auto data1 = std::find(lines.begin(), lines.end(), "[DATA1]");
    ASSERT_NE(data1, lines.end());
    EXPECT_EQ(*(data1 + 1), "");
}

TEST(ReceiveAttribute, AReceiverWithoutAConfigurationCodeIsRefused) {
    ReceiveHarness h;
    h.receiver.scripted["?EI"] = {{0, 0, 4, 0, 0, 0, 0}};
    ASSERT_TRUE(h.start());
    h.runToEnd();
    expectFailedRun(h, {kCommandError});
}

// ---- Progress ----------------------------------------------------------------------------------

TEST(ReceiveProgress, NeverPasses95BeforeTheEnd) {
    for (int config : {5, 10}) {
        for (bool after : {true, false}) {
            ReceiveHarness h;
            h.receiver.configCode = config;
            h.receiver.afterData = after;
            ASSERT_TRUE(h.start());
            h.runToEnd();
            expectSucceeded(h);
            const auto& values = h.observer.progressValues;
            ASSERT_FALSE(values.empty());
            EXPECT_EQ(values.front(), 0);
            EXPECT_LE(*std::max_element(values.begin(), values.end()), 95);
            EXPECT_GE(values.back(), 60) << "config " << config;
            EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
        }
    }
}

TEST(ReceiveProgress, GroupDelayAloneStopsAt95) {
    ReceiveHarness h;
    h.receiver.configCode = 10;
    ASSERT_TRUE(h.start(kinds(false, true, false)));
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(h.observer.progressValues.back(), 95);
}

}  // namespace
}  // namespace sonalyx::test
