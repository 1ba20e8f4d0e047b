#include "link/serial_port_link.h"

#include <gtest/gtest.h>
#include <QCoreApplication>
#include <QDeadlineTimer>

#include "raw_pty.h"
#include "support/recording_messenger.h"

namespace sonalyx {
namespace {

using Lines = std::vector<std::string>;

std::vector<std::uint8_t> bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

class SerialPortLinkTest : public ::testing::Test {
  protected:
    void SetUp() override {
        ASSERT_FALSE(pty.portPath().empty());
        link.setTraceSink([this](const std::string& line) { trace.push_back(line); });
    }

    // Lets the event loop deliver what the line did, for at most two seconds; done is asked
    // once per round and may consume what it checks.
    template <typename Done>
    static bool processEventsUntil(Done done) {
        QDeadlineTimer deadline(2000);
        while (!deadline.hasExpired()) {
            if (done()) {
                return true;
            }
            QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
        }
        return false;
    }

    test::RawPty pty;
    test::RecordingMessenger messenger;
    SerialPortLink link{messenger};
    Lines trace;
};

TEST_F(SerialPortLinkTest, MonitorModeTracesTheWholeExchange) {
    ASSERT_TRUE(link.open(pty.portPath(), true));
    ASSERT_TRUE(link.send(bytesOf("?EI\r")));
    EXPECT_EQ(pty.readSent(4), bytesOf("?EI\r"));
    pty.write({0x00, 0x00, 0x04});
    std::vector<std::uint8_t> header;
    ASSERT_TRUE(processEventsUntil([&] { return link.receive(3, header) && !header.empty(); }));
    EXPECT_EQ(header, std::vector<std::uint8_t>({0x00, 0x00, 0x04}));
    link.close();

    EXPECT_EQ(trace, Lines({pty.portPath() + ": OPENNED", "Send 4 bytes.", "<? E I 0d >",
                            "Send completed.", "Receive 3 bytes.", "<00 00 04 >", "Port closed."}));
    EXPECT_TRUE(messenger.messages.empty());
}

TEST_F(SerialPortLinkTest, TooFewBytesWaitingConsumesNothing) {
    ASSERT_TRUE(link.open(pty.portPath(), false));
    pty.write(bytesOf("E04"));
    std::vector<std::uint8_t> out;
    ASSERT_TRUE(processEventsUntil([&] {
        link.receive(5, out);
        return link.receive(3, out) && !out.empty();
    }));
    EXPECT_EQ(out, bytesOf("E04"));
    EXPECT_TRUE(link.receive(1, out));
    EXPECT_TRUE(out.empty());
}

TEST_F(SerialPortLinkTest, MoreThan2000BytesAreTracedShort) {
    ASSERT_TRUE(link.open(pty.portPath(), true));
    std::vector<std::uint8_t> body(2001, 0x22);
    pty.write(body);
    std::vector<std::uint8_t> out;
    ASSERT_TRUE(processEventsUntil([&] { return link.receive(2001, out) && !out.empty(); }));
    EXPECT_EQ(trace.back(), "<22  Too many data.>");
}

// A port that does not open is traced in monitor mode and told to the user either way.
TEST_F(SerialPortLinkTest, MonitorOffWritesNoTraceButStillTellsTheUser) {
    const std::string missing = "/dev/sonalyx-no-such-port";
    const std::string cannotOpen = "Cannot open the serial port(" + missing + ").";
    EXPECT_FALSE(link.open(missing, false));
    EXPECT_TRUE(trace.empty());
    EXPECT_FALSE(link.open(missing, true));
    EXPECT_EQ(trace, Lines({cannotOpen}));
    EXPECT_FALSE(link.send(bytesOf("?SI\r")));
    EXPECT_EQ(messenger.texts(), Lines({cannotOpen, cannotOpen, "Send failed."}));

    trace.clear();
    ASSERT_TRUE(link.open(pty.portPath(), false));
    ASSERT_TRUE(link.send(bytesOf("?RVFL\r")));
    link.close();
    EXPECT_TRUE(trace.empty());
}

TEST_F(SerialPortLinkTest, APulledCableFailsTheReceiveAndIsAnnounced) {
    bool announced = false;
    link.setLineLostHandler([&] { announced = true; });
    ASSERT_TRUE(link.open(pty.portPath(), true));
    pty.hangUp();
    EXPECT_TRUE(processEventsUntil([&] { return announced; }));
    std::vector<std::uint8_t> out;
    EXPECT_FALSE(link.receive(3, out));
    EXPECT_EQ(messenger.texts(), Lines({"Receive failed."}));
    EXPECT_EQ(trace.back(), "Receive failed.");
}

}  // namespace
}  // namespace sonalyx
