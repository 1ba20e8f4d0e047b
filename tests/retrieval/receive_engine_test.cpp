#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>

#include "emulator/measurement_replies.h"
#include "receive_harness.h"

namespace sonalyx::test {
namespace {

using Commands = std::vector<std::string>;
using Lines = std::vector<std::string>;

const std::string kCommandError = "Command error occurred. Please try again.";
const std::string kTimeout = "Timeout occurred.";

// The commands that start with prefix ("" for all of them), in order.
Commands startingWith(const Commands& commands, const std::string& prefix) {
    Commands matching;
    std::copy_if(commands.begin(), commands.end(), std::back_inserter(matching),
                 [&](const std::string& c) { return c.starts_with(prefix); });
    return matching;
}

int countOf(const Commands& commands, const std::string& command) {
    return static_cast<int>(std::count(commands.begin(), commands.end(), command));
}

bool contains(const Lines& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

ReceiveOptions kinds(bool reverb, bool groupDelay, bool parameters, bool parametersOnly = false) {
    ReceiveOptions options;
    options.reverb = reverb;
    options.groupDelay = groupDelay;
    options.parameters = parameters;
    options.parametersOnly = parametersOnly;
    return options;
}

// The run ended as a failure: no text, the port closed, these messages (none when the link
// reports the failure itself).
void expectFailedRun(const ReceiveHarness& h, const Lines& messages) {
    EXPECT_FALSE(h.engine.isRunning());
    EXPECT_EQ(h.observer.finishCount, 1);
    EXPECT_FALSE(h.observer.result.success);
    EXPECT_TRUE(h.observer.result.lines.empty());
    EXPECT_TRUE(h.observer.portClosedAtFinish);
    EXPECT_EQ(h.messenger.texts(), messages);
    EXPECT_FALSE(h.ticker.armed);
}

void expectSucceeded(const ReceiveHarness& h) {
    EXPECT_EQ(h.observer.finishCount, 1);
    EXPECT_TRUE(h.observer.result.success);
    EXPECT_EQ(h.messenger.texts(), Lines{});
    EXPECT_TRUE(h.observer.portClosedAtFinish);
    EXPECT_FALSE(h.ticker.armed);
    EXPECT_EQ(h.observer.sent, h.link.commands());
    EXPECT_FALSE(h.link.everSentWhileClosed());
}

// ---- Whole runs against a receiver with one oddity each --------------------------------------

struct RunCase {
    const char* name;
    std::function<void(FakeReceiver&)> receiver = [](FakeReceiver&) {};
    ReceiveOptions options = {};
    std::string message = {};                   // the one message of a failed run; "" for success
    std::map<std::string, Commands> sent = {};  // the commands sent that start with the key
    std::map<std::string, int> counts = {};     // how often the key ("?RA*": the prefix) was sent
    int opens = 1;
    Lines sequence = {};  // lines that follow one another in the text
    Lines absent = {};    // lines the text must not hold
};

void PrintTo(const RunCase& c, std::ostream* os) {
    *os << c.name;
}

const Commands kFullRun5 = {"?RVFL", "?EI",   "?RAFL", "?RVCT",  "?RACT",  "?RVFR",  "?RAFR",
                            "?RVSR", "?RASR", "?RVSL", "?RASL",  "?FBF",   "?FBS",   "?FBC",
                            "?FBB",  "?SI",   "?SP",   "?EQALL", "?DLALL", "?LVALL", "?STALL"};
std::function<void(FakeReceiver&)> refusing(std::map<std::string, int> refusals) {
    return [refusals](FakeReceiver& r) { r.refusals = refusals; };
}

std::function<void(FakeReceiver&)> replying(const std::string& command,
                                            std::vector<std::uint8_t> reply) {
    return [command, reply](FakeReceiver& r) { r.scripted[command] = {reply}; };
}

const std::string kLabelRow =
    "L,0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28,29,30,31";

// Which commands each configuration and choice of kinds asks shows in the received texts
// (receive_document_test.cpp): a wrong ask is refused by the emulator and the run fails.
const RunCase kRuns[] = {
    {.name = "FullRunOfConfiguration5", .sent = {{"", kFullRun5}}},
    // Error replies.
    {.name = "AfterDataRefusedTwice",
     .receiver = refusing({{"?RAFL", 2}}),
     .counts = {{"?RAFL", 3}, {"?RA*", 7}},
     .sequence = {"[DATA5A]"}},
    {.name = "KeptCommandRepeated",
     .receiver = refusing({{"?RVCT", 2}}),
     .counts = {{"?RVCT", 3}},
     .sequence = {"[DATA2A]"}},
    {.name = "ReverbRefusedThreeTimes",
     .receiver = refusing({{"?RVCT", -1}}),
     .message = kCommandError,
     .counts = {{"?RVCT", 3}}},
    // The repeat count is not reset by a good reply.
    {.name = "RepeatsCountOverTheRun",
     .receiver = refusing({{"?RVCT", 1}, {"?RVFR", 2}}),
     .message = kCommandError,
     .counts = {{"?RVFR", 2}}},
    {.name = "GroupDelayRefusedEndsThatPhase",
     .receiver = refusing({{"?FBC", -1}}),
     .counts = {{"?FBC", 3}, {"?FBB", 0}, {"?SI", 1}},
     .sequence = {"Front,Surround A"}},
    {.name = "InformationRefused",
     .receiver = refusing({{"?EI", -1}}),
     .message = kCommandError,
     .counts = {{"?EI", 3}}},
    {.name = "SystemInfoNotRepeated",
     .receiver = refusing({{"?SI", 1}}),
     .message = kCommandError,
     .counts = {{"?SI", 1}, {"?SP", 0}}},
    {.name = "SpeakerSettingNotRepeated",
     .receiver = refusing({{"?SP", 1}}),
     .message = kCommandError,
     .counts = {{"?SP", 1}, {"?EQALL", 0}}},
    {.name = "DistanceListNotRepeated",
     .receiver = refusing({{"?DLALL", 1}}),
     .message = kCommandError,
     .counts = {{"?DLALL", 1}, {"?LVALL", 0}}},
    {.name = "LevelListNotRepeated",
     .receiver = refusing({{"?LVALL", 1}}),
     .message = kCommandError,
     .counts = {{"?LVALL", 1}, {"?STALL", 0}}},
    {.name = "StandingWaveListNotRepeated",
     .receiver = refusing({{"?STALL", 1}}),
     .message = kCommandError,
     .counts = {{"?STALL", 1}}},
    {.name = "EqListRefusedTwice",
     .receiver = refusing({{"?EQALL", 2}}),
     .counts = {{"?EQALL", 3}, {"?DL", 0}, {"?STALL", 1}}},
    {.name = "FallbackQueryRepeated",
     .receiver = refusing({{"?EQALL", -1}, {"?EQFL", 2}}),
     .counts = {{"?EQFL", 3}, {"?RVFL", 1}}},
    {.name = "ErrorForACountByte",
     .receiver = replying("?EQALL", {'E', '9', '9', 0, 0}),
     .message = kCommandError,
     .counts = {{"?EQALL", 1}}},
    {.name = "ErrorForARecordPrefix",
     .receiver = replying("?EQALL", {2, 'E', '0', '4', 0, 0}),
     .message = kCommandError},
    // Lengths.
    {.name = "ProbeOf500BytesTwice",
     .receiver =
         [](FakeReceiver& r) {
             r.scripted["?RVFL"] = {replyOfLength(500, true), replyOfLength(500, true)};
         },
     .message = kCommandError + "(Illegal data size)",
     .sent = {{"", {"?RVFL", "?RVFL"}}},
     .opens = 2},
    {.name = "EmptyProbe",
     .receiver = replying("?RVFL", replyOfLength(0, true)),
     .sequence = {"[DATA1]", "", "[DATA1A]", kLabelRow}},
    {.name = "BodyOf2048Bytes",
     .receiver = replying("?RVCT", replyOfLength(2048, true)),
     .sequence = {"[DATA2A]"}},
    {.name = "BodyOf2049Bytes",
     .receiver = replying("?RVCT", replyOfLength(2049, true)),
     .message = kCommandError + "(Too long data)",
     .counts = {{"?RVCT", 1}, {"?RACT", 0}}},
    {.name = "InformationOf3Bytes",
     .receiver = replying("?EI", {0, 0, 3, 5, 0, 0}),
     .message = kCommandError},
    {.name = "InformationOf2BytesOnAnExtendedReceiver",
     .receiver = replying("?EI", {0, 0x80, 2, 5, 0}),
     .message = kCommandError},
    {.name = "InformationOf2BytesIsEqOff",
     .receiver =
         [](FakeReceiver& r) {
             r.configCode = 6;
             r.reverbType = 3;
             r.scripted["?EI"] = {{0, 0, 2, 6, 0}};
         },
     .options = kinds(true, false, false),
     .sequence = {"L,C,R,SR A,SB,SL A", "", "[BAND]", "63,125,250,500,1k,2k,4k,8k,16k", "",
                  "[REVERB TYPE]", "EQ OFF"}},
    {.name = "NoConfigurationCode",
     .receiver = replying("?EI", {0, 0, 4, 0, 0, 0, 0}),
     .message = kCommandError},
    {.name = "EmptyList", .receiver = replying("?DLALL", {0}), .counts = {{"?STALL", 1}}},
    // Time-outs.
    {.name = "SilentMidRun",
     .receiver = [](FakeReceiver& r) { r.silent.insert("?FBS"); },
     .message = kTimeout,
     .counts = {{"?FBS", 1}, {"?FBC", 0}}},
    {.name = "ReplyCutOff",
     .receiver =
         [](FakeReceiver& r) {
             auto cut = r.frame(0, r.reverbBody("CT", false));
             cut.resize(100);
             r.scripted["?RVCT"] = {cut};
         },
     .message = kTimeout},
    // Attributes.
    {.name = "InvalidReverbKeepsItsHeadings",
     .receiver =
         [](FakeReceiver& r) { r.scripted["?RVCT"] = {r.frame(0xF0, r.reverbBody("CT", false))}; },
     .options = kinds(true, false, false),
     .sequence = {"[DATA2]", "", "[DATA2A]"}},
    {.name = "InvalidGroupDelayLeftOut",
     .receiver =
         [](FakeReceiver& r) { r.scripted["?FBS"] = {r.frame(0xF1, emulator::groupDelayBody(1))}; },
     .options = kinds(false, true, false),
     .sequence = {"[CHANNEL]", "Front,Center", ""}},
    {.name = "ProbeWithAHighAttributeNotKept",
     .receiver =
         [](FakeReceiver& r) { r.scripted["?RVFL"] = {r.frame(0x10, r.reverbBody("FL", false))}; },
     .options = kinds(true, false, false),
     .sequence = {"[DATA1]", "", "[DATA1A]"}},
};

class ReceiveRun : public ::testing::TestWithParam<RunCase> {};

TEST_P(ReceiveRun, EndsAsExpected) {
    const RunCase& c = GetParam();
    ReceiveHarness h;
    c.receiver(h.receiver);
    ASSERT_TRUE(h.start(c.options));
    h.runToEnd();
    if (c.message.empty())
        expectSucceeded(h);
    else
        expectFailedRun(h, {c.message});
    EXPECT_EQ(h.link.openCount(), c.opens);
    const Commands& commands = h.link.commands();
    for (const auto& [prefix, expected] : c.sent)
        EXPECT_EQ(startingWith(commands, prefix), expected) << "commands starting with " << prefix;
    for (const auto& [command, times] : c.counts) {
        const bool prefix = command.ends_with('*');
        const int sent =
            prefix ? static_cast<int>(
                         startingWith(commands, command.substr(0, command.size() - 1)).size())
                   : countOf(commands, command);
        EXPECT_EQ(sent, times) << command;
    }
    const Lines& lines = h.observer.result.lines;
    if (!c.sequence.empty()) {
        EXPECT_NE(std::search(lines.begin(), lines.end(), c.sequence.begin(), c.sequence.end()),
                  lines.end())
            << ::testing::PrintToString(c.sequence);
    }
    for (const auto& line : c.absent)
        EXPECT_FALSE(contains(lines, line)) << line;
}

INSTANTIATE_TEST_SUITE_P(Receiver, ReceiveRun, ::testing::ValuesIn(kRuns),
                         [](const auto& info) { return std::string(info.param.name); });

// A group a configuration lacks is answered as not measured and leaves no trace in the text,
// so the commands themselves are checked here.
TEST(ReceiveCommandOrder, EachConfigurationAsksItsChannelsAndGroups) {
    const struct {
        int config;
        const char* reverb;
        const char* groups;
    } rows[] = {{5, "FL CT FR SR SL", "F S C B"},
                {6, "FL CT FR SR SBL SL", "F S C B"},
                {7, "FL CT FR SR SBR SBL SL", "F S C B"},
                {9, "FL CT FR SR SBR SBL SL SPBL SPBR", "F S C B"},
                {10, "FL CT FR SR SBR SBL SL EXSL EXSR TS", "F S C B ES TS"},
                {11, "FL CT FR SR SBR SBL SL EXSL EXSR", "F S C B ES"}};
    for (const auto& row : rows) {
        ReceiveHarness h;
        h.receiver.configCode = row.config;
        h.receiver.afterData = false;
        ASSERT_TRUE(h.start(kinds(true, true, false)));
        h.runToEnd();
        std::map<std::string, std::string> asked;
        for (const auto& command : h.link.commands())
            asked[command.substr(0, 3)] +=
                (asked[command.substr(0, 3)].empty() ? "" : " ") + command.substr(3);
        EXPECT_EQ(asked["?RV"], row.reverb) << "configuration " << row.config;
        EXPECT_EQ(asked["?FB"], row.groups) << "configuration " << row.config;
    }
}

// ---- Pacing, reopening and time-outs ---------------------------------------------------------

TEST(ReceivePacing, EveryCommandArmsTheReplyPollAtTheChosenInterval) {
    ReceiveHarness h;
    ReceiveOptions options;
    options.tickMs = 20;
    ASSERT_TRUE(h.start(options));
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(h.link.portName(), "COM1");
    EXPECT_FALSE(h.link.monitorRequested());
    ASSERT_FALSE(h.ticker.armedIntervals.empty());
    for (int interval : h.ticker.armedIntervals)
        EXPECT_EQ(interval, 20);
    // Every reply fits in one tick here, so the run takes one tick per command.
    EXPECT_EQ(h.ticks, static_cast<int>(h.link.commands().size()));
}

TEST(ReceivePacing, NothingSelectedStartsNothingAndASecondStartIsRefused) {
    ReceiveHarness idle;
    EXPECT_FALSE(idle.start(kinds(false, false, false)));
    EXPECT_EQ(idle.link.openCount(), 0);
    EXPECT_EQ(idle.observer.finishCount, 0);

    ReceiveHarness h;
    ASSERT_TRUE(h.start());
    EXPECT_FALSE(h.start());
    EXPECT_EQ(h.link.openCount(), 1);
}

TEST(ReceivePacing, AnErrorReplySplitOverTicksIsReadWhole) {
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

TEST(ReceivePacing, AProbeOf500BytesOnceReopensThePortAfterAPause) {
    ReceiveHarness h;
    h.receiver.scripted["?RVFL"] = {replyOfLength(500, true)};
    ASSERT_TRUE(h.start());
    ASSERT_TRUE(h.tick());  // the bad reply arrives
    EXPECT_TRUE(h.ticker.armed);
    EXPECT_EQ(h.ticker.tag, ReceiveEngine::kReopenTag);
    EXPECT_EQ(h.ticker.intervalMs, 3000);
    EXPECT_EQ(h.link.commands().size(), 1u);
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(h.reopenTimes, (std::vector<long long>{4000}));
    EXPECT_EQ(h.link.openCount(), 2);
    EXPECT_EQ(h.link.closeCount(), 2);
    EXPECT_EQ(Commands(h.link.commands().begin(), h.link.commands().begin() + 3),
              (Commands{"?RVFL", "?RVFL", "?EI"}));
}

TEST(ReceivePacing, ASilentReceiverTimesOutAfterTenEmptyPolls) {
    ReceiveHarness h;
    h.receiver.silent.insert("?RVFL");
    ASSERT_TRUE(h.start());
    for (int i = 0; i < 10; ++i)
        ASSERT_TRUE(h.tick());
    EXPECT_TRUE(h.engine.isRunning());
    ASSERT_TRUE(h.tick());
    expectFailedRun(h, {kTimeout});
    EXPECT_EQ(h.clockMs, 11000);
    EXPECT_EQ(h.link.commands(), Commands{"?RVFL"});
    EXPECT_EQ(h.messenger.messages.front().mode, MessageMode::Ok);
}

TEST(ReceivePacing, ASlowLineIsNoTimeout) {
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

// ---- A broken line: the link has told the user; the run just ends ------------------------------

TEST(ReceiveBrokenLine, AFailedOpenStartsNothing) {
    ReceiveHarness h;
    h.link.failOpenAt = 0;
    EXPECT_FALSE(h.start());
    EXPECT_FALSE(h.engine.isRunning());
    EXPECT_TRUE(h.link.commands().empty());
    EXPECT_EQ(h.observer.finishCount, 0);
    EXPECT_TRUE(h.messenger.texts().empty());
}

TEST(ReceiveBrokenLine, AFailedSendReadOrReopenEndsTheRunWithoutText) {
    const struct {
        const char* name;
        std::function<void(ReceiveHarness&)> spoil;
        size_t commandsSent;
    } rows[] = {
        {"first send", [](ReceiveHarness& h) { h.link.failSendAt = 0; }, 0},
        {"fourth send", [](ReceiveHarness& h) { h.link.failSendAt = 3; }, 3},
        {"sixteenth send", [](ReceiveHarness& h) { h.link.failSendAt = 15; }, 15},
        {"reopen",
         [](ReceiveHarness& h) {
             h.receiver.scripted["?RVFL"] = {replyOfLength(500, true)};
             h.link.failOpenAt = 1;
         },
         1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        ReceiveHarness h;
        row.spoil(h);
        EXPECT_TRUE(h.start());
        if (h.engine.isRunning())
            h.runToEnd();
        expectFailedRun(h, {});
        EXPECT_EQ(h.link.commands().size(), row.commandsSent);
    }
    ReceiveHarness h;
    ASSERT_TRUE(h.start());
    for (int i = 0; i < 5; ++i)
        ASSERT_TRUE(h.tick());
    h.link.failReceive = true;
    ASSERT_TRUE(h.tick());
    expectFailedRun(h, {});
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

// ---- Progress --------------------------------------------------------------------------------

TEST(ReceiveProgress, RisesToAtMost95BeforeTheEnd) {
    for (int config : {5, 10}) {
        for (bool after : {true, false}) {
            SCOPED_TRACE("configuration " + std::to_string(config) +
                         (after ? " with" : " without") + " after data");
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
            EXPECT_GE(values.back(), 60);
            EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
        }
    }
    ReceiveHarness h;
    h.receiver.configCode = 10;
    ASSERT_TRUE(h.start(kinds(false, true, false)));
    h.runToEnd();
    expectSucceeded(h);
    EXPECT_EQ(h.observer.progressValues.back(), 95);
}

}  // namespace
}  // namespace sonalyx::test
