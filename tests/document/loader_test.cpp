#include <gtest/gtest.h>

#include <tuple>

#include "document/document_loader.h"
#include "document/document_writer.h"
#include "support/golden.h"
#include "test_documents.h"

namespace sonalyx::test {
namespace {

MeasurementDocument loadLines(const std::vector<std::string>& lines,
                              const std::string& name = "/tmp/doc.csv") {
    MeasurementDocument doc;
    EXPECT_TRUE(DocumentLoader::load(doc, lines, name, nullptr));
    return doc;
}

std::vector<std::string> writeLines(const MeasurementDocument& doc) {
    std::vector<std::string> lines;
    DocumentWriter::write(doc, lines);
    return lines;
}

// Lines of a document with just a date, a channel line and given extra lines.
std::vector<std::string> withChannels(const std::string& channels,
                                      std::vector<std::string> extra = {}) {
    std::vector<std::string> lines = {"[DATE]", "2020.01.02 03:04", "", "[CHANNEL]", channels, ""};
    lines.insert(lines.end(), extra.begin(), extra.end());
    return lines;
}

TEST(DocumentLoader, SmallDocumentReadsEveryField) {
    const MeasurementDocument doc = loadLines(smallDocumentLines());
    EXPECT_EQ(doc.date, "2009.05.17 14:03");
    EXPECT_EQ(doc.layoutNumber, 5);
    EXPECT_EQ(doc.channelCount, 5);
    EXPECT_EQ(doc.groupCount, 3);
    EXPECT_EQ(doc.channelLongNames, (std::vector<std::string>{"Left", "Center", "Right",
                                                              "Surround R A", "Surround L A"}));
    EXPECT_EQ(doc.bandCount, 3);
    EXPECT_EQ(doc.reverbType, 1);
    EXPECT_TRUE(doc.symmetry);
    EXPECT_EQ(doc.reverbTypeLabel, "EQ ON\r\n(SYMMETRY)");
    EXPECT_TRUE(doc.variant1BlocksPresent);
    EXPECT_TRUE(doc.positionHasData[0][0]);
    EXPECT_TRUE(doc.positionHasData[1][0]);
    EXPECT_TRUE(doc.positionHasData[0][2]);
    EXPECT_FALSE(doc.positionHasData[1][2]);
    EXPECT_FALSE(doc.positionHasData[0][1]);
    EXPECT_FLOAT_EQ(doc.reverbValues[0][0][0][0], 10.0f);
    EXPECT_FLOAT_EQ(doc.reverbValues[0][0][2][31], 6.0f - 0.25f * 31);
    EXPECT_FLOAT_EQ(doc.reverbValues[1][0][1][1], 6.5f);
    EXPECT_EQ(doc.fileMemos[kReverbSection], (Memo{"living room"}));
    EXPECT_EQ(doc.channelMemos[0], (Memo{"front left, tweeter"}));
    EXPECT_TRUE(doc.channelMemos[2].empty());
    EXPECT_EQ(doc.groupMemos[0], (Memo{"front pair"}));
    EXPECT_EQ(doc.positionsWithData[0].shortNames, (std::vector<std::string>{"L", "R"}));
    EXPECT_EQ(doc.positionsWithData[2].longNames, (std::vector<std::string>{"Left"}));
    EXPECT_EQ(doc.groupsWithData.names, (std::vector<std::string>{"Front"}));
    EXPECT_EQ(doc.groupsWithData.abbreviations, (std::vector<std::string>{"F"}));
    EXPECT_TRUE(doc.sectionLoaded[kReverbSection]);
    EXPECT_TRUE(doc.sectionLoaded[kGroupDelaySection]);
    EXPECT_TRUE(doc.sectionLoaded[kParametersSection]);
    EXPECT_FALSE(doc.modified);
    EXPECT_EQ(doc.groupDelayChannelLine, "Front,Center");
}

TEST(DocumentLoader, DateOnlyFileGetsTheDefaults) {
    const MeasurementDocument doc = loadLines({"[DATE]", "2001.02.03 04:05 and more"});
    EXPECT_EQ(doc.date, "2001.02.03 04:05");
    EXPECT_EQ(doc.layoutNumber, 9);
    EXPECT_EQ(doc.channelNames, (std::vector<std::string>{"L", "C", "R", "SR A", "SBR", "SBL",
                                                          "SL A", "SPBL", "SPBR"}));
    EXPECT_EQ(doc.bandLabels,
              (std::vector<std::string>{"63", "125", "250", "500", "1k", "2k", "4k", "8k", "16k"}));
    EXPECT_EQ(doc.reverbType, 0);
    EXPECT_EQ(doc.reverbTypeLabel, "EQ OFF");
    EXPECT_FALSE(doc.anyVariantData[0]);
    EXPECT_FALSE(doc.anyVariantData[1]);
    EXPECT_FALSE(doc.sectionLoaded[kGroupDelaySection]);
    EXPECT_FALSE(doc.sectionLoaded[kParametersSection]);
}

TEST(DocumentLoader, IllegalFirstLineIsRefusedWithTheFileName) {
    RecordingMessenger messenger;
    MeasurementDocument doc;
    EXPECT_FALSE(DocumentLoader::load(doc, {"DATE", "[DATE]"}, "/x/run.csv", &messenger));
    ASSERT_EQ(messenger.messages.size(), 1u);
    EXPECT_EQ(messenger.messages[0].text, "Illegal file format.");
    EXPECT_EQ(messenger.messages[0].secondLine, "/x/run.csv");
    EXPECT_EQ(messenger.messages[0].mode, MessageMode::Ok);
    EXPECT_FALSE(DocumentLoader::load(doc, {}, "/x/empty.csv", &messenger));
    EXPECT_EQ(messenger.messages.size(), 2u);
}

// Type 4 is written as front align and reads back as 3.
TEST(DocumentLoader, ReverbTypesAndTheirLabels) {
    const struct {
        std::string line;
        int type;
        bool symmetry;
    } cases[] = {{"EQ OFF", 0, false},
                 {"EQ ON,SYMMETRY", 1, true},
                 {"EQ ON,ALL CH ADJUST", 2, false},
                 {"EQ ON,FRONT ALIGN", 3, true},
                 {"EQ ON,FRONT ALIGN SYMMETRY", 3, true},
                 {"EQ ON,CUSTOM", 5, false},
                 {"EQ ON", 0, false},
                 {"EQ ON,LOUDNESS", 0, false},
                 {"eq on,SYMMETRY", 0, false}};
    for (const auto& c : cases) {
        const auto doc = loadLines({"[DATE]", "d", "[REVERB TYPE]", c.line});
        EXPECT_EQ(doc.reverbType, c.type) << c.line;
        EXPECT_EQ(doc.symmetry, c.symmetry) << c.line;
    }
    MeasurementDocument doc = loadLines({"[DATE]", "d"});
    doc.reverbType = 4;
    const auto lines = writeLines(doc);
    const auto it = std::find(lines.begin(), lines.end(), "[REVERB TYPE]");
    ASSERT_NE(it, lines.end());
    EXPECT_EQ(*(it + 1), "EQ ON,FRONT ALIGN");
    EXPECT_EQ(loadLines(lines).reverbType, 3);
}

TEST(DocumentLoader, LayoutFollowsTheChannelList) {
    const struct {
        const char* channels;
        int layout;
        int groups;
    } rows[] = {
        {"L,C,R,SR A,SBR,SBL,SL A,SL B,SR B", 11, 5},  // no Top Surr group
        {"L,C,R,SR A,SBR,SBL,SL A,EXSL,EXSR", 11, 5},
        {"L,C,R,SR A,SBR,SBL,SL A,SPBL,SPBR", 9, 5},
        {"L,C,R,SR A,SBR,SBL,SL A,TS", 8, 6},
        {"L,C,R,SR A,SL A,,,", 5, 3},  // a spreadsheet's padding adds no channels
    };
    for (const auto& row : rows) {
        const auto doc = loadLines(withChannels(row.channels));
        EXPECT_EQ(doc.layoutNumber, row.layout) << row.channels;
        EXPECT_EQ(doc.groupCount, row.groups) << row.channels;
    }
}

TEST(DocumentLoader, HeaderNameNotMarkerNumberPlacesABlock) {
    const auto doc = loadLines(withChannels(
        "L,C,R,SR A,SL A", {"[BAND]", "63", "", "[MEMO1]", "the surround", "", "[DATA1]",
                            headerRow("SR A"), kTimeRow, bandRow("63Hz", 4.0, 0.5), "", "[DATA2]",
                            headerRow("XX"), kTimeRow, bandRow("63Hz", 9.0, 0.5)}));
    EXPECT_TRUE(doc.positionHasData[0][3]);
    EXPECT_FALSE(doc.positionHasData[0][0]);
    EXPECT_FALSE(doc.positionHasData[0][1]);  // unknown name "XX" drops its block
    EXPECT_FLOAT_EQ(doc.reverbValues[0][3][0][0], 4.0f);
    EXPECT_EQ(doc.channelMemos[3], (Memo{"the surround"}));
    EXPECT_EQ(doc.positionsWithData[0].shortNames, (std::vector<std::string>{"SR A"}));
}

TEST(DocumentLoader, BandRowsReadWhatIsThereAndZeroTheRest) {
    std::string shortRow = "63Hz, 1.5,+2,-3.25,abc,7x,,8,9,10,11";
    std::string longField = "125Hz," + std::string(300, '7') + ",4";
    const auto doc =
        loadLines(withChannels("L,C,R,SR A,SL A", {"[BAND]", "63,125", "", "[DATA1]",
                                                   headerRow("L"), kTimeRow, shortRow, longField}));
    const Curve& a = doc.reverbValues[0][0][0];
    EXPECT_FLOAT_EQ(a[0], 1.5f);
    EXPECT_FLOAT_EQ(a[1], 2.0f);
    EXPECT_FLOAT_EQ(a[2], -3.25f);
    EXPECT_FLOAT_EQ(a[3], 0.0f);  // not a number
    EXPECT_FLOAT_EQ(a[4], 7.0f);  // the number in front of the text
    EXPECT_FLOAT_EQ(a[5], 0.0f);
    EXPECT_FLOAT_EQ(a[9], 11.0f);
    for (int t = 10; t < kTimePoints; ++t)
        EXPECT_FLOAT_EQ(a[t], 0.0f) << t;
    const Curve& b = doc.reverbValues[0][0][1];
    EXPECT_FLOAT_EQ(b[0], 0.0f);  // a field of 256 characters or more is skipped
    EXPECT_FLOAT_EQ(b[1], 4.0f);
}

TEST(DocumentLoader, MemoRules) {
    std::vector<std::string> lines = {"[DATE]", "d", "", "[FILEMEMO]"};
    for (int i = 0; i < 25; ++i)
        lines.push_back("line " + std::to_string(i));
    lines.insert(lines.end(), {"", "[CHANNEL]", "L,C,R,SR A,SL A", "", "[MEMO1]", "abc,,,", "", "",
                               "keeps inner blank", "", "[DATA1]", headerRow("L"), kTimeRow});
    const auto doc = loadLines(lines);
    ASSERT_EQ(doc.fileMemos[kReverbSection].size(), 20u);
    EXPECT_EQ(doc.fileMemos[kReverbSection][19], "line 19");
    EXPECT_EQ(doc.channelMemos[0], (Memo{"abc", "", "", "keeps inner blank"}));
}

TEST(DocumentLoader, MissingReverbMarkersFallBackToTheFirstInTheFile) {
    const auto doc =
        loadLines({"[DATE]", "d", "", "  \"Group Delay Characteristics\"", "", "[FILEMEMO]",
                   "group delay memo", "", "[CHANNEL]", "Front,Center", ""});
    EXPECT_EQ(doc.fileMemos[kReverbSection], (Memo{"group delay memo"}));
    EXPECT_EQ(doc.channelNames, (std::vector<std::string>{"Front", "Center"}));
    EXPECT_EQ(doc.fileMemos[kGroupDelaySection], (Memo{"group delay memo"}));
}

TEST(DocumentLoader, ReceivedTextStartsModifiedAndSkipsTheReverbMemo) {
    auto lines = smallDocumentLines();
    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(doc, lines, "New Data", nullptr));
    EXPECT_TRUE(doc.modified);
    EXPECT_TRUE(doc.isNewData());
    EXPECT_TRUE(doc.fileMemos[kReverbSection].empty());
    EXPECT_FALSE(loadLines(lines).modified);
}

TEST(DocumentLoader, GroupValuesAreTheEnergyMean) {
    // One flat 63 Hz curve per block: marker, channel and value.
    std::vector<std::string> blocks = {"[BAND]", "63", ""};
    for (const auto& [marker, channel, value] : {std::tuple{"[DATA1]", "L", 60.0},
                                                 {"[DATA3]", "R", 50.0},
                                                 {"[DATA2]", "C", 60.0},
                                                 {"[DATA4A]", "SR A", -3.0}}) {
        blocks.insert(blocks.end(),
                      {marker, headerRow(channel), kTimeRow, bandRow("63Hz", value, 0.0), ""});
    }
    auto lines = withChannels("L,C,R,SR A,SL A", blocks);
    const auto doc = loadLines(lines);
    EXPECT_NEAR(doc.groupValues[0][0][0][0], 57.40, 0.005);  // 60 and 50
    EXPECT_NEAR(doc.groupValues[0][1][0][5], 60.00, 0.005);  // the centre with itself
    EXPECT_TRUE(doc.groupHasData[1][2]);                     // one side only takes its values
    EXPECT_FALSE(doc.groupHasData[0][2]);
    EXPECT_FLOAT_EQ(doc.groupValues[1][2][0][0], -3.0f);
    // The variant-1-only group's memo is read but not written back.
    auto written = writeLines(doc);
    EXPECT_EQ(std::count(written.begin(), written.end(), "[MEMOPAIR3]"), 0);
    EXPECT_EQ(std::count(written.begin(), written.end(), "[MEMOPAIR1]"), 1);
}

TEST(DocumentLoader, GroupDelayRowsAndSpan) {
    auto doc = loadLines(smallDocumentLines());
    const GroupDelayData& gd = doc.groupDelay;
    EXPECT_EQ(gd.groupCount, 2);
    EXPECT_TRUE(gd.hasData[0][0]);
    EXPECT_TRUE(gd.hasData[0][1]);
    EXPECT_TRUE(gd.hasData[1][0]);
    EXPECT_FALSE(gd.hasData[1][1]);
    EXPECT_FLOAT_EQ(gd.values[0][1][2], 0.15f);
    EXPECT_FLOAT_EQ(gd.values[1][0][0], 1.0f);
    // The blank line after the offset line sets the span back to its default.
    EXPECT_DOUBLE_EQ(gd.span, 1.8);

    doc.groupDelayLines = {"[Before]", "Front,1",           "[After]",
                           "Front,2",  "(Offset = +2.5ms)", "last line is not read"};
    parseGroupDelay(doc);
    EXPECT_DOUBLE_EQ(doc.groupDelay.span, 2.5);
    // A name that is not a group of this layout is not read.
    doc.groupDelayLines = {"[Before]", "Top Surr,1", "Surround A,3", "[After]", ""};
    parseGroupDelay(doc);
    EXPECT_EQ(doc.groupDelay.groupCount, 1);
    EXPECT_TRUE(doc.groupDelay.hasData[0][2]);
}

TEST(DocumentLoader, PositionsWithoutDataAreWrittenAsBareMarkers) {
    const auto doc = loadLines(withChannels("L,C,R,SR A,SL A"));
    const auto lines = writeLines(doc);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[DATA5]"), 1);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[MEMO5]"), 0);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[DATA5A]"), 0);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "  \"TORVE Parameters\""), 1);
}

}  // namespace
}  // namespace sonalyx::test
