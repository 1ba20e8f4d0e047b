#include "receive_harness.h"

#include <gtest/gtest.h>

#include "retrieval/date_stamp.h"

namespace sonalyx::test {

void FakeTicker::arm(int newTag, int newIntervalMs) {
    armed = true;
    tag = newTag;
    intervalMs = newIntervalMs;
    armedIntervals.push_back(newIntervalMs);
}

void FakeTicker::disarm() {
    armed = false;
}

void RecordingObserver::finished(const ReceiveResult& finishedResult) {
    ++finishCount;
    result = finishedResult;
    portClosedAtFinish = link && !link->isOpen();
}

ReceiveHarness::ReceiveHarness() : engine(loggedLink, ticker, messenger, observer) {
    link.setResponder([this](const std::string& command) { return receiver.reply(command); });
    observer.link = &link;
}

bool ReceiveHarness::start(ReceiveOptions options) {
    if (options.portName.empty())
        options.portName = "COM1";
    return engine.start(options);
}

bool ReceiveHarness::tick() {
    if (!ticker.armed)
        return false;
    clockMs += ticker.intervalMs;
    ++ticks;
    const int tag = ticker.tag;
    if (tag == ReceiveEngine::kReplyPollTag)
        link.deliver();
    else
        reopenTimes.push_back(clockMs);
    engine.onTick(tag);
    return true;
}

void ReceiveHarness::runToEnd(int maxTicks) {
    for (int i = 0; i < maxTicks && engine.isRunning(); ++i) {
        if (!tick()) {
            ADD_FAILURE() << "the engine is running but has no tick armed";
            return;
        }
    }
    EXPECT_FALSE(engine.isRunning()) << "the run did not end within " << maxTicks << " ticks";
}

std::vector<std::string> stampedLines(const ReceiveResult& result) {
    std::vector<std::string> lines = result.lines;
    EXPECT_TRUE(stampDate(lines, formatDateStamp(2009, 5, 17, 14, 3)));
    return lines;
}

}  // namespace sonalyx::test
