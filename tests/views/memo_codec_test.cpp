#include <gtest/gtest.h>
#include <QStringList>

#include "views/memo_codec.h"

namespace {

using sonalyx::MemoCodec;

TEST(MemoCodecTest, ShowsUtf8AsUtf8AndOtherBytesAsWindows1252) {
    EXPECT_EQ(MemoCodec::decodeLine("caf\xC3\xA9"), QString::fromUtf8("café"));
    EXPECT_EQ(MemoCodec::decodeLine("caf\xE9 \x80 \x96"), QString::fromUtf8("café € –"));
    EXPECT_EQ(MemoCodec::decodeLine(""), QString());
}

TEST(MemoCodecTest, WritesEditedTextAsUtf8Lines) {
    const auto lines = MemoCodec::encode(QString::fromUtf8("Wohnzimmer\nSofa 2,50 m\n€"), 20);
    EXPECT_EQ(lines, (std::vector<std::string>{"Wohnzimmer", "Sofa 2,50 m", "\xE2\x82\xAC"}));
    EXPECT_TRUE(MemoCodec::encode(QString(), 20).empty());
}

TEST(MemoCodecTest, KeepsInnerEmptyLinesDropsTheTrailingOneAndStopsAtTheLimit) {
    EXPECT_EQ(MemoCodec::encode(QStringLiteral("a\n\nb\n"), 20),
              (std::vector<std::string>{"a", "", "b"}));
    QStringList many;
    for (int i = 0; i < 25; ++i) {
        many.append(QString::number(i));
    }
    const auto lines = MemoCodec::encode(many.join(QLatin1Char('\n')), 20);
    ASSERT_EQ(lines.size(), 20u);
    EXPECT_EQ(lines.back(), "19");
}

TEST(MemoCodecTest, RoundTripsThroughTheEditor) {
    const std::vector<std::string> memo = {"Front left", "", "caf\xC3\xA9"};
    EXPECT_EQ(MemoCodec::encode(MemoCodec::decode(memo), 20), memo);
}

}  // namespace
