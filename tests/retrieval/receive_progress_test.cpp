// Where a run stands as the engine reports it, report by report, on the fake line and clock
// (one second a tick): commands answered out of the commands the run will send, the time left
// and the kind being fetched, then the percentages of the bar. Every received-text run checks
// the same reports against the rules (receive_document_test.cpp); these show them whole.
#include <gtest/gtest.h>

#include "receive_harness.h"
#include "support/golden.h"
#include "support/receive_scenarios.h"

namespace sonalyx::test {
namespace {

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

}  // namespace
}  // namespace sonalyx::test
