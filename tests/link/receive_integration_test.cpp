// Whole receive runs: the engine on the real QSerialPort link, talking to the receiver
// emulator over a pseudo-terminal with a short tick. Successful runs are compared with golden
// documents (as Save would write them); failed runs must end with their message and no text.
#include <gtest/gtest.h>
#include <atomic>
#include <thread>

#include "document/document_loader.h"
#include "document/document_writer.h"
#include "emulator/emulator_options.h"
#include "emulator/pty_server.h"
#include "link/receive_runner.h"
#include "recording_messenger.h"
#include "retrieval/date_stamp.h"
#include "support/golden.h"
#include "test_application.h"

namespace sonalyx {
namespace {

using Lines = std::vector<std::string>;

struct Scenario {
    Scenario(std::string name, std::vector<std::string> emulatorArguments, std::string kinds,
             std::string golden = {}, std::string message = {})
        : name(std::move(name)),
          emulatorArguments(std::move(emulatorArguments)),
          kinds(std::move(kinds)),
          golden(std::move(golden)),
          message(std::move(message)) {}

    std::string name;
    std::vector<std::string> emulatorArguments;
    std::string kinds;    // "all", "parameters-only", or the kinds as letters r, g, p
    std::string golden;   // file under tests/data/link, for a run that succeeds
    std::string message;  // the one message of a run that fails
};

std::ostream& operator<<(std::ostream& out, const Scenario& scenario) {
    return out << scenario.name;
}

ReceiveOptions optionsFor(const Scenario& scenario, const std::string& port) {
    ReceiveOptions options;
    options.portName = port;
    options.tickMs = 20;
    options.reopenPauseMs = 40;
    if (scenario.kinds == "parameters-only") {
        options.parametersOnly = true;
    } else if (scenario.kinds != "all") {
        options.reverb = scenario.kinds.find('r') != std::string::npos;
        options.groupDelay = scenario.kinds.find('g') != std::string::npos;
        options.parameters = scenario.kinds.find('p') != std::string::npos;
    }
    return options;
}

// The emulator on its own thread, for as long as the object lives.
class ServedEmulator {
  public:
    explicit ServedEmulator(const std::vector<std::string>& arguments) {
        std::string error;
        const auto options = emulator::EmulatorOptions::parse(arguments, error);
        EXPECT_TRUE(options.has_value()) << error;
        EXPECT_TRUE(server_.open(error)) << error;
        emulator_.emplace(options ? options->profile : emulator::ReceiverProfile{});
        thread_ = std::thread([this] { server_.serve(*emulator_, false, false, stop_); });
    }
    ~ServedEmulator() {
        stop_.store(true);
        thread_.join();
    }
    const std::string& portPath() const { return server_.portPath(); }

