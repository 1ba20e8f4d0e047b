// Where a run stands as the engine reports it: commands answered out of the commands the run
// will send, the kind being fetched and the time left, and the percentage of the bar, on the
// fake line and clock (one second a tick).
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>

#include "receive_harness.h"
#include "support/receive_scenarios.h"

namespace sonalyx::test {
namespace {

int distinctCommands(const ReceiveHarness& h) {
    const auto& sent = h.link.commands();
    return static_cast<int>(std::set<std::string>(sent.begin(), sent.end()).size());
}

bool sawKind(const std::vector<ReceiveProgress>& reports, const std::string& kind) {
    return std::any_of(reports.begin(), reports.end(),
                       [&kind](const ReceiveProgress& p) { return p.kind == kind; });
}

TEST(ReceiveProgressCounts, FullRunsReachTheirTotalExactlyAtTheEnd) {
    const struct {
        int configCode;
        bool afterData;
        int totalFirstKnown;  // before the receiver has refused anything
        int total;            // at the end
    } cases[] = {{5, true, 21, 21}, {5, false, 21, 17}, {10, true, 33, 33}, {10, false, 33, 24}};
    for (const auto& c : cases) {
        SCOPED_TRACE("configuration " + std::to_string(c.configCode) +
                     (c.afterData ? " with" : " without") + " after data");
        ReceiveHarness h;
        h.receiver.configCode = c.configCode;
        h.receiver.afterData = c.afterData;
        ASSERT_TRUE(h.start());
        h.runToEnd();
        ASSERT_TRUE(h.observer.result.success);
        const auto& reports = h.observer.reports;
        ASSERT_GE(reports.size(), 2u);

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
        EXPECT_EQ(distinctCommands(h), c.total);
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
        // The bar's percentage rises from 0 and stays at most 95 until the run is over.
        const auto& values = h.observer.progressValues;
        ASSERT_FALSE(values.empty());
        EXPECT_EQ(values.front(), 0);
        EXPECT_LE(*std::max_element(values.begin(), values.end()), 95);
        EXPECT_GE(values.back(), 60);
        EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
    }
}

// The plan is the engine's own road: a run that meets nothing unexpected keeps its total from
// the moment it is known, and every run ends with as many commands as it sent.
TEST(ReceiveProgressCounts, ThePlanFollowsTheEngineWhateverHappens) {
    const auto config = [](int code) { return [code](FakeReceiver& r) { r.configCode = code; }; };
    const auto old = [](FakeReceiver& r) { r.extended = false; };
    const struct {
        std::string name;
        std::function<void(FakeReceiver&)> receiver;
        std::string kinds;
        bool totalChangesOnTheWay;
    } cases[] = {
        {"configuration 6", config(6), "all", false},
        {"configuration 7", config(7), "all", false},
        {"configuration 9", config(9), "all", false},
        {"configuration 11", config(11), "all", false},
        {"reverb only", config(5), "r", false},
        {"group delay only", config(10), "g", false},  // its bar ends full at 95
        {"parameters only", config(5), "parameters-only", false},
        {"group delay and parameters", config(5), "gp", false},
        {"old receiver", old, "all", false},
        {"old receiver, group delay only", old, "g", false},
        {"after data refused twice", [](FakeReceiver& r) { r.refusals["?RAFL"] = 2; }, "all",
         false},
        {"group delay refused", [](FakeReceiver& r) { r.refusals["?FBS"] = -1; }, "all", true},
        {"EQ list refused", [](FakeReceiver& r) { r.refusals["?EQALL"] = -1; }, "all", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ReceiveHarness h;
        c.receiver(h.receiver);
        ASSERT_TRUE(h.start(receiveOptions(c.kinds)));
        h.runToEnd();
        ASSERT_TRUE(h.observer.result.success);
        const auto& reports = h.observer.reports;
        ASSERT_FALSE(reports.empty());
        std::set<int> totals;
        for (const ReceiveProgress& p : reports) {
            if (p.total > 0)
                totals.insert(p.total);
        }
        EXPECT_EQ(totals.size() > 1, c.totalChangesOnTheWay);
        EXPECT_EQ(reports.back().total, distinctCommands(h));
        EXPECT_EQ(reports.back().answered, reports.back().total);
        const auto& values = h.observer.progressValues;
        EXPECT_LE(*std::max_element(values.begin(), values.end()), 95);
        if (c.name == "group delay only") {
            EXPECT_EQ(values.back(), 95);
        }
    }
}

}  // namespace
}  // namespace sonalyx::test
