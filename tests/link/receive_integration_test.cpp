// Whole receive runs over the real QSerialPort link, against the receiver emulator on a
// pseudo-terminal with a short tick. A run that succeeds must bring the same text as the
// in-process run of its scenario (the golden under tests/data/receive); a run that fails must
// end with its one message and no text.
#include <gtest/gtest.h>

#include <algorithm>

#include "document/document_loader.h"
#include "document/document_writer.h"
#include "link/receive_runner.h"
#include "link/serial_port_link.h"
#include "retrieval/date_stamp.h"
#include "support/emulated_receiver.h"
#include "support/golden.h"
#include "support/receive_scenarios.h"
#include "support/recording_messenger.h"

namespace sonalyx {
namespace {

using Lines = std::vector<std::string>;

struct LineRun {
    std::string name;
    std::vector<std::string> emulatorArguments;
    std::string golden = {};   // the scenario whose text the run brings; "" for a run that fails
    std::string message = {};  // the one message of a run that fails
    std::string kinds = "all";
};

void PrintTo(const LineRun& run, std::ostream* os) {
    *os << run.name;
}

struct RunOutcome {
    ReceiveResult result;
    Lines messages;
    Lines commands;
};

RunOutcome receiveOverTheLine(const std::vector<std::string>& emulatorArguments,
                              const std::string& kinds, const std::string& port = {}) {
    test::EmulatedReceiver emulator(emulatorArguments);
    test::RecordingMessenger messenger;
    SerialPortLink link(messenger);
    ReceiveRunner runner(link, messenger);
    ReceiveOptions options = test::receiveOptions(kinds);
    options.portName = port.empty() ? emulator.portPath() : port;
    options.tickMs = 20;
    options.reopenPauseMs = 40;
    RunOutcome outcome;
    outcome.result = runner.run(options);
    outcome.messages = messenger.texts();
    outcome.commands = runner.commands();
    return outcome;
}

const std::string kCommandError = "Command error occurred. Please try again.";

const LineRun kLineRuns[] = {
    {"Config10", {}, "config10"},
    {"Config5", {"--config", "5", "--reverb-type", "4"}, "config5"},
    {"OldReceiver", {"--old"}, "old_receiver"},
    {"ParametersOnly", {}, "config10_parameters_only", "", "parameters-only"},
    {"Fallback",
     test::words(
         "--config 9 --refuse EQALL --sp-length 6 --bands 1 --subwoofer-mode 1 --subwoofer-code 0 "
         "--crossover 3 --distance-unit 1 --xcurve 9"),
     "config9_fallback", "", "p"},
    {"SecondTryOfARefusedCommand", {"--refuse", "RVCT:2,FBS:1"}, "config10"},
    {"BadProbeOnce", {"--bad-probe", "once"}, "config10"},
    {"Silence", {"--silent"}, "", "Timeout occurred."},
    {"BadProbeAlways", {"--bad-probe", "always"}, "", kCommandError + "(Illegal data size)"},
    {"BodyOf2049Bytes", {"--oversize", "RVCT"}, "", kCommandError + "(Too long data)"},
    {"BadInformationLength", {"--bad-info-length"}, "", kCommandError},
    {"ReverbRefused", {"--refuse", "RVSR"}, "", kCommandError},
    {"SystemInfoRefused", {"--refuse", "SI"}, "", kCommandError, "p"},
    {"CutOffInReverb", {"--cut-off", "RASR"}, "", "Receive failed."},
    {"CutOffInList", {"--cut-off", "EQALL"}, "", "Receive failed."},
};

class ReceiveOverTheLine : public ::testing::TestWithParam<LineRun> {};

TEST_P(ReceiveOverTheLine, EndsAsExpected) {
    const LineRun& run = GetParam();
    const RunOutcome outcome = receiveOverTheLine(run.emulatorArguments, run.kinds);
    if (run.golden.empty()) {
        EXPECT_FALSE(outcome.result.success);
        EXPECT_TRUE(outcome.result.lines.empty());
        EXPECT_EQ(outcome.messages, Lines({run.message}));
        return;
    }
    ASSERT_TRUE(outcome.result.success) << ::testing::PrintToString(outcome.messages);
    EXPECT_TRUE(outcome.messages.empty());
    Lines lines = outcome.result.lines;
    ASSERT_TRUE(stampDate(lines, "2009.05.17 14:03"));
    test::expectMatchesGolden(test::testDataPath("receive/" + run.golden + ".txt"), lines);
}

INSTANTIATE_TEST_SUITE_P(Emulator, ReceiveOverTheLine, ::testing::ValuesIn(kLineRuns),
                         [](const auto& info) { return info.param.name; });

TEST(ReceiveOverTheLineCommands, AMissingPortIsReportedByName) {
    const RunOutcome outcome = receiveOverTheLine({}, "all", "/dev/sonalyx-no-such-port");
    EXPECT_FALSE(outcome.result.success);
    EXPECT_EQ(outcome.messages, Lines({"Cannot open the serial port(/dev/sonalyx-no-such-port)."}));
    EXPECT_TRUE(outcome.commands.empty());
}

// A received document saved as the program saves it: the loader and writer agree with what
// the receive side wrote.
TEST(ReceiveOverTheLineCommands, AFullRunSavesAsTheGoldenDocument) {
    const RunOutcome outcome = receiveOverTheLine({}, "all");
    ASSERT_TRUE(outcome.result.success);
    Lines lines = outcome.result.lines;
    ASSERT_TRUE(stampDate(lines, "2024.03.09 14:05"));
    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(doc, lines, "New Data", nullptr));
    Lines saved;
    DocumentWriter::write(doc, saved);
    test::expectMatchesGolden(test::testDataPath("link/config10.txt"), saved);
}

}  // namespace
}  // namespace sonalyx
