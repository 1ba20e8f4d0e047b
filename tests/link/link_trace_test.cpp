#include "link/link_trace.h"

#include <gtest/gtest.h>

namespace sonalyx {
namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

// More than 2000 received bytes show only the first: SerialPortLinkTest traces that over a line.
TEST(LinkTrace, SentAndReceivedBytes) {
    const struct {
        bool sent;
        Bytes bytes;
        std::string line;
    } rows[] = {
        // Commands show '?' and capitals as characters, anything else as hex.
        {true, bytesOf("?EI\r"), "<? E I 0d >"},
        {true, bytesOf("?RVEXSL\r"), "<? R V E X S L 0d >"},
        {true, {'a', '0', 0xFF, '@', '['}, "<61 30 ff 40 5b >"},
        {true, {}, "<>"},
        // Received bytes are lower-case hex.
        {false, {0x00, 0x82, 0x40}, "<00 82 40 >"},
        {false, bytesOf("E04"), "<45 30 34 >"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(row.sent ? sendTraceLine(row.bytes) : receiveTraceLine(row.bytes), row.line);
    }
    // Up to 2000 received bytes are traced whole, and long commands outgrow the old buffer.
    const std::string whole = receiveTraceLine(Bytes(2000, 0xAB));
    EXPECT_EQ(whole.size(), 2 + 3 * 2000u);
    EXPECT_EQ(whole.substr(whole.size() - 7), "ab ab >");
    EXPECT_EQ(sendTraceLine(Bytes(1500, 0x01)).size(), 2 + 3 * 1500u);
}

}  // namespace
}  // namespace sonalyx
