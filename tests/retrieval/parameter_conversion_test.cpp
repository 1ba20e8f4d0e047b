#include "retrieval/parameter_conversion.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>
#include <memory>

#include "document/channel_name.h"
#include "document/document_loader.h"
#include "document/parameter_rows.h"
#include "parameter_feed.h"
#include "support/golden.h"

namespace sonalyx {
namespace {

using ::testing::ElementsAre;
using ::testing::IsSupersetOf;
using Lines = std::vector<std::string>;
using Bytes = std::vector<std::uint8_t>;

Lines speakerSettingRows(int config, int subwooferMode, const Bytes& sp, int crossover = 1) {
    ParameterConverter converter;
    converter.setConfiguration(config, 0);
    converter.convertSystemInfo(Bytes{static_cast<std::uint8_t>(crossover), 2});
    Lines lines;
    converter.convertSpeakerSetting(subwooferMode, sp, lines);
    return lines;
}

bool contains(const Lines& lines, const std::string& line) {
    return std::find(lines.begin(), lines.end(), line) != lines.end();
}

// A converter that has seen an all-present speaker setting for the configuration.
ParameterConverter converterFor(int config, Bytes sp = {1, 2, 2, 1, 1, 0, 2, 0, 1},
                                int bandSelector = 0) {
    ParameterConverter converter;
    converter.setConfiguration(config, bandSelector);
    converter.convertSystemInfo(Bytes{1, 2});
    Lines ignored;
    converter.convertSpeakerSetting(0, sp, ignored);
    return converter;
}

// The row of one channel in a converted group, found by its label (below the group line when
// one is given).
std::string rowOf(const Lines& lines, const std::string& label, const std::string& group = "") {
    auto it = group.empty() ? lines.begin() : std::find(lines.begin(), lines.end(), group);
    for (; it != lines.end(); ++it) {
        if (it->rfind(label + ",", 0) == 0)
            return *it;
    }
    return "(no row " + label + ")";
}

// ---- speaker setting -------------------------------------------------------------------------

TEST(ParameterSpeakerSetting, FiveByteReplyInConfigurationFiveHasNoSurrBackRow) {
    EXPECT_THAT(speakerSettingRows(5, 0, {1, 2, 2, 0, 1}),
                ElementsAre("* Speaker Setting", "", "Front,,Large", "Center,,Small",
                            "Surround,,Small", "Sub Woofer,,Yes", "", "Crossover,,80Hz", ""));
}

TEST(ParameterSpeakerSetting, SurrBackThreeIsSmallTimesTwo) {
    EXPECT_TRUE(contains(speakerSettingRows(7, 0, {1, 2, 2, 3, 1}), "Surr Back,,Small x 2"));
}

TEST(ParameterSpeakerSetting, RowsFollowTheConfiguration) {
    EXPECT_THAT(speakerSettingRows(11, 0, {1, 2, 0, 2, 2, 0, 1, 0, 1}),
                ElementsAre("* Speaker Setting", "", "Front,,Large", "Center,,No",
                            "Surround A,,Small", "Surround B,,Large", "Surr Back,,Large x 1",
                            "Sub Woofer,,Plus", "", "Crossover,,80Hz", ""));
    EXPECT_THAT(speakerSettingRows(10, 0, {1, 2, 2, 4, 0, 0, 2, 0, 1}, 4),
                ElementsAre("* Speaker Setting", "", "Front,,Large", "Center,,Small",
                            "Surround A,,Small", "Surr Back,,Small x 1", "Sub Woofer,,No",
                            "Surround B,,Small", "Top Surr,,Large", "", "Crossover,,200Hz", ""));
    const Lines nine = speakerSettingRows(9, 0, {1, 1, 1, 1, 1, 2}, 0);
    EXPECT_TRUE(contains(nine, "Speaker-B,,Small"));
    EXPECT_TRUE(contains(nine, "Crossover,,50Hz"));
    // A 9-byte reply carries no Speaker-B size.
    EXPECT_TRUE(contains(speakerSettingRows(9, 0, {1, 1, 1, 1, 1, 2, 2, 2, 2}), "Speaker-B,,No"));
}

TEST(ParameterSpeakerSetting, UnknownCodesAreWrittenInUpperCaseHex) {
    const Lines lines = speakerSettingRows(6, 0, {0x0C, 3, 0xAB, 5, 0x1F}, 0x2A);
    EXPECT_THAT(lines, IsSupersetOf({"Front,,C", "Center,,AB", "Surround,,3", "Surr Back,,5",
                                     "Sub Woofer,,1F", "Crossover,,2A"}));
}

TEST(ParameterSpeakerSetting, SubwooferModeOneHasItsOwnCoding) {
    const std::vector<std::string> expected = {"Plus x 2", "Plus x 1", "Yes x 2",
                                               "Yes x 1",  "No",       "5"};
    for (int code = 0; code < 6; ++code) {
        EXPECT_TRUE(
            contains(speakerSettingRows(5, 1, {1, 1, 1, 0, static_cast<std::uint8_t>(code)}),
                     "Sub Woofer,," + expected[static_cast<std::size_t>(code)]))
            << code;
    }
    EXPECT_TRUE(contains(speakerSettingRows(5, 2, {1, 1, 1, 0, 2}), "Sub Woofer,,Plus"));
}

TEST(ParameterSpeakerSetting, TwoSubwooferVariantNeedsANonZeroMode) {
    Lines lines;
    ParameterConverter two = converterFor(5, {1, 1, 1, 0, 2});
    Lines ignored;
    two.convertSpeakerSetting(1, Bytes{1, 1, 1, 0, 2}, ignored);
    two.convertLevelList({{1, Bytes(15, 4)}}, lines);
    EXPECT_EQ(rowOf(lines, "Sub Woofer 1"), "Sub Woofer 1,,+2.0dB");
    EXPECT_EQ(rowOf(lines, "Sub Woofer 2"), "Sub Woofer 2,,+2.0dB");

    lines.clear();
    converterFor(5, {1, 1, 1, 0, 2}).convertLevelList({{1, Bytes(15, 4)}}, lines);
    EXPECT_EQ(rowOf(lines, "Sub Woofer"), "Sub Woofer,,+2.0dB");
    EXPECT_FALSE(contains(lines, "Sub Woofer 1,,+2.0dB"));
}

// ---- X-curve -----------------------------------------------------------------------------------

Lines eqAndXCurve(int xCurve) {
    ParameterConverter converter;
    converter.setConfiguration(5, 0);
    converter.convertSystemInfo(Bytes{1, static_cast<std::uint8_t>(xCurve)});
    Lines lines;
    converter.convertEqList({}, 5, {}, lines);
    return lines;
}

TEST(ParameterXCurve, CodeSevenWritesNoGroup) {
    EXPECT_THAT(eqAndXCurve(7), ElementsAre("* Acoustic Cal EQ", ""));
}

TEST(ParameterXCurve, ValueRowFollowsTheGroupLine) {
    EXPECT_THAT(eqAndXCurve(0), ElementsAre("* Acoustic Cal EQ", "", "* X-Curve", ",,OFF", ""));
    EXPECT_EQ(eqAndXCurve(3)[3], ",,-1.5dB/oct");
    EXPECT_EQ(eqAndXCurve(6)[3], ",,-3.0dB/oct");
    EXPECT_EQ(eqAndXCurve(9)[3], ",,9");
    EXPECT_EQ(eqAndXCurve(10)[3], ",,A");
}

// ---- levels ----------------------------------------------------------------------------------

TEST(ParameterLevel, SignedFormHasABlankForZero) {
    Lines lines;
    converterFor(5).convertLevelList({{1, Bytes{0, 0xFD, 4, 1, 0x81, 0, 0, 2, 0, 0}}}, lines);
    EXPECT_EQ(rowOf(lines, "Left"), "Left,, 0.0dB");
    EXPECT_EQ(rowOf(lines, "Right"), "Right,,-1.5dB");
    EXPECT_EQ(rowOf(lines, "Surround L A"), "Surround L A,,+2.0dB");
    EXPECT_EQ(rowOf(lines, "Center"), "Center,,-63.5dB");
    EXPECT_EQ(rowOf(lines, "Sub Woofer"), "Sub Woofer,,+1.0dB");
}

TEST(ParameterLevel, NotApplicableWritesNoCellAndAbsentWritesDashes) {
    // Surround back "Large x 1": the right surround back speaker is not there.
    ParameterConverter converter = converterFor(7, {1, 2, 2, 2, 1});
    Lines lines;
    Bytes first(10, 2);
    first[0] = 0xFF;
    converter.convertLevelList({{1, first}, {2, Bytes(10, 0xFE)}}, lines);
    EXPECT_EQ(lines[2], ",,[M1],[M2]");
    EXPECT_EQ(rowOf(lines, "Left"), "Left,,-1.0dB");
    EXPECT_EQ(rowOf(lines, "Surr Back R"), "Surr Back R,,---,---");
    EXPECT_EQ(rowOf(lines, "Surr Back L"), "Surr Back L,,+1.0dB,-1.0dB");
}

TEST(ParameterLevel, LongItemsReachTheBSurroundsAndTopSurround) {
    Bytes item(15, 0);
    item[10] = 1;
    item[11] = 2;
    item[13] = 3;
    Lines lines;
    converterFor(10).convertLevelList({{1, item}, {2, Bytes(10, 0)}}, lines);
    EXPECT_EQ(rowOf(lines, "Surround L B"), "Surround L B,,+0.5dB,---");
    EXPECT_EQ(rowOf(lines, "Surround R B"), "Surround R B,,+1.0dB,---");
    EXPECT_EQ(rowOf(lines, "Top Surround"), "Top Surround,,+1.5dB,---");
}

// ---- distances -------------------------------------------------------------------------------

// The Left cell of a 16-bit distance item with the given unit and raw value.
std::string leftDistance(int unit, int raw, int multiplier = 1) {
    Bytes item(32, 0xFF);
    item[0] = static_cast<std::uint8_t>(multiplier);
    item[1] = static_cast<std::uint8_t>(unit);
    item[2] = static_cast<std::uint8_t>(raw >> 8);
    item[3] = static_cast<std::uint8_t>(raw);
    Lines lines;
    converterFor(5).convertDistanceList({{1, item}}, lines);
    return rowOf(lines, "Left").substr(5);
}

TEST(ParameterDistance, InchesWithAndWithoutTheHalf) {
    EXPECT_EQ(leftDistance(3, 350), ",0'03-1/2\"");
    EXPECT_EQ(leftDistance(3, 349), ",0'03\"");
    EXPECT_EQ(leftDistance(3, 15099), ",12'06-1/2\"");
}

TEST(ParameterDistance, HundredthsOfAFootRoundTheInches) {
    EXPECT_EQ(leftDistance(1, 1234), ",12'04\"");
    EXPECT_EQ(leftDistance(1, 1246), ",12'06\"");  // 46 x 12 = 552: 5.52 rounds up
    EXPECT_EQ(leftDistance(1, 1204), ",12'00\"");  // 48: 0.48 stays
}

TEST(ParameterDistance, MetricUnits) {
    EXPECT_EQ(leftDistance(0, 345), ",3.45m");
    EXPECT_EQ(leftDistance(0, 5), ",0.05m");
    EXPECT_EQ(leftDistance(2, 34567), ",3.45m");
    EXPECT_EQ(leftDistance(0, 150, 3), ",4.50m");
    EXPECT_EQ(leftDistance(7, 150), ",---");
    EXPECT_EQ(leftDistance(0, 150, -1), ",---");
}

TEST(ParameterDistance, NumbersIgnoreTheDesktopLocale) {
    const char* previous = std::setlocale(LC_ALL, nullptr);
    const std::string saved = previous ? previous : "C";
    if (std::setlocale(LC_ALL, "de_DE.UTF-8") == nullptr)
        GTEST_SKIP() << "no German locale installed";
    const std::string metres = leftDistance(0, 345);
    Lines lines;
    ParameterConverter().convertStandingWaveList({{1, Bytes(28, 1)}}, lines);
    std::setlocale(LC_ALL, saved.c_str());
    EXPECT_EQ(metres, ",3.45m");
    EXPECT_EQ(lines[6], "Q,2.2,2.2,2.2,,Q,2.2,2.2,2.2,,Q,2.2,2.2,2.2");
}

TEST(ParameterDistance, AbsentValuesAndMissingOffsets) {
    EXPECT_EQ(leftDistance(0, 0xFFFF), ",---");

    Bytes oneByte = {2, 0, 100, 0xFF, 50, 50, 60, 70, 70, 80, 90, 90};
    Lines lines;
    converterFor(10).convertDistanceList({{1, oneByte}}, lines);
    EXPECT_EQ(rowOf(lines, "Left"), "Left,,2.00m");
    EXPECT_EQ(rowOf(lines, "Right"), "Right,,---");
    EXPECT_EQ(rowOf(lines, "Surround L B"), "Surround L B,,---");
    EXPECT_EQ(rowOf(lines, "Top Surround"), "Top Surround,,---");
    EXPECT_EQ(rowOf(lines, "Sub Woofer"), "Sub Woofer,,1.60m");

    Bytes word(32, 1);
    word[0] = 1;
    word[1] = 0;
    lines.clear();
    converterFor(9, {1, 2, 2, 1, 1, 2}).convertDistanceList({{1, word}}, lines);
    EXPECT_EQ(rowOf(lines, "Speaker-B L"), "Speaker-B L,,---");
    EXPECT_EQ(rowOf(lines, "Left"), "Left,,2.57m");
}

TEST(ParameterDistance, GroupLayout) {
    Lines lines;
    Bytes item(32, 0);
    item[0] = 1;
    converterFor(5, {1, 0, 2, 0, 1}).convertDistanceList({{3, item}, {5, item}}, lines);
    EXPECT_THAT(lines,
                ElementsAre("* Speaker Distance", "", ",,[M3],[M5]", "Left,,0.00m,0.00m",
                            "Center,,0.00m,0.00m", "Right,,0.00m,0.00m", "Surround R A,,---,---",
                            "Surround L A,,---,---", "Sub Woofer,,0.00m,0.00m", ""));
}

// ---- standing wave control -----------------------------------------------------------------

TEST(ParameterStandingWave, BlockRows) {
    Bytes item = {2, 0,  0,    7, 32, 5,    0x81, 33, 0xF6,  // Main
                  0, 1,  1,    0, 2,  2,    0,    3,  3,     // Center
                  4, 16, 0xFF, 0, 17, 0x7F, 1,    31, 0};    // Sub Woofer
    item.push_back(0xFA);                                    // trim
    Lines lines;
    ParameterConverter().convertStandingWaveList({{4, item}}, lines);
    EXPECT_THAT(
        lines,
        ElementsAre("* Standing Wave Control", "", "[M4]",
                    "Main,,,,,Center,,,,,Sub Woofer,,Trim,-3.0dB",
                    "No.,Filter 1,Filter 2,Filter 3,,No.,Filter 1,Filter 2,Filter 3,,No.,"
                    "Filter 1,Filter 2,Filter 3",
                    "Freq,63Hz,250Hz,---,,Freq,65Hz,68Hz,71Hz,,Freq,125Hz,131Hz,239Hz",
                    "Q,2.0,3.0,0.0,,Q,2.2,2.4,2.6,,Q,1.8,27.4,2.0",
                    "ATT,1.0dB,3.5dB,63.5dB,,ATT,0.0dB,0.0dB,0.0dB,,ATT,2.0dB,0.0dB,0.5dB", ""));
}

TEST(ParameterStandingWave, ShortItemLosesOnlyTheMissingCells) {
    Lines lines;
    ParameterConverter().convertStandingWaveList({{1, Bytes{2, 0, 0}}}, lines);
    EXPECT_EQ(lines[3], "Main,,,,,Center,,,,,Sub Woofer,,Trim,---");
    EXPECT_EQ(lines[5], "Freq,63Hz,---,---,,Freq,---,---,---,,Freq,---,---,---");
}

// ---- acoustic calibration EQ ---------------------------------------------------------------

TEST(ParameterEq, MemoryBlocks) {
    ParameterConverter converter = converterFor(5, {1, 0, 2, 0, 1});
    const Bytes body = {0, 1, 2, 3, 4, 0xFF, 0xFE, 0xFD, 0xFC, 0x02};
    std::vector<ReplyItem> records;
    for (int m = 0; m < 2; ++m) {
        for (int r = 0; r < 5; ++r)
            records.push_back({m + 1, body});
    }
    Lines lines;
    converter.convertEqList(records, 5, {1, 2}, lines);
    ASSERT_GE(lines.size(), 19u);
    EXPECT_THAT(
        Lines(lines.begin(), lines.begin() + 11),
        ElementsAre("* Acoustic Cal EQ", "",
                    "[M1],,63Hz,125Hz,250Hz,500Hz,1kHz,2kHz,4kHz,8kHz,16kHz,Trim",
                    "Front Ch Align,,",
                    "Left,, 0.0dB,+0.5dB,+1.0dB,+1.5dB,+2.0dB,-0.5dB,-1.0dB,-1.5dB,-2.0dB,"
                    "+1.0dB",
                    "Center,, 0.0dB,+0.5dB,+1.0dB,+1.5dB,+2.0dB,-0.5dB,-1.0dB,-1.5dB,-2.0dB,"
                    "+1.0dB",
                    "Right,, 0.0dB,+0.5dB,+1.0dB,+1.5dB,+2.0dB,-0.5dB,-1.0dB,-1.5dB,-2.0dB,"
                    "+1.0dB",
                    "Surround R,,---,---,---,---,---,---,---,---,---,---",
                    "Surround L,,---,---,---,---,---,---,---,---,---,---", "",
                    "[M2],,63Hz,125Hz,250Hz,500Hz,1kHz,2kHz,4kHz,8kHz,16kHz,Trim"));
    EXPECT_EQ(lines[11], "Custom1,,");
}

TEST(ParameterEq, SixValueBandSetsAndChannelLabels) {
    ParameterConverter converter = converterFor(6, {1, 2, 2, 2, 1}, 2);
    Lines lines;
    converter.convertEqList({{0, Bytes{1, 2}}}, 6, {1}, lines);
    EXPECT_EQ(lines[2], "[M1],,40Hz,125Hz,250Hz,4kHz,13kHz,Trim");
    EXPECT_EQ(lines[3], "All Ch Adjust,,");
    EXPECT_EQ(lines[4], "Left,,+0.5dB,+1.0dB,---,---,---,---");
    EXPECT_EQ(rowOf(lines, "Surr Back"), "Surr Back,,---,---,---,---,---,---");
    EXPECT_EQ(rowOf(lines, "Surround L"), "Surround L,,---,---,---,---,---,---");
}

// ---- fallback --------------------------------------------------------------------------------

TEST(ParameterFallback, PresentChannelsComeFromTheSpeakerSetting) {
    const ParameterConverter six = converterFor(6, {1, 2, 0, 2, 1});
    EXPECT_TRUE(six.fallbackChannelPresent(0));
    EXPECT_FALSE(six.fallbackChannelPresent(4));  // center "No"
    EXPECT_TRUE(six.fallbackChannelPresent(5));
    EXPECT_FALSE(six.fallbackChannelPresent(6));  // "Large x 1"
    EXPECT_EQ(six.fallbackChannelId(5), kSurrBack);
    const ParameterConverter ten = converterFor(10, {1, 2, 2, 3, 1, 0, 2, 0, 1});
    EXPECT_TRUE(ten.fallbackChannelPresent(6));
    for (int index : {9, 10, 13, 15, -1})
        EXPECT_FALSE(ten.fallbackChannelPresent(index)) << index;
    EXPECT_TRUE(ten.fallbackChannelPresent(11));
    EXPECT_TRUE(ten.fallbackChannelPresent(14));
    EXPECT_EQ(ParameterConverter::fallbackChannelCode(11), "EXSL");
    EXPECT_EQ(ParameterConverter::fallbackChannelCode(9), "");
}

TEST(ParameterFallback, GroupsWithoutMemoryColumns) {
    ParameterConverter converter = converterFor(5, {1, 2, 2, 0, 1}, 1);
    Lines lines;
    Bytes distance(32, 0);
    distance[0] = 1;
    distance[3] = 100;
    converter.convertSingleDistance({0, distance}, lines);
    converter.convertSingleLevel({0, Bytes(10, 2)}, lines);
    converter.convertSingleEq(0, {0, Bytes{1, 2, 3, 4, 5, 6}}, lines);
    converter.convertSingleEq(9, {0, Bytes{1}}, lines);
    converter.finishFallback(lines);
    EXPECT_THAT(
        lines, ElementsAre("* Speaker Distance", "Left,,1.00m", "Center,,0.00m", "Right,,0.00m",
                           "Surround R A,,0.00m", "Surround L A,,0.00m", "Sub Woofer,,0.00m", "",
                           "* Channel Level", "Left,,+1.0dB", "Center,,+1.0dB", "Right,,+1.0dB",
                           "Surround R A,,+1.0dB", "Surround L A,,+1.0dB", "Sub Woofer,,+1.0dB", "",
                           "* Acoustic Cal EQ", "", ",,63Hz,125Hz,250Hz,4kHz,11.3kHz,Trim",
                           "Left,,+0.5dB,+1.0dB,+1.5dB,+2.0dB,+2.5dB,+3.0dB", "", "* X-Curve",
                           ",,-1.0dB/oct", ""));
}

TEST(ParameterConverterState, ResetForgetsThePreviousRun) {
    ParameterConverter converter = converterFor(10);
    converter.convertSingleEq(0, {0, Bytes(10, 0)}, *std::make_unique<Lines>());
    converter.reset();
    EXPECT_FALSE(converter.fallbackChannelPresent(0));
    Lines lines;
    converter.finishFallback(lines);
    EXPECT_EQ(lines[0], "* Acoustic Cal EQ");
}

// ---- received row sets -----------------------------------------------------------------------

struct RowSet {
    const char* name;
    emulator::ParameterProfile profile;
};

void PrintTo(const RowSet& set, std::ostream* os) {
    *os << set.name;
}

emulator::ParameterProfile profile(int config, int spLength, int unit, bool oneByte, int xCurve) {
    emulator::ParameterProfile p;
    p.configCode = config;
    p.speakerSettingLength = spLength;
    p.distanceUnit = unit;
    p.distanceOneByte = oneByte;
    p.xCurveCode = xCurve;
    return p;
}

std::vector<RowSet> rowSets() {
    std::vector<RowSet> sets;
    sets.push_back({"config5", profile(5, 5, 3, false, 7)});
    RowSet nine{"config9", profile(9, 6, 1, false, 9)};
    nine.profile.bandSelector = 1;
    nine.profile.subwooferMode = 1;
    nine.profile.subwooferCode = 0;
    nine.profile.crossoverCode = 3;
    sets.push_back(nine);
    RowSet ten{"config10", profile(10, 9, 0, true, 10)};
    ten.profile.levelItemLength = 15;
    sets.push_back(ten);
    RowSet eleven{"config11", profile(11, 9, 2, false, 2)};
    eleven.profile.levelItemLength = 15;
    eleven.profile.bandSelector = 2;
    eleven.profile.surrBackSize = 4;
    sets.push_back(eleven);
    return sets;
}

class ParameterRowSet : public ::testing::TestWithParam<RowSet> {};

TEST_P(ParameterRowSet, ListRepliesMatchGolden) {
    test::expectMatchesGolden(test::testDataPath("parameters/") + GetParam().name + ".txt",
                              test::convertListReplies(GetParam().profile));
}

TEST_P(ParameterRowSet, FallbackRepliesMatchGolden) {
    test::expectMatchesGolden(test::testDataPath("parameters/") + GetParam().name + "_fallback.txt",
                              test::convertFallbackReplies(GetParam().profile));
}

// The row of the first grid line whose field 0 is marker, or -1.
int markerRow(const ParameterGrid& grid, const std::string& marker) {
    for (int r = 0; r < grid.rowCount(); ++r) {
        if (grid.cell(r, 0) == marker)
            return r;
    }
    return -1;
}

bool isDisplayDistance(const std::string& cell) {
    if (cell == "---")
        return true;
    const bool feetAndInches = cell.find("' ") != std::string::npos && cell.back() == '"';
    const bool metres = cell.size() >= 5 && cell.back() == 'm' && cell[cell.size() - 4] == '.';
    return feetAndInches || metres;
}

bool isDecibels(const std::string& cell) {
    return cell == "---" || (cell.size() >= 6 && cell.substr(cell.size() - 2) == "dB" &&
                             (cell[0] == ' ' || cell[0] == '+' || cell[0] == '-'));
}

// Checks one memory-column block (distance or level) the way the sheet drawers read it.
void expectMemoryColumns(const ParameterGrid& grid, const std::string& marker, int memories,
                         bool (*cellOk)(const std::string&)) {
    const int r = markerRow(grid, marker);
    ASSERT_GE(r, 0) << marker;
    ASSERT_EQ(grid.cell(r + 2, 2), "[M1]") << marker;
    EXPECT_EQ(grid.cell(r + 2, 1 + memories), "[M" + std::to_string(memories) + "]");
    int rows = 0;
    for (int row = r + 3; !grid.cell(row, 0).empty(); ++row, ++rows) {
        for (int m = 1; m <= memories; ++m) {
            EXPECT_TRUE(cellOk(grid.cell(row, m + 1)))
                << marker << " " << grid.cell(row, 0) << " [M" << m << "] '"
                << grid.cell(row, m + 1) << "'";
        }
        EXPECT_TRUE(grid.cell(row, memories + 2).empty());
    }
    EXPECT_GE(rows, 6) << marker;
}

TEST_P(ParameterRowSet, ReceivedDocumentLoadsAndEveryRowParses) {
    const emulator::ParameterProfile& p = GetParam().profile;
    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(doc, test::documentWithParameters(test::convertListReplies(p)),
                                     std::string(kNewDataName), nullptr));
    EXPECT_TRUE(doc.sectionLoaded[kParametersSection]);

