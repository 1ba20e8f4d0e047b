#include <gtest/gtest.h>
#include <QStringList>

#include "views/window/memo_codec.h"

namespace {

using sonalyx::MemoCodec;

TEST(MemoCodecTest, ShowsUtf8AsUtf8AndOtherBytesAsWindows1252) {
    EXPECT_EQ(MemoCodec::decodeLine("caf\xC3\xA9"), QString::fromUtf8("café"));
    EXPECT_EQ(MemoCodec::decodeLine("caf\xE9 \x80 \x96"), QString::fromUtf8("café € –"));
    EXPECT_EQ(MemoCodec::decodeLine(""), QString());
}

// Edited text goes back as UTF-8 lines: inner empty lines kept, a trailing one dropped, and
// no more lines than the limit.
TEST(MemoCodecTest, WritesEditedTextAsUtf8LinesUpToTheLimit) {
    const std::pair<QString, std::vector<std::string>> rows[] = {
        {QString::fromUtf8("Wohnzimmer\nSofa 2,50 m\n€"),
         {"Wohnzimmer", "Sofa 2,50 m", "\xE2\x82\xAC"}},
        {QString(), {}},
        {QStringLiteral("a\n\nb\n"), {"a", "", "b"}},
        {QStringLiteral("0\n1\n2\n3\n4"), {"0", "1", "2"}},
    };
    for (const auto& [text, lines] : rows)
        EXPECT_EQ(MemoCodec::encode(text, 3), lines) << text.toStdString();
}

TEST(MemoCodecTest, RoundTripsThroughTheEditor) {
    const std::vector<std::string> memo = {"Front left", "", "caf\xC3\xA9"};
    EXPECT_EQ(MemoCodec::encode(MemoCodec::decode(memo), 20), memo);
}

}  // namespace
