#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <map>
#include <sstream>

#include "receive_harness.h"
#include "support/receive_scenarios.h"

namespace sonalyx::test {
namespace {

using Commands = std::vector<std::string>;
using Lines = std::vector<std::string>;

const std::string kCommandError = "Command error occurred. Please try again.";
const std::string kTimeout = "Timeout occurred.";

int countOf(const Commands& commands, const std::string& command) {
    return static_cast<int>(std::count(commands.begin(), commands.end(), command));
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
    std::function<void(ReceiveHarness&)> receiver = {};
    std::string message = {};  // the one message of a failed run; "" for success
    std::string counts = {};   // "?RAFL=3 ?RA*=7": how often a command (or a prefix*) went out
    Lines sequence = {};       // lines that follow one another in the text
    std::string kinds = "all";
    int opens = 1;
    Commands sent = {};  // every command, in order, where given
};

void PrintTo(const RunCase& c, std::ostream* os) {
    *os << c.name;
}

// Commands named without their '?', as the emulator takes them.
std::function<void(ReceiveHarness&)> refusing(std::map<std::string, int> refusals) {
    return [refusals](ReceiveHarness& h) { h.receiver.refusals = refusals; };
}

// A receiver answering command with reply.
std::function<void(ReceiveHarness&)> replying(const std::string& command, Bytes reply) {
    return [command, reply](ReceiveHarness& h) { h.scripted[command] = {reply}; };
}

Bytes attributed(int attribute, Bytes reply) {
    reply[0] = static_cast<std::uint8_t>(attribute);
    return reply;
}

Bytes cutShort(Bytes reply) {
    reply.resize(100);
    return reply;
}

const Commands kFullRun5 = {"?RVFL", "?EI",   "?RAFL", "?RVCT",  "?RACT",  "?RVFR",  "?RAFR",
                            "?RVSR", "?RASR", "?RVSL", "?RASL",  "?FBF",   "?FBS",   "?FBC",
                            "?FBB",  "?SI",   "?SP",   "?EQALL", "?DLALL", "?LVALL", "?STALL"};
const std::string kLabelRow =
    "L,0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15,16,17,18,19,20,21,22,23,24,25,26,27,28,29,30,31";

// Which commands each configuration and choice of kinds asks shows in the received texts
// (receive_document_test.cpp): a wrong ask is refused by the emulator and the run fails. The
// faults the emulator itself can play (a probe of 500 bytes twice, a body of 2049 bytes, an
// information of 3 bytes, a silent receiver, a cut line, not measured replies) are run over a
// real line in tests/link and against the received-text goldens.
const RunCase kRuns[] = {
    {.name = "FullRunOfConfiguration5", .sent = kFullRun5},
    // Error replies.
    {"AfterDataRefusedTwice", refusing({{"RAFL", 2}}), "", "?RAFL=3 ?RA*=7", {"[DATA5A]"}},
    {"KeptCommandRepeated", refusing({{"RVCT", 2}}), "", "?RVCT=3", {"[DATA2A]"}},
    // The repeat count is not reset by a good reply.
    {"RepeatsCountOverTheRun", refusing({{"RVCT", 1}, {"RVFR", 2}}), kCommandError, "?RVFR=2"},
    {.name = "GroupDelayRefusedEndsThatPhase",
     .receiver = refusing({{"FBC", -1}}),
     .counts = "?FBC=3 ?FBB=0 ?SI=1",
     .sequence = {"Front,Surround A"}},
    {"InformationRefused", refusing({{"EI", -1}}), kCommandError, "?EI=3"},
    {"SystemInfoNotRepeated", refusing({{"SI", 1}}), kCommandError, "?SI=1 ?SP=0"},
    {"SpeakerSettingNotRepeated", refusing({{"SP", 1}}), kCommandError, "?SP=1 ?EQALL=0"},
    {"DistanceListNotRepeated", refusing({{"DLALL", 1}}), kCommandError, "?DLALL=1 ?LVALL=0"},
    {"LevelListNotRepeated", refusing({{"LVALL", 1}}), kCommandError, "?LVALL=1 ?STALL=0"},
    {"StandingWaveListNotRepeated", refusing({{"STALL", 1}}), kCommandError, "?STALL=1"},
    {"EqListRefusedTwice", refusing({{"EQALL", 2}}), "", "?EQALL=3 ?DL=0 ?STALL=1"},
    {"FallbackQueryRepeated", refusing({{"EQALL", -1}, {"EQFL", 2}}), "", "?EQFL=3 ?RVFL=1"},
    {"ErrorForACountByte", replying("?EQALL", {'E', '9', '9', 0, 0}), kCommandError, "?EQALL=1"},
    {"ErrorForARecordPrefix", replying("?EQALL", {2, 'E', '0', '4', 0, 0}), kCommandError},
    // Lengths and attributes.
    {.name = "EmptyProbe",
     .receiver = replying("?RVFL", replyOfLength(0)),
     .sequence = {"[DATA1]", "", "[DATA1A]", kLabelRow}},
    {.name = "ProbeWithAHighAttributeNotKept",
     .receiver = replying("?RVFL", attributed(0x10, replyOfLength(576))),
     .sequence = {"[DATA1]", "", "[DATA1A]"},
     .kinds = "r"},
    {"BodyOf2048Bytes", replying("?RVCT", replyOfLength(2048)), "", "", {"[DATA2A]"}},
    {"InformationOf2BytesOnAnExtendedReceiver", replying("?EI", {0, 0x80, 2, 5, 0}), kCommandError},
    {"NoConfigurationCode", replying("?EI", {0, 0, 4, 0, 0, 0, 0}), kCommandError},
    {"EmptyList", replying("?DLALL", {0}), "", "?STALL=1"},
    // Time-outs: a receiver gone silent mid-run, a reply that stops half-way.
    {"SilentMidRun", replying("?FBS", {}), kTimeout, "?FBS=1 ?FBC=0"},
    {"ReplyCutOff", replying("?RVCT", cutShort(replyOfLength(576))), kTimeout},
};

class ReceiveRun : public ::testing::TestWithParam<RunCase> {};

TEST_P(ReceiveRun, EndsAsExpected) {
    const RunCase& c = GetParam();
    ReceiveHarness h;
    if (c.receiver)
        c.receiver(h);
    ASSERT_TRUE(h.start(receiveOptions(c.kinds)));
    h.runToEnd();
    if (c.message.empty())
        expectSucceeded(h);
    else
        expectFailedRun(h, {c.message});
    EXPECT_EQ(h.link.openCount(), c.opens);
    const Commands& commands = h.link.commands();
    if (!c.sent.empty()) {
        EXPECT_EQ(commands, c.sent);
    }
    std::istringstream counts(c.counts);
    for (std::string count; counts >> count;) {
        const auto equals = count.find('=');
        const std::string command = count.substr(0, equals);
        const std::string prefix = command.substr(0, command.size() - 1);
        const int sent = command.ends_with('*')
                             ? static_cast<int>(std::count_if(
                                   commands.begin(), commands.end(),
                                   [&](const std::string& c) { return c.starts_with(prefix); }))
                             : countOf(commands, command);
        EXPECT_EQ(sent, std::stoi(count.substr(equals + 1))) << command;
    }
    const Lines& lines = h.observer.result.lines;
    if (!c.sequence.empty()) {
        EXPECT_NE(std::search(lines.begin(), lines.end(), c.sequence.begin(), c.sequence.end()),
                  lines.end())
            << ::testing::PrintToString(c.sequence);
    }
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
        h.receiver.parameters.configCode = row.config;
        h.receiver.afterData = false;
        ASSERT_TRUE(h.start(receiveOptions("rg")));
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

// A slow line is no time-out: replies spread over many ticks bring the same run.
TEST(ReceivePacing, EveryCommandArmsTheReplyPollAndASlowLineIsNoTimeout) {
    ReceiveHarness fast;
    ReceiveOptions options;
    options.tickMs = 20;
    ASSERT_TRUE(fast.start(options));
    fast.runToEnd();
    expectSucceeded(fast);
    EXPECT_EQ(fast.link.portName(), "COM1");
    EXPECT_FALSE(fast.link.monitorRequested());
    ASSERT_FALSE(fast.ticker.armedIntervals.empty());
    for (int interval : fast.ticker.armedIntervals)
        EXPECT_EQ(interval, 20);
    // Every reply fits in one tick here, so the run takes one tick per command.
    EXPECT_EQ(fast.ticks, static_cast<int>(fast.link.commands().size()));

    ReceiveHarness slow;
    slow.link.bytesPerDelivery = 96;  // about a tenth of a second's bytes at 9600 baud
    ASSERT_TRUE(slow.start());
    slow.runToEnd(20000);
    expectSucceeded(slow);
    EXPECT_GT(slow.ticks, fast.ticks);
    EXPECT_EQ(slow.link.commands(), fast.link.commands());
    EXPECT_EQ(slow.observer.result.lines, fast.observer.result.lines);
}

// Nothing selected or a port that does not open: no run, nothing said (the link tells of the
// port itself); a second start while running is refused.
TEST(ReceivePacing, ARefusedStartStartsNothing) {
    for (const bool failOpen : {false, true}) {
        ReceiveHarness idle;
        idle.link.failOpenAt = failOpen ? 0 : -1;
        EXPECT_FALSE(idle.start(receiveOptions(failOpen ? "all" : "-")));
        EXPECT_FALSE(idle.engine.isRunning());
        EXPECT_TRUE(idle.link.commands().empty());
        EXPECT_EQ(idle.link.openCount(), failOpen ? 1 : 0);
        EXPECT_EQ(idle.observer.finishCount, 0);
        EXPECT_TRUE(idle.messenger.texts().empty());
    }
    ReceiveHarness h;
    ASSERT_TRUE(h.start());
    EXPECT_FALSE(h.start());
    EXPECT_EQ(h.link.openCount(), 1);
}

TEST(ReceivePacing, AnErrorReplySplitOverTicksIsReadWhole) {
    ReceiveHarness h;
    h.receiver.refusals["RVCT"] = 1;
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
    h.scripted["?RVFL"] = {replyOfLength(500)};
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
    h.scripted["?RVFL"] = {Bytes{}};
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

// ---- A broken line: the link has told the user; the run just ends ------------------------------

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
             h.scripted["?RVFL"] = {replyOfLength(500)};
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

// A folder that is not there, and a disk that is full from the first byte.
TEST(ReceiveBrokenLine, ALogThatCannotBeWrittenChangesNothing) {
    ReceiveHarness unlogged;
    ASSERT_TRUE(unlogged.start());
    unlogged.runToEnd();
    expectSucceeded(unlogged);
    for (const char* path : {"/sonalyx-no-such-folder/run.log", "/dev/full"}) {
        SCOPED_TRACE(path);
        ReceiveHarness h;
        h.log.start(path, "2009-05-17 14:03:00");
        ASSERT_TRUE(h.start());
        h.runToEnd();
        h.log.ended(h.observer.result);
        EXPECT_FALSE(h.log.writing());
        expectSucceeded(h);
        EXPECT_EQ(h.observer.result.lines, unlogged.observer.result.lines);
    }
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

}  // namespace
}  // namespace sonalyx::test
