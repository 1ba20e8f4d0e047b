// The exchange log of a run on the fake line: what a failed run leaves behind, and that a log
// which cannot be written changes nothing about the run.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "receive_harness.h"
#include "retrieval/exchange_log.h"
#include "retrieval/log_naming_messenger.h"
#include "retrieval/logging_serial_link.h"

namespace sonalyx::test {
namespace {

struct Message {
    std::string text;
    std::string secondLine;
};

class TwoLineMessenger : public Messenger {
  public:
    Answer show(const std::string& text, const std::string& secondLine, MessageMode) override {
        messages.push_back({text, secondLine});
        return Answer::Ok;
    }
    std::vector<Message> messages;
};

// A run on the fake line through the logging link, the log timed by the fake clock.
struct LoggedRun {
    LoggedRun()
        : loggedLink(link, log), naming(messenger), engine(loggedLink, ticker, naming, observer) {
        link.setResponder([this](const std::string& command) { return receiver.reply(command); });
    }

    void run(const std::string& logPath) {
        if (log.start(logPath, "2009-05-17 14:03:00", [this] { return clockMs; }))
            naming.setLogPath(logPath);
        ReceiveOptions options;
        options.portName = "COM1";
        log.runOptions(options);
        ASSERT_TRUE(engine.start(options));
        while (engine.isRunning() && ticker.armed) {
            clockMs += ticker.intervalMs;
            if (ticker.tag == ReceiveEngine::kReplyPollTag)
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
    TwoLineMessenger messenger;
    LogNamingMessenger naming;
    RecordingObserver observer;
    ReceiveEngine engine;
    long long clockMs = 0;
};

std::vector<std::string> readLines(const std::string& path) {
    std::ifstream in(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);)
        lines.push_back(line);
    return lines;
}

std::string tempLogPath(const std::string& name) {
    return (std::filesystem::temp_directory_path() /
            ("sonalyx-" + std::to_string(::getpid()) + "-" + name))
        .string();
}

TEST(ExchangeLog, AFailedRunNamesTheFailingStepAndTheMessageNamesTheLog) {
    const std::string path = tempLogPath("failed.log");
    LoggedRun run;
    run.receiver.silent.insert("?DLALL");
    run.run(path);
    ASSERT_EQ(run.messenger.messages.size(), 1u);
    EXPECT_EQ(run.messenger.messages[0].text, "Timeout occurred.");
    EXPECT_EQ(run.messenger.messages[0].secondLine, "Exchange log: " + path);

    const auto lines = readLines(path);
    std::filesystem::remove(path);
    ASSERT_GT(lines.size(), 20u);
    EXPECT_EQ(lines[0], "Sonalyx receive log");
    EXPECT_EQ(lines[1], "Started: 2009-05-17 14:03:00");
    EXPECT_EQ(lines[2], "Port: COM1");
    EXPECT_EQ(lines.back(),
              "   29000  end      failed at parameters, Parameters: distances (?DLALL): "
              "Timeout occurred.");
    // The command as it went out (the eighteenth, one tick each), and the ten polls that found
    // nothing before the eleventh gave up.
    const auto sent = std::find(lines.begin(), lines.end(),
                                "   18000  step     parameters: Parameters: distances");
    ASSERT_NE(sent, lines.end());
    EXPECT_EQ(*(sent + 1), "   18000  send     7 bytes");
    EXPECT_EQ(*(sent + 2), std::string(19, ' ') + "0000  3f 44 4c 41 4c 4c 0d" +
                               std::string(29, ' ') + "|?DLALL.|");
    EXPECT_EQ(std::count_if(sent, lines.end(),
                            [](const std::string& l) { return l.find("  wait ") != l.npos; }),
              10);
    EXPECT_EQ(*(lines.end() - 2), "   29000  close");
}

TEST(ExchangeLog, ALogThatCannotBeWrittenChangesNothing) {
    LoggedRun unlogged;
    unlogged.run("");
    ASSERT_TRUE(unlogged.observer.result.success);
    for (const std::string& path :
         {tempLogPath("no-such-folder/run.log"), std::string("/dev/full")}) {
        SCOPED_TRACE(path);
        LoggedRun run;
        run.run(path);
        EXPECT_FALSE(run.log.writing());
        EXPECT_TRUE(run.observer.result.success);
        EXPECT_EQ(run.observer.result.lines, unlogged.observer.result.lines);
        EXPECT_TRUE(run.messenger.messages.empty());
    }
}

}  // namespace
}  // namespace sonalyx::test
