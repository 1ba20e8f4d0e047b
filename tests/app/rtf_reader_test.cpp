#include <gtest/gtest.h>
#include <QFile>

#include "app/rtf_reader.h"

namespace {

QString html(const char* rtf) {
    return RtfReader::toHtml(QByteArray(rtf)).value_or(QString());
}

TEST(RtfReaderTest, RefusesTextThatIsNotRtf) {
    EXPECT_FALSE(RtfReader::toHtml("plain words").has_value());
    EXPECT_FALSE(RtfReader::toHtml("").has_value());
}

TEST(RtfReaderTest, ParagraphsAndCharacterFormats) {
    const QString out = html("{\\rtf1 One \\b bold\\b0  \\i it\\i0\\par Two\\line three}");
    EXPECT_TRUE(out.contains(QStringLiteral("<span style=\"\">One </span>")));
    EXPECT_TRUE(out.contains(QStringLiteral("<span style=\"font-weight:bold\">bold</span>")));
    EXPECT_TRUE(out.contains(QStringLiteral("<span style=\"font-style:italic\">it</span>")));
    EXPECT_TRUE(out.contains(QStringLiteral("</p>\n<p><span style=\"\">Two<br/>three</span>")));
}

TEST(RtfReaderTest, GroupsRestoreTheFormatAround) {
    const QString out = html("{\\rtf1 a{\\b b}c}");
    EXPECT_TRUE(out.contains(QStringLiteral("font-weight:bold\">b<")));
    EXPECT_TRUE(out.contains(QStringLiteral("<span style=\"\">c</span>")));
}

TEST(RtfReaderTest, ColourTableAndFontSize) {
    const QString out = html(
        "{\\rtf1{\\colortbl;\\red255\\green0\\blue0;\\red0\\green0\\blue255;}"
        "\\cf2\\fs28 blue\\cf1  red\\cf0  plain}");
    EXPECT_TRUE(out.contains(QStringLiteral("color:#0000ff;font-size:14pt\">blue")));
    EXPECT_TRUE(out.contains(QStringLiteral("color:#ff0000;font-size:14pt\"> red")));
    EXPECT_TRUE(out.contains(QStringLiteral("font-size:14pt\"> plain")));
}

TEST(RtfReaderTest, EscapesAndSkippedDestinations) {
    const QString out = html(
        "{\\rtf1{\\fonttbl{\\f0 Arial;}}{\\*\\generator X;}caf\\'e9 \\u8212? \\{x\\} "
        "a\\\\b \\rquote <&>}");
    EXPECT_FALSE(out.contains(QStringLiteral("Arial")));
    EXPECT_FALSE(out.contains(QStringLiteral("generator")));
    EXPECT_TRUE(out.contains(QString::fromUtf8("café — {x} a\\b ’&lt;&amp;&gt;")));
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
