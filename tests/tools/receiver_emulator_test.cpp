#include "emulator/receiver_emulator.h"

#include <gtest/gtest.h>

#include "emulator/measurement_replies.h"

namespace sonalyx::emulator {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes command(const std::string& text) {
    Bytes bytes(text.begin(), text.end());
    bytes.push_back(0x0D);
    return bytes;
}

const Bytes kErrorReply = {'E', '0', '4', 0x0D, 0x0A};

// A framed reply: header fields and where the next frame starts.
struct Frame {
    int attribute = 0;
    bool extendedBit = false;
    std::size_t length = 0;
    std::size_t next = 0;
};

Frame frameAt(const Bytes& bytes, std::size_t at) {
    Frame frame;
    frame.attribute = bytes.at(at);
    frame.extendedBit = (bytes.at(at + 1) & 0x80) != 0;
    frame.length = static_cast<std::size_t>((bytes.at(at + 1) & 0x7F) << 8 | bytes.at(at + 2));
    frame.next = at + 3 + frame.length;
    return frame;
}

Bytes ask(ReceiverEmulator& emulator, const std::string& text) {
    return emulator.feed(command(text)).bytes;
}

TEST(ReceiverEmulator, AnswersTheProbeOfAnExtendedReceiver) {
    ReceiverEmulator emulator(ReceiverProfile{});
    const Bytes reply = ask(emulator, "?RVFL");
    const Frame frame = frameAt(reply, 0);
    EXPECT_TRUE(frame.extendedBit);
    EXPECT_EQ(frame.length, 576u);
    EXPECT_EQ(frame.next, reply.size());
    EXPECT_LT(frame.attribute, 16);
}

TEST(ReceiverEmulator, AnOldReceiverHasNoExtendedBitAndNoInformation) {
    ReceiverProfile profile;
    profile.extended = false;
    ReceiverEmulator emulator(profile);
    EXPECT_FALSE(frameAt(ask(emulator, "?RVFL"), 0).extendedBit);
    EXPECT_EQ(ask(emulator, "?EI"), kErrorReply);
    EXPECT_EQ(frameAt(ask(emulator, "?RVSPBR"), 0).length, 576u);  // configuration 9
}

TEST(ReceiverEmulator, CommandsMayArriveInPieces) {
    ReceiverEmulator emulator(ReceiverProfile{});
    EXPECT_TRUE(emulator.feed({'?', 'E'}).bytes.empty());
    const Bytes reply = emulator.feed({'I', 0x0D}).bytes;
    EXPECT_EQ(reply, Bytes({0x00, 0x00, 0x04, 10, 0, 2, 0}));
    EXPECT_EQ(emulator.commands(), std::vector<std::string>({"EI"}));
}

TEST(ReceiverEmulator, InformationReplyLengths) {
    ReceiverProfile shortInfo;
    shortInfo.parameters.configCode = 7;
    shortInfo.parameters.bandSelector = 2;
    shortInfo.infoLength = 2;
    ReceiverEmulator twoBytes(shortInfo);
    EXPECT_EQ(ask(twoBytes, "?EI"), Bytes({0x00, 0x00, 0x02, 7, 2}));

    ReceiverProfile bad;
    bad.badInfoLength = true;
    ReceiverEmulator threeBytes(bad);
    EXPECT_EQ(frameAt(ask(threeBytes, "?EI"), 0).length, 3u);
}

TEST(ReceiverEmulator, SixBandReceiversSend384Bytes) {
    ReceiverProfile profile;
    profile.parameters.bandSelector = 1;
    ReceiverEmulator emulator(profile);
    EXPECT_EQ(frameAt(ask(emulator, "?RACT"), 0).length, 384u);
}

TEST(ReceiverEmulator, AsksOutsideTheConfigurationAreRefused) {
    ReceiverProfile profile;
    profile.parameters.configCode = 5;
    ReceiverEmulator emulator(profile);
    EXPECT_EQ(ask(emulator, "?RVSBL"), kErrorReply);
    EXPECT_EQ(ask(emulator, "?FBX"), kErrorReply);
    EXPECT_EQ(ask(emulator, "?HELLO"), kErrorReply);
    // Configuration 5 has no surround back: its group delay is marked not measured.
    EXPECT_EQ(frameAt(ask(emulator, "?FBB"), 0).attribute, 0xF3);
    EXPECT_EQ(frameAt(ask(emulator, "?FBS"), 0).attribute, 1);
}

TEST(ReceiverEmulator, RefusesChosenCommandsAsOftenAsAsked) {
    ReceiverProfile profile;
    profile.refusals = {{"RVCT", 2}, {"SI", -1}};
    profile.afterData = false;
    ReceiverEmulator emulator(profile);
    EXPECT_EQ(ask(emulator, "?RVCT"), kErrorReply);
    EXPECT_EQ(ask(emulator, "?RVCT"), kErrorReply);
    EXPECT_EQ(frameAt(ask(emulator, "?RVCT"), 0).length, 576u);
    for (int i = 0; i < 4; ++i) {
        EXPECT_EQ(ask(emulator, "?SI"), kErrorReply);
        EXPECT_EQ(ask(emulator, "?RAFL"), kErrorReply);
    }
}

TEST(ReceiverEmulator, SpoilsTheProbeOnceOrAlways) {
    ReceiverProfile once;
    once.badProbe = ReceiverProfile::BadProbe::Once;
    ReceiverEmulator first(once);
    EXPECT_EQ(frameAt(ask(first, "?RVFL"), 0).length, 500u);
    EXPECT_EQ(frameAt(ask(first, "?RVFL"), 0).length, 576u);

    ReceiverProfile always;
    always.badProbe = ReceiverProfile::BadProbe::Always;
    ReceiverEmulator second(always);
    EXPECT_EQ(frameAt(ask(second, "?RVFL"), 0).length, 500u);
    EXPECT_EQ(frameAt(ask(second, "?RVFL"), 0).length, 500u);
}

TEST(ReceiverEmulator, OversizeAndInvalidReplies) {
    ReceiverProfile profile;
    profile.oversizeCommands = {"RVCT"};
    profile.invalidCommands = {"FBS", "RVFR"};
    ReceiverEmulator emulator(profile);
    const Bytes oversize = ask(emulator, "?RVCT");
    EXPECT_EQ(frameAt(oversize, 0).length, 2049u);
    EXPECT_EQ(oversize.size(), 3u + 2049u);
    EXPECT_EQ(frameAt(ask(emulator, "?FBS"), 0).attribute, 0xF1);
    EXPECT_EQ(frameAt(ask(emulator, "?RVFR"), 0).attribute, 0xF0);
}

TEST(ReceiverEmulator, ListRepliesCarryACountAndWholeItems) {
    ReceiverProfile profile;
    profile.parameters.memoryCount = 4;
    ReceiverEmulator emulator(profile);
    for (const char* list : {"?DLALL", "?LVALL", "?STALL"}) {
        const Bytes reply = ask(emulator, list);
        ASSERT_FALSE(reply.empty()) << list;
        std::size_t at = 1;
        for (int item = 0; item < reply.front(); ++item) {
            at = frameAt(reply, at).next;
        }
        EXPECT_EQ(reply.front(), 4) << list;
        EXPECT_EQ(at, reply.size()) << list;
    }
}

TEST(ReceiverEmulator, EqListGroupsHaveAPrefixedRecordPerChannel) {
    ReceiverProfile profile;
    profile.parameters.configCode = 11;
    ReceiverEmulator emulator(profile);
    const Bytes reply = ask(emulator, "?EQALL");
    const auto groups = eqAllReply(profile.parameters);
    ASSERT_EQ(reply.front(), groups.size());
    std::size_t at = 1;
    for (const auto& records : groups) {
        EXPECT_EQ(records.size(), 9u);  // configuration 11 sends nine records
        for (const PrefixedReply& record : records) {
            EXPECT_EQ(reply.at(at), record.prefix);
            const Frame frame = frameAt(reply, at + 1);
            EXPECT_EQ(frame.length, record.reply.body.size());
            at = frame.next;
        }
    }
    EXPECT_EQ(at, reply.size());
}

TEST(ReceiverEmulator, SilenceAnswersNothing) {
    ReceiverProfile profile;
    profile.silent = true;
    ReceiverEmulator emulator(profile);
    EXPECT_TRUE(ask(emulator, "?RVFL").empty());
    EXPECT_EQ(emulator.commands().size(), 1u);
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
}

TEST(MeasurementReplies, GroupDelayFlattensAfterCalibration) {
    const Bytes body = groupDelayBody(0);
    ASSERT_EQ(body.size(), 131u);
    const auto signedAt = [&](std::size_t i) { return static_cast<std::int8_t>(body[i]); };
    EXPECT_GT(signedAt(0), signedAt(63));
    EXPECT_LT(signedAt(64), signedAt(0));
    EXPECT_GT(signedAt(128), 0);  // the scale
}

}  // namespace
}  // namespace sonalyx::emulator
