// Drives the receive engine through a line that answers each command with fuzzer bytes
// (headers, lengths, bodies, silence) on a fake clock. Whatever the receiver says, the run
// must end within a bounded number of ticks, either with text that loads as a document or
// with one of the program's failure messages and no text at all.
#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include "document/document_file.h"
#include "retrieval/date_stamp.h"
#include "retrieval/receive_engine.h"
#include "round_trip_properties.h"

namespace {

using namespace sonalyx;

[[noreturn]] void fail(const char* what) {
    std::fprintf(stderr, "receive run: %s\n", what);
    __builtin_trap();
}

class FuzzedMessenger : public Messenger {
  public:
    Answer show(const std::string& text, const std::string&, MessageMode) override {
        texts.push_back(text);
        return Answer::Ok;
    }
    std::vector<std::string> texts;
};

// A receiver we do not control: each command's reply is a run of fuzzer bytes that arrives
// over the next ticks in pieces of fuzzer-chosen size; an exhausted input is a silent line.
// The link fails the way the serial port does, telling the user first: a reopened port that
// another program took, a send that does not go out, a read that fails (a cable pulled) or
// hands over fewer bytes than were waiting, and a driver that holds bytes back for a tick.
class FuzzedLink : public SerialLink {
  public:
    FuzzedLink(FuzzedDataProvider& in, Messenger& messenger) : in_(in), messenger_(messenger) {}

    bool open(const std::string& portName, bool) override {
        if (opened_ && in_.remaining_bytes() > 0 && in_.ConsumeIntegral<std::uint8_t>() == 0xFF) {
            messenger_.show("Cannot open the serial port(" + portName + ").", "", MessageMode::Ok);
            return false;
        }
        opened_ = true;
        open_ = true;
        inFlight_.clear();
        waiting_.clear();
        return true;
    }
    bool send(const std::vector<std::uint8_t>&) override {
        if (!open_)
            fail("a command was sent on a closed port");
        if (in_.remaining_bytes() > 0 && in_.ConsumeIntegral<std::uint8_t>() == 0xFF) {
            messenger_.show("Send failed.", "", MessageMode::Ok);
            return false;
        }
        const auto reply =
            in_.ConsumeBytes<std::uint8_t>(in_.ConsumeIntegralInRange<std::size_t>(0, 2100));
        inFlight_.insert(inFlight_.end(), reply.begin(), reply.end());
        return true;
    }
    bool receive(std::size_t count, std::vector<std::uint8_t>& out) override {
        if (!open_)
            fail("a reply was read on a closed port");
        out.clear();
        switch (in_.remaining_bytes() > 0 ? in_.ConsumeIntegral<std::uint8_t>() : 0) {
            case 0xFF:  // the line went away
            case 0xFE:  // the driver handed over fewer bytes than it said were waiting
                messenger_.show("Receive failed.", "", MessageMode::Ok);
                return false;
            case 0xFD:  // nothing handed over yet, whatever is waiting
                return true;
            default:
                break;
        }
        if (waiting_.size() < count)
            return true;
        out.assign(waiting_.begin(), waiting_.begin() + static_cast<long>(count));
        waiting_.erase(waiting_.begin(), waiting_.begin() + static_cast<long>(count));
        return true;
    }
    void close() override { open_ = false; }

    // A tick's worth of time: some of the reply in flight reaches the input queue.
    void deliver() {
        const std::size_t all = inFlight_.size();
        const std::size_t count =
            in_.remaining_bytes() == 0 ? all : std::min(all, in_.ConsumeIntegral<std::size_t>());
        waiting_.insert(waiting_.end(), inFlight_.begin(),
                        inFlight_.begin() + static_cast<long>(count));
        inFlight_.erase(inFlight_.begin(), inFlight_.begin() + static_cast<long>(count));
    }
    bool isOpen() const { return open_; }

  private:
    FuzzedDataProvider& in_;
    Messenger& messenger_;
    std::deque<std::uint8_t> inFlight_;
    std::deque<std::uint8_t> waiting_;
    bool opened_ = false;
    bool open_ = false;
};

class FakeTicker : public Ticker {
  public:
    void arm(int newTag, int) override {
        armed = true;
        tag = newTag;
    }
    void disarm() override { armed = false; }
    bool armed = false;
    int tag = 0;
};

class Observer : public ReceiveObserver {
  public:
    void progress(int percent) override {
        if (percent < 0 || percent > 100)
            fail("progress out of 0..100");
    }
    void commandSent(const std::string&) override {}
    void finished(const ReceiveResult& finished) override {
        ++finishCount;
        result = finished;
    }
    int finishCount = 0;
    ReceiveResult result;
};

// The most ticks a run may take on an input of this size. Every read that completes takes at
// least one byte the input delivered, and at most ten empty polls pass before the next one or
// a time-out; every command sent while input remains takes a byte of it. A run that needs more
// ticks than that is going round in circles.
long mostTicks(std::size_t inputSize) {
    return 2000 + 24 * static_cast<long>(inputSize);
}

constexpr std::array<std::string_view, 7> kFailureMessages = {
    "Command error occurred. Please try again.",
    "Command error occurred. Please try again.(Illegal data size)",
    "Command error occurred. Please try again.(Too long data)",
    "Timeout occurred.",
    "Send failed.",
    "Receive failed.",
    "Cannot open the serial port(COM1).",
};

ReceiveOptions optionsFrom(std::uint8_t choice) {
    ReceiveOptions options;
    options.portName = "COM1";
    options.reverb = choice & 1;
    options.groupDelay = choice & 2;
    options.parameters = choice & 4;
    options.parametersOnly = choice & 8;
    if (!options.reverb && !options.groupDelay && !options.parameters)
        options.reverb = true;
    options.tickMs = 10;
    options.reopenPauseMs = 30;
    return options;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    const ReceiveOptions options = optionsFrom(in.ConsumeIntegral<std::uint8_t>());
    FuzzedMessenger messenger;
    FuzzedLink link(in, messenger);
    FakeTicker ticker;
    Observer observer;
    ReceiveEngine engine(link, ticker, messenger, observer);
    if (!engine.start(options))
        fail("the engine refused a run on a port that opens");
    const long tickBound = mostTicks(size);
    long ticks = 0;
    while (engine.isRunning()) {
        if (!ticker.armed)
            fail("running with no tick armed");
        if (++ticks > tickBound)
            fail("no end within the tick bound");
        ticker.armed = false;
        if (ticker.tag == ReceiveEngine::kReplyPollTag)
            link.deliver();
        engine.onTick(ticker.tag);
    }
    if (observer.finishCount != 1)
        fail("finished() was not called exactly once");
    if (link.isOpen())
        fail("the port stayed open after the run");
    const ReceiveResult& result = observer.result;
    if (!result.success) {
        if (!result.lines.empty())
            fail("a failed run kept text");
        if (messenger.texts.size() != 1 ||
            std::find(kFailureMessages.begin(), kFailureMessages.end(), messenger.texts[0]) ==
                kFailureMessages.end())
            fail("a failed run did not end with one failure message");
        return 0;
    }
    if (!messenger.texts.empty())
        fail("a run that succeeded showed a message");
    std::vector<std::string> lines = result.lines;
    if (!stampDate(lines, formatDateStamp(2009, 5, 17, 14, 3)))
        fail("the text has no date line to stamp");
    const fuzzing::RoundTripVerdict verdict = fuzzing::checkRoundTrip(joinLines(lines));
    if (!verdict.loaded)
        fail("the received text does not load as a document");
    if (!verdict.problem.empty())
        fail(verdict.problem.c_str());
    return 0;
}
