#include "emulator/receiver_emulator.h"

#include <gtest/gtest.h>

#include "emulator/emulator_options.h"
#include "emulator/measurement_replies.h"
#include "support/golden.h"

namespace sonalyx::emulator {
namespace {

using test::words;

using Bytes = std::vector<std::uint8_t>;

Bytes command(const std::string& text) {
    Bytes bytes(text.begin(), text.end());
    bytes.push_back(0x0D);
    return bytes;
}

Bytes ask(ReceiverEmulator& emulator, const std::string& text) {
    return emulator.feed(command(text)).bytes;
}

// A reply in short: "E04" for the error reply, "" for none, otherwise the header as
// "attribute/length" with "+" when the extended bit is set, and "!" when the bytes do not
// hold exactly one frame.
std::string summary(const Bytes& reply) {
    if (reply == Bytes{'E', '0', '4', 0x0D, 0x0A})
        return "E04";
    if (reply.size() < 3)
        return reply.empty() ? "" : "!";
    const std::size_t length = static_cast<std::size_t>((reply[1] & 0x7F) << 8 | reply[2]);
    return std::to_string(reply[0]) + "/" + std::to_string(length) +
           ((reply[1] & 0x80) ? "+" : "") + (reply.size() == 3 + length ? "" : "!");
}

// One receiver, as the emulator program's arguments make it, and the replies it gives to a
// sequence of commands, in short.
struct Exchange {
    const char* name;
    const char* arguments;
    std::vector<std::pair<std::string, std::string>> replies;  // command, summary
};

void PrintTo(const Exchange& e, std::ostream* os) {
    *os << e.name;
}

// Faults whose effect on a run shows over the line (a probe of 500 bytes, once or always, a body
// of 2049 bytes, an information of 3 bytes, silence) are in tests/link; the replies of every
// configuration, band set and reverb type are in the received-text goldens.
const Exchange kExchanges[] = {
    {"OldReceiver", "--old", {{"?EI", "E04"}, {"?RVSPBR", "0/576"}}},
    {"OutsideTheConfiguration",
     "--config 5",
     {{"?RVSBL", "E04"},
      {"?FBX", "E04"},
      {"?HELLO", "E04"},
      {"?FBB", "243/131+"},  // no surround back: marked not measured
      {"?FBS", "1/131+"}}},
    {"Refusals",
     "--refuse RVCT:2,?SI --no-after",
     {{"?RVCT", "E04"},
      {"?RVCT", "E04"},
      {"?RVCT", "0/576+"},
      {"?SI", "E04"},
      {"?SI", "E04"},
      {"?SI", "E04"},
      {"?SI", "E04"},
      {"?RAFL", "E04"},
      {"?RASL", "E04"}}},
    {"OversizeAndInvalid",
     "--oversize RVCT --invalid FBS,RVFR",
     {{"?FBS", "241/131+"}, {"?RVFR", "240/576+"}}},
};

class EmulatorExchange : public ::testing::TestWithParam<Exchange> {};

TEST_P(EmulatorExchange, RepliesInTurn) {
    std::string error;
    const auto options = EmulatorOptions::parse(words(GetParam().arguments), error);
    ASSERT_TRUE(options) << error;
    ReceiverEmulator emulator(options->profile);
    for (const auto& [asked, expected] : GetParam().replies)
        EXPECT_EQ(summary(ask(emulator, asked)), expected) << asked;
}

INSTANTIATE_TEST_SUITE_P(Profiles, EmulatorExchange, ::testing::ValuesIn(kExchanges),
                         [](const auto& info) { return std::string(info.param.name); });

// What no exchange shows: the line, the pace, help, and the faults named with their "?".
TEST(EmulatorOptions, ReadsTheLineAndThePace) {
    std::string error;
    const auto defaults = EmulatorOptions::parse({}, error);
    ASSERT_TRUE(defaults) << error;
    EXPECT_EQ(defaults->profile.parameters.configCode, 10);
    EXPECT_FALSE(defaults->pace);
    EXPECT_TRUE(defaults->linkPath.empty());
    const auto options = EmulatorOptions::parse(
        words("--pace --link /tmp/rx --refuse RAFL,?EQALL:2 --cut-off ?STALL"), error);
    ASSERT_TRUE(options) << error;
    EXPECT_TRUE(options->pace);
    EXPECT_EQ(options->linkPath, "/tmp/rx");
    EXPECT_EQ(options->profile.refusals, (std::map<std::string, int>{{"RAFL", -1}, {"EQALL", 2}}));
    EXPECT_EQ(options->profile.cutOffCommand, "STALL");
    EXPECT_TRUE(EmulatorOptions::parse({"--help"}, error)->help);
    const std::string usage = EmulatorOptions::usage();
    for (const char* option : {"--refuse", "--bad-probe", "--oversize", "--invalid", "--cut-off"})
        EXPECT_NE(usage.find(option), std::string::npos) << option;
}

TEST(EmulatorOptions, RefusesWhatItDoesNotKnow) {
    const struct {
        const char* arguments;
        const char* error;  // "": any message
    } rows[] = {
        {"--config 8", "bad value for --config: 8"},
        {"--bands x", ""},
        {"--sp-length 7", ""},
        {"--bad-probe twice", ""},
        {"--refuse RVCT:0", ""},
        {"--link", "missing value for --link"},
        {"--colour", "unknown option: --colour"},
        {"--pace=1", ""},
    };
    for (const auto& row : rows) {
        std::string error;
        EXPECT_FALSE(EmulatorOptions::parse(words(row.arguments), error)) << row.arguments;
        EXPECT_FALSE(error.empty()) << row.arguments;
        if (*row.error != 0) {
            EXPECT_EQ(error, row.error);
        }
    }
}

// The length and bytes of "?EI" for other profiles show in the received-text goldens.
TEST(ReceiverEmulator, CommandsMayArriveInPieces) {
    ReceiverEmulator emulator(ReceiverProfile{});
    EXPECT_TRUE(emulator.feed({'?', 'E'}).bytes.empty());
    EXPECT_EQ(emulator.feed({'I', 0x0D}).bytes, Bytes({0x00, 0x00, 0x04, 10, 0, 2, 0}));
    EXPECT_EQ(emulator.commands(), std::vector<std::string>({"EI"}));
}

// List framing, cut-off replies and the synthetic curves show in the received-text goldens and
// the runs over a line (tests/retrieval, tests/link).

}  // namespace
}  // namespace sonalyx::emulator
