#include "retrieval/parameter_conversion.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>

#include "document/channel_name.h"
#include "support/golden.h"

namespace sonalyx {
namespace {

using Lines = std::vector<std::string>;
using Bytes = std::vector<std::uint8_t>;

// A converter that has seen the system information and a speaker setting for the
// configuration (all speakers present unless sp says otherwise).
ParameterConverter converterFor(int config, Bytes sp = {1, 2, 2, 1, 1, 0, 2, 0, 1},
                                int bandSelector = 0, int crossover = 1, int subwooferMode = 0,
                                Lines* settingRows = nullptr) {
    ParameterConverter converter;
    converter.setConfiguration(config, bandSelector);
    converter.convertSystemInfo(Bytes{static_cast<std::uint8_t>(crossover), 2});
    Lines ignored;
    converter.convertSpeakerSetting(subwooferMode, sp, settingRows ? *settingRows : ignored);
    return converter;
}

Lines speakerSetting(int config, const Bytes& sp, int crossover = 1, int subwooferMode = 0) {
    Lines lines;
    converterFor(config, sp, 0, crossover, subwooferMode, &lines);
    return lines;
}

Lines xCurve(int code) {
    ParameterConverter converter;
    converter.setConfiguration(5, 0);
    converter.convertSystemInfo(Bytes{1, static_cast<std::uint8_t>(code)});
    Lines lines;
    converter.convertEqList({}, 5, {}, lines);
    return lines;
}

using Items = std::vector<ReplyItem>;

Lines levels(ParameterConverter c, const Items& items) {
    Lines lines;
    c.convertLevelList(items, lines);
    return lines;
}

Lines distances(ParameterConverter c, const Items& items) {
    Lines lines;
    c.convertDistanceList(items, lines);
    return lines;
}

Lines standingWave(const Items& items) {
    Lines lines;
    ParameterConverter().convertStandingWaveList(items, lines);
    return lines;
}

Lines eq(ParameterConverter c, const Items& records, int perGroup, std::vector<int> memories) {
    Lines lines;
    c.convertEqList(records, perGroup, memories, lines);
    return lines;
}

Lines fallback() {
    ParameterConverter c = converterFor(5, {1, 2, 2, 0, 1}, 1);
    Lines lines;
    Bytes distance(32, 0);
    distance[0] = 1;
    distance[3] = 100;
    c.convertSingleDistance({0, distance}, lines);
    c.convertSingleLevel({0, Bytes(10, 2)}, lines);
    c.convertSingleEq(0, {0, Bytes{1, 2, 3, 4, 5, 6}}, lines);
    c.convertSingleEq(9, {0, Bytes{1}}, lines);
    c.finishFallback(lines);
    return lines;
}

Bytes withBytes(Bytes bytes, std::initializer_list<std::pair<size_t, std::uint8_t>> set) {
    for (const auto& [index, value] : set)
        bytes[index] = value;
    return bytes;
}

// Every conversion the emulator's receivers do not reach, by name; the rows they write are in
// tests/data/parameters/edge_cases.txt.
std::vector<test::GoldenSection> edgeCases() {
    const Bytes eqBody = {0, 1, 2, 3, 4, 0xFF, 0xFE, 0xFD, 0xFC, 0x02};
    Items eqRecords(5, {1, eqBody});
    eqRecords.insert(eqRecords.end(), 5, {2, eqBody});
    std::vector<test::GoldenSection> cases = {
        {"speaker setting: five bytes, configuration 5", speakerSetting(5, {1, 2, 2, 0, 1})},
        {"speaker setting: surr back 3 is small x 2", speakerSetting(7, {1, 2, 2, 3, 1})},
        {"speaker setting: configuration 11", speakerSetting(11, {1, 2, 0, 2, 2, 0, 1, 0, 1})},
        {"speaker setting: configuration 10, crossover 4",
         speakerSetting(10, {1, 2, 2, 4, 0, 0, 2, 0, 1}, 4)},
        {"speaker setting: configuration 9, six bytes, crossover 0",
         speakerSetting(9, {1, 1, 1, 1, 1, 2}, 0)},
        {"speaker setting: configuration 9, nine bytes carry no speaker-B",
         speakerSetting(9, {1, 1, 1, 1, 1, 2, 2, 2, 2})},
        {"speaker setting: unknown codes in hex",
         speakerSetting(6, {0x0C, 3, 0xAB, 5, 0x1F}, 0x2A)},
        {"speaker setting: subwoofer mode 2", speakerSetting(5, {1, 1, 1, 0, 2}, 1, 2)},
        {"levels: two subwoofers need a non-zero mode",
         levels(converterFor(5, {1, 1, 1, 0, 2}, 0, 1, 1), {{1, Bytes(15, 4)}})},
        {"levels: one subwoofer in mode 0",
         levels(converterFor(5, {1, 1, 1, 0, 2}), {{1, Bytes(15, 4)}})},
        {"levels: signed with a blank for zero",
         levels(converterFor(5), {{1, Bytes{0, 0xFD, 4, 1, 0x81, 0, 0, 2, 0, 0}}})},
        {"levels: not applicable and absent",
         levels(converterFor(7, {1, 2, 2, 2, 1}),
                {{1, withBytes(Bytes(10, 2), {{0, 0xFF}})}, {2, Bytes(10, 0xFE)}})},
        {"levels: long items reach the B surrounds and top surround",
         levels(converterFor(10),
                {{1, withBytes(Bytes(15, 0), {{10, 1}, {11, 2}, {13, 3}})}, {2, Bytes(10, 0)}})},
        {"distances: one-byte items with missing offsets",
         distances(converterFor(10),
                   {{1, Bytes{2, 0, 100, 0xFF, 50, 50, 60, 70, 70, 80, 90, 90}}})},
        {"distances: speaker-B absent",
         distances(converterFor(9, {1, 2, 2, 1, 1, 2}), {{1, withBytes(Bytes(32, 1), {{1, 0}})}})},
        {"distances: memory columns",
         distances(converterFor(5, {1, 0, 2, 0, 1}), {{3, withBytes(Bytes(32, 0), {{0, 1}})},
                                                      {5, withBytes(Bytes(32, 0), {{0, 1}})}})},
        // Main, Center and Sub Woofer filters (frequency, Q, attenuation), then the trim.
        {"standing wave: block rows",
         standingWave({{4, Bytes{2, 0, 0, 7, 32, 5,  0x81, 33, 0xF6, 0,    1, 1,  0, 2,
                                 2, 0, 3, 3, 4,  16, 0xFF, 0,  17,   0x7F, 1, 31, 0, 0xFA}}})},
        {"standing wave: a short item loses only the missing cells",
         standingWave({{1, Bytes{2, 0, 0}}})},
        {"eq: memory blocks with absent channels",
         eq(converterFor(5, {1, 0, 2, 0, 1}), eqRecords, 5, {1, 2})},
        {"eq: six bands, low set",
         eq(converterFor(6, {1, 2, 2, 2, 1}, 2), {{0, Bytes{1, 2}}}, 6, {1})},
        {"fallback: groups without memory columns", fallback()},
    };
    for (int code = 0; code < 6; ++code) {
        cases.push_back({"speaker setting: subwoofer mode 1, code " + std::to_string(code),
                         speakerSetting(5, {1, 1, 1, 0, static_cast<std::uint8_t>(code)}, 1, 1)});
    }
    for (int code : {7, 0, 3, 6, 9, 10})
        cases.push_back({"x-curve: code " + std::to_string(code), xCurve(code)});
    return cases;
}

TEST(ParameterConversion, EdgeCasesMatchGolden) {
    test::expectSectionsMatchGolden(test::testDataPath("parameters/edge_cases.txt"), edgeCases());
}

// The Left cell of a 16-bit distance item with the given unit and raw value.
std::string leftDistance(int unit, int raw, int multiplier = 1) {
    Bytes item(32, 0xFF);
    item[0] = static_cast<std::uint8_t>(multiplier);
    item[1] = static_cast<std::uint8_t>(unit);
    item[2] = static_cast<std::uint8_t>(raw >> 8);
    item[3] = static_cast<std::uint8_t>(raw);
    Lines lines;
    converterFor(5).convertDistanceList({{1, item}}, lines);
    const auto left = std::find_if(lines.begin(), lines.end(),
                                   [](const std::string& l) { return l.starts_with("Left,,"); });
    return left == lines.end() ? "(no Left row)" : left->substr(6);
}

TEST(ParameterDistance, UnitsAndRounding) {
    const struct {
        int unit, raw, multiplier;
        const char* cell;
    } rows[] = {
        {3, 350, 1, "0'03-1/2\""}, {3, 349, 1, "0'03\""},   {3, 15099, 1, "12'06-1/2\""},
        {1, 1234, 1, "12'04\""},   {1, 1246, 1, "12'06\""}, {1, 1204, 1, "12'00\""},
        {0, 345, 1, "3.45m"},      {0, 5, 1, "0.05m"},      {2, 34567, 1, "3.45m"},
        {0, 150, 3, "4.50m"},      {7, 150, 1, "---"},      {0, 150, -1, "---"},
        {0, 0xFFFF, 1, "---"},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(leftDistance(row.unit, row.raw, row.multiplier), row.cell)
            << "unit " << row.unit << " raw " << row.raw << " multiplier " << row.multiplier;
    }
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
    EXPECT_EQ(metres, "3.45m");
    EXPECT_EQ(lines[6], "Q,2.2,2.2,2.2,,Q,2.2,2.2,2.2,,Q,2.2,2.2,2.2");
}

// Which channels a fallback run asks shows in the fallback goldens; the names and the one
// configuration-dependent id do not.
TEST(ParameterFallback, ChannelIdsAndCodes) {
    EXPECT_EQ(converterFor(6, {1, 2, 0, 2, 1}).fallbackChannelId(5), kSurrBack);
    EXPECT_EQ(converterFor(7, {1, 2, 0, 2, 1}).fallbackChannelId(5), kSurrBackLeft);
    EXPECT_EQ(ParameterConverter::fallbackChannelCode(11), "EXSL");
    EXPECT_EQ(ParameterConverter::fallbackChannelCode(9), "");
}

TEST(ParameterFallback, ResetForgetsThePreviousRun) {
    ParameterConverter converter = converterFor(10);
    Lines ignored;
    converter.convertSingleEq(0, {0, Bytes(10, 0)}, ignored);
    converter.reset();
    EXPECT_FALSE(converter.fallbackChannelPresent(0));
    Lines lines;
    converter.finishFallback(lines);
    EXPECT_EQ(lines[0], "* Acoustic Cal EQ");
}

}  // namespace
}  // namespace sonalyx
