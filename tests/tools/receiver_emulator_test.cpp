#include "emulator/receiver_emulator.h"

#include <gtest/gtest.h>

#include <iterator>
#include <sstream>

#include "emulator/emulator_options.h"
#include "emulator/measurement_replies.h"

namespace sonalyx::emulator {
namespace {

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

std::vector<std::string> words(const std::string& text) {
    std::istringstream in(text);
    return {std::istream_iterator<std::string>(in), {}};
}

const Exchange kExchanges[] = {
    {"ExtendedProbe", "", {{"?RVFL", "0/576+"}, {"?EI", "0/4"}}},
    {"OldReceiver", "--old", {{"?RVFL", "0/576"}, {"?EI", "E04"}, {"?RVSPBR", "0/576"}}},
    {"SixBands", "--bands=1", {{"?RACT", "0/384+"}}},
    {"OutsideTheConfiguration",
     "--config 5",
     {{"?RVSBL", "E04"},
      {"?FBX", "E04"},
      {"?HELLO", "E04"},
      {"?FBB", "243/131+"},  // no surround back: marked not measured
      {"?FBS", "1/131+"}}},
    {"BadInformationLength", "--bad-info-length", {{"?EI", "0/3"}}},
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
    {"BadProbeOnce", "--bad-probe once", {{"?RVFL", "0/500+"}, {"?RVFL", "0/576+"}}},
    {"BadProbeAlways", "--bad-probe always", {{"?RVFL", "0/500+"}, {"?RVFL", "0/500+"}}},
    {"OversizeAndInvalid",
     "--oversize RVCT --invalid FBS,RVFR",
     {{"?RVCT", "0/2049+"}, {"?FBS", "241/131+"}, {"?RVFR", "240/576+"}}},
    {"Silent", "--silent", {{"?RVFL", ""}, {"?EI", ""}}},
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

TEST(ReceiverEmulator, CommandsMayArriveInPiecesAndTheInformationFollowsTheProfile) {
    ReceiverEmulator emulator(ReceiverProfile{});
    EXPECT_TRUE(emulator.feed({'?', 'E'}).bytes.empty());
    EXPECT_EQ(emulator.feed({'I', 0x0D}).bytes, Bytes({0x00, 0x00, 0x04, 10, 0, 2, 0}));
    EXPECT_EQ(emulator.commands(), std::vector<std::string>({"EI"}));

    ReceiverProfile shortInfo;
    shortInfo.parameters.configCode = 7;
    shortInfo.parameters.bandSelector = 2;
    shortInfo.infoLength = 2;
    ReceiverEmulator twoBytes(shortInfo);
    EXPECT_EQ(ask(twoBytes, "?EI"), Bytes({0x00, 0x00, 0x02, 7, 2}));
}

std::size_t frameEnd(const Bytes& reply, std::size_t at) {
    return at + 3 + static_cast<std::size_t>((reply.at(at + 1) & 0x7F) << 8 | reply.at(at + 2));
}

TEST(ReceiverEmulator, ListRepliesCarryACountAndWholeItems) {
    ReceiverProfile profile;
    profile.parameters.memoryCount = 4;
    profile.parameters.configCode = 11;
    ReceiverEmulator emulator(profile);
    for (const char* list : {"?DLALL", "?LVALL", "?STALL"}) {
        const Bytes reply = ask(emulator, list);
        ASSERT_EQ(reply.at(0), 4) << list;
        std::size_t at = 1;
        for (int item = 0; item < 4; ++item)
            at = frameEnd(reply, at);
        EXPECT_EQ(at, reply.size()) << list;
    }
    // One group per memory, a record per channel (nine in configuration 11), each with the
    // memory as its prefix.
    const Bytes eq = ask(emulator, "?EQALL");
    ASSERT_EQ(eq.at(0), 4);
    std::size_t at = 1;
    for (int memory = 1; memory <= 4; ++memory) {
        for (int record = 0; record < 9; ++record) {
            EXPECT_EQ(eq.at(at), memory) << record;
            at = frameEnd(eq, at + 1);
        }
    }
    EXPECT_EQ(at, eq.size());
}

TEST(ReceiverEmulator, ACutOffReplyStopsHalfWayAndClosesTheLine) {
    ReceiverProfile profile;
    profile.cutOffCommand = "RVCT";
    ReceiverEmulator emulator(profile);
    const auto output = emulator.feed(command("?RVCT"));
    EXPECT_TRUE(output.closeLine);
    EXPECT_GT(output.bytes.size(), 3u);
    EXPECT_LT(output.bytes.size(), 3u + 576u);
    EXPECT_TRUE(emulator.feed(command("?RVFL")).bytes.empty());
}

std::int16_t valueAt(const Bytes& body, std::size_t record, std::size_t point) {
    const std::size_t at = record * 64 + point * 2;
    return static_cast<std::int16_t>(body[at] << 8 | body[at + 1]);
}

TEST(MeasurementReplies, DecaysFallOver160MillisecondsAndFasterAfterCalibration) {
    for (int selector : {0, 1}) {
        const Bytes before = reverbBody(3, selector, false);
        const Bytes after = reverbBody(3, selector, true);
        for (std::size_t band = 0; band < before.size() / 64; ++band) {
            EXPECT_GT(valueAt(before, band, 0), valueAt(before, band, 31) + 1000);
            EXPECT_LT(valueAt(after, band, 31), valueAt(before, band, 31));
            // From 5 ms to 160 ms, somewhere between 10 and 70 dB down.
            EXPECT_LT(valueAt(before, band, 31), -1000);
            EXPECT_GT(valueAt(before, band, 31), -7000);
        }
    }
    const Bytes delay = groupDelayBody(0);
    ASSERT_EQ(delay.size(), 131u);
    const auto signedAt = [&](std::size_t i) { return static_cast<std::int8_t>(delay[i]); };
    EXPECT_GT(signedAt(0), signedAt(63));
    EXPECT_LT(signedAt(64), signedAt(0));  // flatter after calibration
    EXPECT_GT(signedAt(128), 0);           // the scale
}

}  // namespace
}  // namespace sonalyx::emulator