  private:
    emulator::PtyServer server_;
    std::optional<emulator::ReceiverEmulator> emulator_;
    std::atomic<bool> stop_{false};
    std::thread thread_;
};

struct RunOutcome {
    ReceiveResult result;
    Lines messages;
    Lines commands;
};

RunOutcome receiveFrom(const Scenario& scenario) {
    test::ensureApplication();
    ServedEmulator emulator(scenario.emulatorArguments);
    test::RecordingMessenger messenger;
    SerialPortLink link(messenger);
    ReceiveRunner runner(link, messenger);
    RunOutcome outcome;
    outcome.result = runner.run(optionsFor(scenario, emulator.portPath()));
    outcome.messages = messenger.messages;
    outcome.commands = runner.commands();
    return outcome;
}

// The received text as the user would save it, with a fixed date.
Lines savedDocument(Lines lines) {
    EXPECT_TRUE(stampDate(lines, "2024.03.09 14:05"));
    MeasurementDocument doc;
    EXPECT_TRUE(DocumentLoader::load(doc, lines, "New Data", nullptr));
    Lines saved;
    DocumentWriter::write(doc, saved);
    return saved;
}

class ReceiveFromEmulator : public ::testing::TestWithParam<Scenario> {};

TEST_P(ReceiveFromEmulator, EndsAsExpected) {
    const Scenario& scenario = GetParam();
    const RunOutcome outcome = receiveFrom(scenario);
    if (scenario.golden.empty()) {
        EXPECT_FALSE(outcome.result.success);
        EXPECT_TRUE(outcome.result.lines.empty());
        EXPECT_EQ(outcome.messages, Lines({scenario.message}));
        return;
    }
    ASSERT_TRUE(outcome.result.success) << ::testing::PrintToString(outcome.messages);
    EXPECT_TRUE(outcome.messages.empty());
    test::expectMatchesGolden(test::testDataPath("link/" + scenario.golden),
                              savedDocument(outcome.result.lines));
}

const std::string kCommandError = "Command error occurred. Please try again.";

INSTANTIATE_TEST_SUITE_P(
    Configurations, ReceiveFromEmulator,
    ::testing::Values(
        Scenario{"Config5", {"--config", "5"}, "all", "config5.txt"},
        Scenario{"Config6", {"--config", "6"}, "all", "config6.txt"},
        Scenario{"Config7", {"--config", "7"}, "all", "config7.txt"},
        Scenario{"Config9", {"--config", "9"}, "all", "config9.txt"},
        Scenario{"Config10", {"--config", "10"}, "all", "config10.txt"},
        Scenario{"Config11", {"--config", "11", "--subwoofer-mode", "1"}, "all", "config11.txt"},
        Scenario{"Config10WithoutAfterData", {"--no-after"}, "all", "config10_no_after.txt"},
        Scenario{"Config7WithoutAfterData",
                 {"--config", "7", "--no-after"},
                 "all",
                 "config7_no_after.txt"},
        Scenario{"OldReceiver", {"--old"}, "all", "old_receiver.txt"},
        Scenario{"SixBandsSelector1", {"--bands", "1"}, "all", "config10_bands1.txt"},
        Scenario{
            "SixBandsSelector2", {"--config", "9", "--bands", "2"}, "all", "config9_bands2.txt"},
        Scenario{"ShortInformation",
                 {"--config", "6", "--info-length", "2"},
                 "all",
                 "config6_info2.txt"},
        Scenario{"ReverbOnly", {}, "r", "config10_reverb.txt"},
        Scenario{"GroupDelayAndParameters",
                 {"--config", "5"},
                 "gp",
                 "config5_groupdelay_parameters.txt"},
        Scenario{"ParametersOnly", {}, "parameters-only", "config10_parameters_only.txt"}),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Parameters, ReceiveFromEmulator,
    ::testing::Values(
        Scenario{
            "Config5Fallback", {"--config", "5", "--refuse", "EQALL"}, "p", "config5_fallback.txt"},
        Scenario{
            "Config9Fallback", {"--config", "9", "--refuse", "EQALL"}, "p", "config9_fallback.txt"},
        Scenario{"Config10Fallback",
                 {"--config", "10", "--refuse", "EQALL"},
                 "p",
                 "config10_fallback.txt"},
        Scenario{"Config11Fallback",
                 {"--config", "11", "--refuse", "EQALL"},
                 "p",
                 "config11_fallback.txt"},
        Scenario{"FeetAndInches",
                 {"--config", "9", "--distance-unit", "3", "--distance-one-byte"},
                 "p",
                 "config9_inches_one_byte.txt"},
        Scenario{"HundredthsOfAFoot",
                 {"--distance-unit", "1", "--memories", "3"},
                 "p",
                 "config10_feet_three_memories.txt"},
        Scenario{"TenthsOfAMillimetre",
                 {"--config", "11", "--distance-unit", "2", "--level-length", "14"},
                 "p",
                 "config11_millimetres.txt"},
        Scenario{"ShortSpeakerSetting",
                 {"--config", "5", "--sp-length", "5", "--xcurve", "7", "--crossover", "9"},
                 "p",
                 "config5_short_speaker_setting.txt"}),
    [](const auto& info) { return info.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Faults, ReceiveFromEmulator,
    ::testing::Values(
        Scenario{"SecondTryOfARefusedCommand", {"--refuse", "RVCT:2,FBS:1"}, "all", "config10.txt"},
        Scenario{"BadProbeOnce", {"--bad-probe", "once"}, "all", "config10.txt"},
        Scenario{"NotMeasured", {"--invalid", "RVFL,RACT,FBS"}, "all", "config10_invalid.txt"},
        Scenario{"GroupDelayRefused", {"--refuse", "FBTS"}, "all", "config10_no_top_delay.txt"},
        Scenario{"Silence", {"--silent"}, "all", "", "Timeout occurred."},
        Scenario{"BadProbeAlways",
                 {"--bad-probe", "always"},
                 "all",
                 "",
                 kCommandError + "(Illegal data size)"},
        Scenario{"BodyOf2049Bytes",
                 {"--oversize", "RVCT"},
                 "all",
                 "",
                 kCommandError + "(Too long data)"},
        Scenario{"BadInformationLength", {"--bad-info-length"}, "all", "", kCommandError},
        Scenario{"ReverbRefused", {"--refuse", "RVSR"}, "all", "", kCommandError},
        Scenario{"SystemInfoRefused", {"--refuse", "SI"}, "p", "", kCommandError},
        Scenario{"CutOffInReverb", {"--cut-off", "RASR"}, "all", "", "Receive failed."},
        Scenario{"CutOffInList", {"--cut-off", "EQALL"}, "all", "", "Receive failed."}),
    [](const auto& info) { return info.param.name; });

TEST(ReceiveFromEmulatorCommands, ARefusedAfterProbeStopsAllAfterQueries) {
    const RunOutcome outcome = receiveFrom({"NoAfter", {"--config", "5", "--no-after"}, "r"});
    ASSERT_TRUE(outcome.result.success);
    EXPECT_EQ(outcome.commands, Lines({"?RVFL", "?EI", "?RAFL", "?RAFL", "?RAFL", "?RVCT", "?RVFR",
                                       "?RVSR", "?RVSL"}));
}

TEST(ReceiveFromEmulatorCommands, ABadProbeIsAskedAgainAfterReopening) {
    const RunOutcome outcome =
        receiveFrom({"BadProbe", {"--config", "5", "--bad-probe", "once"}, "g"});
    ASSERT_TRUE(outcome.result.success);
    EXPECT_EQ(outcome.commands, Lines({"?RVFL", "?RVFL", "?EI", "?FBF", "?FBS", "?FBC", "?FBB"}));
}

TEST(ReceiveFromEmulatorCommands, AMissingPortIsReportedByName) {
    test::ensureApplication();
    test::RecordingMessenger messenger;
    SerialPortLink link(messenger);
    ReceiveRunner runner(link, messenger);
    ReceiveOptions options;
    options.portName = "/dev/sonalyx-no-such-port";
    EXPECT_FALSE(runner.run(options).success);
    EXPECT_EQ(messenger.messages,
              Lines({"Cannot open the serial port(/dev/sonalyx-no-such-port)."}));
    EXPECT_TRUE(runner.commands().empty());
}

}  // namespace
}  // namespace sonalyx
