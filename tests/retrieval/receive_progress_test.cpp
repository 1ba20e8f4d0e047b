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

// The plan is the engine's own road: a run that meets nothing unexpected keeps its total from
// the moment it is known, and every run ends with as many commands as it sent. Full runs are
// also checked report by report (firstKnown: the total once "?EI" is answered).
TEST(ReceiveProgressCounts, ThePlanFollowsTheEngineAndEndsExactlyAtItsTotal) {
    const auto config = [](int code, bool after = true) {
        return [code, after](FakeReceiver& r) {
            r.configCode = code;
            r.afterData = after;
        };
    };
    const auto old = [](FakeReceiver& r) { r.extended = false; };
    const auto refusing = [](const char* command, int times) {
        return [command, times](FakeReceiver& r) { r.refusals[command] = times; };
    };
    const struct {
        std::string name;
        std::function<void(FakeReceiver&)> receiver;
        std::string kinds;
        bool totalChangesOnTheWay;
        int firstKnown = 0;
    } cases[] = {
        {"configuration 5", config(5), "all", false, 21},
        {"configuration 5 without after data", config(5, false), "all", true, 21},
        {"configuration 10", config(10), "all", false, 33},
        {"configuration 10 without after data", config(10, false), "all", true, 33},
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
        {"after data refused twice", refusing("?RAFL", 2), "all", false},
        {"group delay refused", refusing("?FBS", -1), "all", true},
        {"EQ list refused", refusing("?EQALL", -1), "all", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        ReceiveHarness h;
        c.receiver(h.receiver);
        ASSERT_TRUE(h.start(receiveOptions(c.kinds)));
        h.runToEnd();
        ASSERT_TRUE(h.observer.result.success);
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
        EXPECT_EQ(totals.size() > 1, c.totalChangesOnTheWay);
        EXPECT_EQ(reports.back().total, distinctCommands(h));
        EXPECT_EQ(reports.back().answered, reports.back().total);
        EXPECT_EQ(reports.back().remainingMs, 0);
        // The bar's percentage rises from 0 and stays at most 95 until the run is over.
        const auto& values = h.observer.progressValues;
        ASSERT_FALSE(values.empty());
        EXPECT_EQ(values.front(), 0);
        EXPECT_LE(*std::max_element(values.begin(), values.end()), 95);
        EXPECT_TRUE(std::is_sorted(values.begin(), values.end()));
        if (c.name == "group delay only") {
            EXPECT_EQ(values.back(), 95);
        }
        if (c.firstKnown == 0)
            continue;
        // Unknown until the information reply: the probe and "?EI" go out with no total.
        EXPECT_EQ(reports[0].total, 0);
        EXPECT_EQ(reports[0].kind, "Reverb, Left, measured");
        EXPECT_EQ(reports[1].total, 0);
        EXPECT_EQ(reports[1].kind, "Receiver information");
        const auto known = std::find_if(reports.begin(), reports.end(),
                                        [](const ReceiveProgress& p) { return p.total > 0; });
        ASSERT_NE(known, reports.end());
        EXPECT_EQ(known->total, c.firstKnown);
        EXPECT_EQ(known->answered, 2);
        EXPECT_GE(values.back(), 60);
        for (const char* kind : {"Reverb, Center, measured", "Group delay", "Parameters: EQ",
                                 "Parameters: distances", "Parameters: standing wave control"})
            EXPECT_TRUE(sawKind(reports, kind)) << kind;
        EXPECT_EQ(sawKind(reports, "Reverb, Center, after calibration"), !c.totalChangesOnTheWay);
        // Every command takes one tick of this clock, so the pace so far is exact.
        for (auto it = known; !c.totalChangesOnTheWay && it != reports.end(); ++it)
            EXPECT_EQ(it->remainingMs, 1000LL * (it->total - it->answered))
                << it->answered << " of " << it->total;
    }
}

}  // namespace
}  // namespace sonalyx::test