    ParameterGrid grid;
    ASSERT_TRUE(ParseParameterRows(doc.parameterLines, grid));
    expectMemoryColumns(grid, "* Speaker Distance", p.memoryCount, isDisplayDistance);
    expectMemoryColumns(grid, "* Channel Level", p.memoryCount, isDecibels);
    EXPECT_GE(grid.longestDistanceText, 5);

    const int setting = markerRow(grid, "* Speaker Setting");
    ASSERT_GE(setting, 0);
    int row = setting + 1;
    for (; grid.cell(row, 0) != "Crossover" && row < grid.rowCount(); ++row) {
        if (!grid.cell(row, 0).empty()) {
            EXPECT_FALSE(grid.cell(row, 2).empty()) << grid.cell(row, 0);
        }
    }
    EXPECT_LT(row, grid.rowCount());

    const int eq = markerRow(grid, "* Acoustic Cal EQ");
    ASSERT_GE(eq, 0);
    const int values = p.bandSelector == 0 ? 10 : 6;
    int blocks = 0;
    for (int r = eq + 2; grid.cell(r, 0).rfind("[M", 0) == 0; ++blocks) {
        EXPECT_EQ(grid.cell(r, 0), "[M" + std::to_string(blocks + 1) + "]");
        EXPECT_EQ(grid.cell(r, 1 + values), "Trim");
        for (r += 2; !grid.cell(r, 0).empty(); ++r) {
            for (int c = 2; c <= 1 + values; ++c)
                EXPECT_TRUE(isDecibels(grid.cell(r, c))) << grid.cell(r, 0) << " " << c;
        }
        ++r;
    }
    EXPECT_EQ(blocks, p.memoryCount);

