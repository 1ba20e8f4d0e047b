#include "link/link_trace.h"

#include <gtest/gtest.h>

namespace sonalyx {
namespace {

std::vector<std::uint8_t> bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

TEST(LinkTrace, CommandsShowQuestionMarkAndCapitalsAsCharacters) {
    EXPECT_EQ(sendTraceLine(bytesOf("?EI\r")), "<? E I 0d >");
    EXPECT_EQ(sendTraceLine(bytesOf("?RVEXSL\r")), "<? R V E X S L 0d >");
    // Lower case, digits and other bytes are hex.
    EXPECT_EQ(sendTraceLine({'a', '0', 0xFF, '@', '['}), "<61 30 ff 40 5b >");
    EXPECT_EQ(sendTraceLine({}), "<>");
}

TEST(LinkTrace, ReceivedBytesAreLowerCaseHex) {
    EXPECT_EQ(receiveTraceLine({0x00, 0x82, 0x40}), "<00 82 40 >");
    EXPECT_EQ(receiveTraceLine(bytesOf("E04")), "<45 30 34 >");
}

TEST(LinkTrace, UpTo2000BytesAreTracedWhole) {
    const std::vector<std::uint8_t> bytes(2000, 0xAB);
    const std::string line = receiveTraceLine(bytes);
    ASSERT_EQ(line.size(), 2 + 3 * 2000u);
    EXPECT_EQ(line.substr(0, 7), "<ab ab ");
    EXPECT_EQ(line.substr(line.size() - 4), "ab >");
}

TEST(LinkTrace, MoreThan2000BytesShowOnlyTheFirst) {
    std::vector<std::uint8_t> bytes(2001, 0x11);
    bytes.front() = 0x7F;
    EXPECT_EQ(receiveTraceLine(bytes), "<7f  Too many data.>");
}

TEST(LinkTrace, LongCommandsGrowBeyondTheOldBuffer) {
    const std::vector<std::uint8_t> bytes(1500, 0x01);
    EXPECT_EQ(sendTraceLine(bytes).size(), 2 + 3 * 1500u);
}

}  // namespace
}  // namespace sonalyx
