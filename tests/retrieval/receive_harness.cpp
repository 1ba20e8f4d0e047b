#include "receive_harness.h"

#include <gtest/gtest.h>

#include "emulator/emulator_options.h"
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
    receiver.parameters.configCode = 5;
    receiver.parameters.memoryCount = 2;
    receiver.infoA = 0;
    link.setResponder([this](const std::string& command) {
        if (auto it = scripted.find(command); it != scripted.end() && !it->second.empty()) {
            Bytes bytes = it->second.front();
            it->second.pop_front();
            return bytes;
        }
        if (!emulator)
            emulator.emplace(receiver);
        const std::string line = command + "\r";
        return emulator->feed({line.begin(), line.end()}).bytes;
    });
    observer.link = &link;
}

bool ReceiveHarness::playReceiver(const std::vector<std::string>& arguments) {
    std::string error;
    const auto options = emulator::EmulatorOptions::parse(arguments, error);
    EXPECT_TRUE(options) << error;
    if (options)
        receiver = options->profile;
    return options.has_value();
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

Bytes replyOfLength(int length) {
    Bytes bytes = {0, static_cast<std::uint8_t>(((length >> 8) & 0x7F) | 0x80),
                   static_cast<std::uint8_t>(length & 0xFF)};
    bytes.resize(bytes.size() + static_cast<size_t>(length), 0x11);
    return bytes;
}

std::vector<std::string> stampedLines(const ReceiveResult& result) {
    std::vector<std::string> lines = result.lines;
    EXPECT_TRUE(stampDate(lines, formatDateStamp(2009, 5, 17, 14, 3)));
    return lines;
}

}  // namespace sonalyx::test