    const int xCurve = markerRow(grid, "* X-Curve");
    if (p.xCurveCode == 7) {
        EXPECT_EQ(xCurve, -1);
    } else {
        ASSERT_GE(xCurve, 0);
        EXPECT_FALSE(grid.cell(xCurve + 1, 2).empty());
    }

    const int standingWave = markerRow(grid, "* Standing Wave Control");
    ASSERT_GE(standingWave, 0);
    for (int m = 0; m < p.memoryCount; ++m) {
        const int block = standingWave + 2 + 7 * m;
        EXPECT_EQ(grid.cell(block, 0), "[M" + std::to_string(m + 1) + "]");
        EXPECT_EQ(grid.cell(block + 1, 12), "Trim");
        for (int c : {1, 2, 3, 6, 7, 8, 11, 12, 13})
            EXPECT_EQ(grid.cell(block + 3, c).substr(grid.cell(block + 3, c).size() - 2), "Hz");
    }
}

TEST_P(ParameterRowSet, FallbackDocumentLoadsWithoutMemoryColumns) {
    MeasurementDocument doc;
    ASSERT_TRUE(DocumentLoader::load(
        doc, test::documentWithParameters(test::convertFallbackReplies(GetParam().profile)),
        std::string(kNewDataName), nullptr));
    EXPECT_TRUE(doc.sectionLoaded[kParametersSection]);
    ParameterGrid grid;
    ASSERT_TRUE(ParseParameterRows(doc.parameterLines, grid));
    for (const char* marker : {"* Speaker Distance", "* Channel Level"}) {
        const int r = markerRow(grid, marker);
        ASSERT_GE(r, 0);
        EXPECT_NE(grid.cell(r + 2, 2), "[M1]");
        EXPECT_EQ(grid.cell(r + 1, 0), "Left");
    }
    const int distance = markerRow(grid, "* Speaker Distance");
    for (int r = distance + 1; !grid.cell(r, 0).empty(); ++r)
        EXPECT_TRUE(isDisplayDistance(grid.cell(r, 2))) << grid.cell(r, 0);
}

INSTANTIATE_TEST_SUITE_P(Configurations, ParameterRowSet, ::testing::ValuesIn(rowSets()),
                         [](const auto& info) { return std::string(info.param.name); });

// ---- emulator bodies -------------------------------------------------------------------------

TEST(ParameterReplies, BodyLengthsFollowTheProfile) {
    emulator::ParameterProfile p;
    for (int length : {5, 6, 9}) {
        p.speakerSettingLength = length;
        EXPECT_EQ(emulator::speakerSettingReply(p).body.size(), static_cast<size_t>(length));
    }
    p.configCode = 11;
    p.memoryCount = 4;
    const auto groups = emulator::eqAllReply(p);
    ASSERT_EQ(groups.size(), 4u);
    EXPECT_EQ(groups[0].size(), 9u);
    EXPECT_EQ(groups[3].back().prefix, 4);
    EXPECT_EQ(emulator::distanceAllReply(p)[0].body.size(), 32u);
    p.distanceOneByte = true;
    EXPECT_EQ(emulator::distanceAllReply(p)[2].body.size(), 12u);
    EXPECT_EQ(emulator::distanceAllReply(p)[2].attribute, 3);
    p.levelItemLength = 15;
    EXPECT_EQ(emulator::levelAllReply(p)[0].body.size(), 15u);
    EXPECT_EQ(emulator::standingWaveAllReply(p)[1].body.size(), 28u);
    EXPECT_TRUE(emulator::singleEqReply(p, "XX").body.empty());
    EXPECT_EQ(emulator::singleEqReply(p, "EXSR").body.size(), 10u);
    p.bandSelector = 1;
    EXPECT_EQ(emulator::singleEqReply(p, "FL").body.size(), 6u);
}

TEST(ParameterReplies, EdgeValuesReachTheConversion) {
    const Lines inches = test::convertListReplies(profile(5, 5, 3, false, 2));
    EXPECT_EQ(rowOf(inches, "Left", "* Speaker Distance").substr(0, 16), "Left,,0'03-1/2\",");
    EXPECT_EQ(rowOf(inches, "Right", "* Speaker Distance").substr(0, 13), "Right,,0'03\",");
    EXPECT_EQ(rowOf(inches, "Left", "* Channel Level").substr(0, 13), "Left,, 0.0dB,");
    const Lines feet = test::convertListReplies(profile(7, 5, 1, false, 2));
    EXPECT_EQ(rowOf(feet, "Left", "* Speaker Distance").substr(0, 13), "Left,,12'04\",");
    emulator::ParameterProfile back = profile(7, 5, 0, false, 2);
    back.surrBackSize = 3;
    EXPECT_TRUE(contains(test::convertListReplies(back), "Surr Back,,Small x 2"));
}

}  // namespace
}  // namespace sonalyx
