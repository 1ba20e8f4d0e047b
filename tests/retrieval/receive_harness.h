#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "document/messenger.h"
#include "emulator/receiver_emulator.h"
#include "fake_serial_link.h"
#include "retrieval/exchange_log.h"
#include "retrieval/logging_serial_link.h"
#include "retrieval/receive_engine.h"
#include "retrieval/ticker.h"
#include "support/recording_messenger.h"

namespace sonalyx::test {

using Bytes = std::vector<std::uint8_t>;

// The main window's timer on a fake clock: one pending tick, fired by the harness.
class FakeTicker : public Ticker {
  public:
    void arm(int tag, int intervalMs) override;
    void disarm() override;

    bool armed = false;
    int tag = 0;
    int intervalMs = 0;
    std::vector<int> armedIntervals;  // every arm call, in order
};

class RecordingObserver : public ReceiveObserver {
  public:
    void progress(int percent) override { progressValues.push_back(percent); }
    void commandSent(const std::string& command) override { sent.push_back(command); }
    void progressed(const ReceiveProgress& report) override { reports.push_back(report); }
    void finished(const ReceiveResult& result) override;

    std::vector<int> progressValues;
    std::vector<std::string> sent;
    std::vector<ReceiveProgress> reports;
    int finishCount = 0;
    ReceiveResult result;
    bool portClosedAtFinish = false;
    const FakeSerialLink* link = nullptr;
};

// A receiver on a fake line, an engine, and a clock that moves one tick at a time. The engine
// talks through the exchange log's link, which writes only once the test starts the log.
struct ReceiveHarness {
    ReceiveHarness();

    // Plays the receiver the emulator program's arguments make; false when they are wrong.
    bool playReceiver(const std::vector<std::string>& arguments);
    // Starts a run; true when the engine accepted it.
    bool start(ReceiveOptions options = {});
    // Fires the pending tick (delivering what has arrived first); false when none is armed.
    bool tick();
    // Ticks until the run ends; fails the test when the engine stops asking for ticks
    // while still running, or does not end within maxTicks.
    void runToEnd(int maxTicks = 5000);

    // The receiver emulator of this profile (configuration 5, two memories, reverb type 0
    // unless a test changes it before the first command) answers every command, except that
    // scripted raw replies ("?RVFL": ...) go out first, once each; an empty one is silence.
    emulator::ReceiverProfile receiver;
    std::map<std::string, std::deque<Bytes>> scripted;
    std::optional<emulator::ReceiverEmulator> emulator;

    FakeSerialLink link;
    ExchangeLog log;
    LoggingSerialLink loggedLink{link, log};
    FakeTicker ticker;
    RecordingMessenger messenger;
    RecordingObserver observer;
    ReceiveEngine engine;
    long long clockMs = 0;
    int ticks = 0;
    std::vector<long long> reopenTimes;  // clock at each reopen tick
};

// A header announcing `length` body bytes (extended receiver), and that many filler bytes.
Bytes replyOfLength(int length);

// A full run's text with a fixed date stamp, as the document side would receive it.
std::vector<std::string> stampedLines(const ReceiveResult& result);

}  // namespace sonalyx::test
