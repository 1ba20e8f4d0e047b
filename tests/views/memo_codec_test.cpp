#include <gtest/gtest.h>
#include <QStringList>

#include "views/window/memo_codec.h"

namespace {

using sonalyx::MemoCodec;
using sonalyx::MemoEncoding;

// "リビングの居間" and "居間" as a Japanese system writes them.
const std::string kLivingRoom = "\x83\x8A\x83\x72\x83\x93\x83\x4F\x82\xCC\x8B\x8F\x8A\xD4";
const std::string kRoom = "\x8B\x8F\x8A\xD4";

// UTF-8 when valid, else Shift-JIS when it reads as Japanese, else Windows-1252: also where
// Windows-1252 letters happen to fit Shift-JIS's byte ranges.
TEST(MemoCodecTest, ShowsUtf8ThenShiftJisThenWindows1252) {
    const std::pair<std::string, const char*> rows[] = {
        {"caf\xC3\xA9", "café"},
        {"caf\xE9 \x80 \x96", "café € –"},
        {"", ""},
        {kLivingRoom, "リビングの居間"},
        {kRoom, "居間"},
        {"H\xE9l\xE8ne", "Hélène"},
        {"it\x92s \xFC"
         "ber",
         "it’s über"},
        {"\xDC"
         "bung",
         "Übung"},
    };
    for (const auto& [bytes, text] : rows)
        EXPECT_EQ(MemoCodec::decodeLine(bytes), QString::fromUtf8(text)) << text;
}

// Edited text goes back in the memo's encoding (UTF-8 when that cannot hold it): inner empty
// lines kept, a trailing one dropped, and no more lines than the limit.
TEST(MemoCodecTest, WritesEditedTextInItsEncodingUpToTheLimit) {
    const std::tuple<const char*, MemoEncoding, std::vector<std::string>> rows[] = {
        {"Wohnzimmer\nSofa 2,50 m\n€",
         MemoEncoding::Utf8,
         {"Wohnzimmer", "Sofa 2,50 m", "\xE2\x82\xAC"}},
        {"", MemoEncoding::Utf8, {}},
        {"a\n\nb\n", MemoEncoding::Utf8, {"a", "", "b"}},
        {"0\n1\n2\n3\n4", MemoEncoding::Utf8, {"0", "1", "2"}},
        {"リビングの居間\nA", MemoEncoding::ShiftJis, {kLivingRoom, "A"}},
        {"€ café", MemoEncoding::Windows1252, {"\x80 caf\xE9"}},
        {"café\n居間", MemoEncoding::Windows1252, {"caf\xC3\xA9", "\xE5\xB1\x85\xE9\x96\x93"}},
    };
    for (const auto& [text, encoding, lines] : rows)
        EXPECT_EQ(MemoCodec::encode(QString::fromUtf8(text), 3, encoding), lines) << text;
}

// An editor stores a memo it did not change byte for byte, and an edited one as it came in.
TEST(MemoCodecTest, RoundTripsThroughTheEditor) {
    for (const std::vector<std::string>& memo :
         {std::vector<std::string>{"Front", "", "caf\xC3\xA9"},
          {"caf\xE9", "\x81"},
          {kLivingRoom, kRoom}}) {
        EXPECT_EQ(MemoCodec::store(MemoCodec::decode(memo), 20, memo), memo) << memo[0];
        const auto edited = MemoCodec::store(MemoCodec::decode(memo) + "!", 20, memo);
        EXPECT_EQ(MemoCodec::encodingOf(edited), MemoCodec::encodingOf(memo)) << memo[0];
    }
}

}  // namespace
