// Where a run stands as the engine reports it: commands answered out of the commands the run
// will send, the kind being fetched and the time left, on the fake line and clock.
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>

#include "receive_harness.h"

namespace sonalyx::test {
namespace {

class ProgressRecorder : public RecordingObserver {
  public:
    void progressed(const ReceiveProgress& progress) override { reports.push_back(progress); }
    std::vector<ReceiveProgress> reports;
};

// The harness's line, receiver and clock, with an observer that keeps the progress reports.
struct ProgressRun {
    ProgressRun() : engine(link, ticker, messenger, observer) {
        link.setResponder([this](const std::string& command) { return receiver.reply(command); });
    }

    void run(ReceiveOptions options) {
        options.portName = "COM1";
        options.tickMs = 1000;
        ASSERT_TRUE(engine.start(options));
        for (int i = 0; i < 5000 && engine.isRunning() && ticker.armed; ++i) {
            if (ticker.tag == ReceiveEngine::kReplyPollTag)
                link.deliver();
            engine.onTick(ticker.tag);
        }
        ASSERT_FALSE(engine.isRunning());
        ASSERT_FALSE(observer.reports.empty());
    }

    int distinctCommands() const {
        const auto& sent = link.commands();
        return static_cast<int>(std::set<std::string>(sent.begin(), sent.end()).size());
    }

    FakeReceiver receiver;
    FakeSerialLink link;
    FakeTicker ticker;
    RecordingMessenger messenger;
    ProgressRecorder observer;
    ReceiveEngine engine;
};

bool sawKind(const std::vector<ReceiveProgress>& reports, const std::string& kind) {
    return std::any_of(reports.begin(), reports.end(),
                       [&kind](const ReceiveProgress& p) { return p.kind == kind; });
}

struct CountCase {
    int configCode;
    bool afterData;
    int totalFirstKnown;  // before the receiver has refused anything
    int total;            // at the end
};

TEST(ReceiveProgressCounts, FullRunsReachTheirTotalExactlyAtTheEnd) {
    const CountCase cases[] = {
        {5, true, 21, 21},
        {5, false, 21, 17},
        {10, true, 33, 33},
        {10, false, 33, 24},
    };
    for (const CountCase& c : cases) {
        SCOPED_TRACE("configuration " + std::to_string(c.configCode) +
                     (c.afterData ? " with" : " without") + " after data");
        ProgressRun run;
        run.receiver.configCode = c.configCode;
        run.receiver.afterData = c.afterData;
        run.run({});
        ASSERT_TRUE(run.observer.result.success);
        const auto& reports = run.observer.reports;

        // Unknown until the information reply: the probe and "?EI" go out with no total.
        EXPECT_EQ(reports.at(0).total, 0);
        EXPECT_EQ(reports.at(0).kind, "Reverb, Left, measured");
        EXPECT_EQ(reports.at(1).total, 0);
        EXPECT_EQ(reports.at(1).kind, "Receiver information");
        const auto known = std::find_if(reports.begin(), reports.end(),
                                        [](const ReceiveProgress& p) { return p.total > 0; });
        ASSERT_NE(known, reports.end());
        EXPECT_EQ(known->total, c.totalFirstKnown);
        EXPECT_EQ(known->answered, 2);

        EXPECT_EQ(reports.back().answered, c.total);
        EXPECT_EQ(reports.back().total, c.total);
        EXPECT_EQ(reports.back().remainingMs, 0);
        EXPECT_EQ(run.distinctCommands(), c.total);
        for (std::size_t i = 0; i + 1 < reports.size(); ++i) {
            if (reports[i].total > 0) {
                EXPECT_LT(reports[i].answered, reports[i].total) << "report " << i;
            }
            EXPECT_LE(reports[i].answered, reports[i + 1].answered) << "report " << i;
        }
        for (const char* kind : {"Reverb, Center, measured", "Group delay", "Parameters: EQ",
                                 "Parameters: distances", "Parameters: standing wave control"})
            EXPECT_TRUE(sawKind(reports, kind)) << kind;
        EXPECT_EQ(sawKind(reports, "Reverb, Center, after calibration"), c.afterData);
        if (c.afterData) {
            // Every command takes one tick of this clock, so the pace so far is exact.
            for (auto it = known; it != reports.end(); ++it)
                EXPECT_EQ(it->remainingMs, 1000LL * (it->total - it->answered))
                    << it->answered << " of " << it->total;
        }
    }
}

struct PlanCase {
    std::string name;
    std::function<void(FakeReceiver&)> receiver;
    ReceiveOptions options;
    bool totalChangesOnTheWay;
};

ReceiveOptions kinds(bool reverb, bool groupDelay, bool parameters) {
    ReceiveOptions options;
    options.reverb = reverb;
    options.groupDelay = groupDelay;
    options.parameters = parameters;
    return options;
}

ReceiveOptions parametersOnly() {
    ReceiveOptions options;
    options.parametersOnly = true;
    return options;
}

// The plan is the engine's own road: a run that meets nothing unexpected keeps its total from
// the moment it is known, and every run ends with as many commands as it sent.
TEST(ReceiveProgressCounts, ThePlanFollowsTheEngineWhateverHappens) {
    const std::vector<PlanCase> cases = {
        {"configuration 6", [](FakeReceiver& r) { r.configCode = 6; }, {}, false},
        {"configuration 7", [](FakeReceiver& r) { r.configCode = 7; }, {}, false},
        {"configuration 9", [](FakeReceiver& r) { r.configCode = 9; }, {}, false},
        {"configuration 11", [](FakeReceiver& r) { r.configCode = 11; }, {}, false},
        {"reverb only", [](FakeReceiver&) {}, kinds(true, false, false), false},
        {"group delay only", [](FakeReceiver&) {}, kinds(false, true, false), false},
        {"parameters only", [](FakeReceiver&) {}, parametersOnly(), false},
        {"group delay and parameters", [](FakeReceiver&) {}, kinds(false, true, true), false},
        {"old receiver", [](FakeReceiver& r) { r.extended = false; }, {}, false},
        {"old receiver, group delay only", [](FakeReceiver& r) { r.extended = false; },
         kinds(false, true, false), false},
        {"after data refused twice", [](FakeReceiver& r) { r.refusals["?RAFL"] = 2; }, {}, false},
        {"group delay refused", [](FakeReceiver& r) { r.refusals["?FBS"] = -1; }, {}, true},
        {"EQ list refused", [](FakeReceiver& r) { r.refusals["?EQALL"] = -1; }, {}, true},
    };
    for (const PlanCase& c : cases) {
        SCOPED_TRACE(c.name);
        ProgressRun run;
        c.receiver(run.receiver);
        run.run(c.options);
        ASSERT_TRUE(run.observer.result.success);
        const auto& reports = run.observer.reports;
        std::set<int> totals;
        for (const ReceiveProgress& p : reports) {
            if (p.total > 0)
                totals.insert(p.total);
        }
        EXPECT_EQ(totals.size() > 1, c.totalChangesOnTheWay);
        EXPECT_EQ(reports.back().total, run.distinctCommands());
        EXPECT_EQ(reports.back().answered, reports.back().total);
    }
}

}  // namespace
}  // namespace sonalyx::test
