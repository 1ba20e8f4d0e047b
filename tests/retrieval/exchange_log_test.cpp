// A run whose exchange log cannot be written goes exactly as one without a log.
#include <gtest/gtest.h>

#include "receive_harness.h"
#include "retrieval/exchange_log.h"
#include "retrieval/logging_serial_link.h"

namespace sonalyx::test {
namespace {

// A run on the fake line through the logging link.
struct LoggedRun {
    LoggedRun() : loggedLink(link, log), engine(loggedLink, ticker, messenger, observer) {
        link.setResponder([this](const std::string& command) { return receiver.reply(command); });
    }

    void run(const std::string& logPath) {
        log.start(logPath, "2009-05-17 14:03:00");
        ReceiveOptions options;
        options.portName = "COM1";
        log.runOptions(options);
        ASSERT_TRUE(engine.start(options));
        while (engine.isRunning() && ticker.armed) {
            link.deliver();
            engine.onTick(ticker.tag);
        }
        log.ended(observer.result);
    }

    FakeReceiver receiver;
    FakeSerialLink link;
    FakeTicker ticker;
    ExchangeLog log;
    LoggingSerialLink loggedLink;
    RecordingMessenger messenger;
    RecordingObserver observer;
    ReceiveEngine engine;
};

TEST(ExchangeLog, ALogThatCannotBeWrittenChangesNothing) {
    LoggedRun unlogged;
    unlogged.run("");
    ASSERT_TRUE(unlogged.observer.result.success);
    // A folder that is not there, and a disk that is full from the first byte.
    for (const char* path : {"/sonalyx-no-such-folder/run.log", "/dev/full"}) {
        SCOPED_TRACE(path);
        LoggedRun run;
        run.run(path);
        EXPECT_FALSE(run.log.writing());
        EXPECT_TRUE(run.observer.result.success);
        EXPECT_EQ(run.observer.result.lines, unlogged.observer.result.lines);
        EXPECT_TRUE(run.messenger.texts().empty());
    }
}

}  // namespace
}  // namespace sonalyx::test
