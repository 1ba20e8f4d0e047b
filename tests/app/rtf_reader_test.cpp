#include <gtest/gtest.h>
#include <QFile>

#include "app/rtf_reader.h"
#include "support/golden.h"

namespace {

using sonalyx::test::GoldenSection;

// The HTML of small RTF texts, one golden section each: paragraphs and line breaks, character
// formats and the groups that restore them, the colour table and font size, escapes, and the
// destinations that are skipped.
TEST(RtfReaderTest, FormatsMatchGolden) {
    const std::pair<const char*, const char*> cases[] = {
        {"paragraphs and formats", "{\\rtf1 One \\b bold\\b0  \\i it\\i0\\par Two\\line three}"},
        {"groups restore the format", "{\\rtf1 a{\\b b}c}"},
        {"colour table and font size",
         "{\\rtf1{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}"
         "\\cf2\\fs28 blue\\cf1  red\\cf0  plain}"},
        {"escapes and skipped destinations",
         "{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\*\\generator X;}caf\\'e9 \\u8212? \\{x\\} "
         "a\\\\b \\rquote <&>}"},
    };
    std::vector<GoldenSection> sections;
    for (const auto& [name, rtf] : cases) {
        const auto html = RtfReader::toHtml(QByteArray(rtf));
        ASSERT_TRUE(html.has_value()) << name;
        std::vector<std::string> lines;
        for (const QString& line : html->split(QLatin1Char('\n')))
            lines.push_back(line.toStdString());
        sections.push_back({name, lines});
    }
    sonalyx::test::expectSectionsMatchGolden(sonalyx::test::testDataPath("app/rtf.txt"), sections);
    EXPECT_FALSE(RtfReader::toHtml("plain words").has_value());
    EXPECT_FALSE(RtfReader::toHtml("").has_value());
}

TEST(RtfReaderTest, ShippedGlossaryExplainsEveryTermTheProgramShows) {
    QFile file(QStringLiteral(SONALYX_SOURCE_DIR "/data/glossary/Glossary.rtf"));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto out = RtfReader::toHtml(file.readAll());
    ASSERT_TRUE(out.has_value());
    for (const char* term : {"Reverb Characteristics", "Group Delay", "Standing Wave Control",
                             "Crossover", "X-Curve", "Speaker Distance", "Channel Level",
                             "Acoustic Calibration EQ", "Memory", "Before / After Calibration"}) {
        EXPECT_TRUE(out->contains(QLatin1String(term))) << term;
    }
    EXPECT_FALSE(out->contains(QLatin1Char('\\')));
}

}  // namespace
