#include "retrieval/reverb_converter.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace sonalyx {
namespace {

using Lines = std::vector<std::string>;
using Bytes = std::vector<std::uint8_t>;

// A band record of 32 values, the first two given, the rest 0.
Bytes record(std::uint16_t first, std::uint16_t second) {
    Bytes bytes(64, 0);
    bytes[0] = static_cast<std::uint8_t>(first >> 8);
    bytes[1] = static_cast<std::uint8_t>(first & 0xFF);
    bytes[2] = static_cast<std::uint8_t>(second >> 8);
    bytes[3] = static_cast<std::uint8_t>(second & 0xFF);
    return bytes;
}

std::string firstFields(const std::string& row, int count) {
    size_t pos = 0;
    for (int i = 0; i < count && pos != std::string::npos; ++i)
        pos = row.find(',', pos + 1);
    return row.substr(0, pos);
}

Lines headerFor(int config, int bandSelector, int reverbType) {
    ReverbConverter converter;
    converter.setConfiguration(config, bandSelector, reverbType);
    Lines lines;
    converter.writeHeader(lines);
    return lines;
}

TEST(ReverbHeader, NamesChannelsBandsAndReverbType) {
    EXPECT_EQ(headerFor(6, 1, 2),
              (Lines{"[CHANNEL]", "L,C,R,SR A,SB,SL A", "", "[BAND]", "63,125,250,1k,4k,11.3k", "",
                     "[REVERB TYPE]", "EQ ON,ALL CH ADJUST", ""}));
    EXPECT_EQ(headerFor(10, 0, 0)[1], "L,C,R,SR A,SBR,SBL,SL A,SL B,SR B,TS");
    EXPECT_EQ(headerFor(10, 0, 0)[4], "63,125,250,500,1k,2k,4k,8k,16k");
    EXPECT_EQ(headerFor(10, 0, 0)[7], "EQ OFF");
    EXPECT_EQ(headerFor(11, 2, 0)[1], "L,C,R,SR A,SBR,SBL,SL A,SL B,SR B");
    EXPECT_EQ(headerFor(11, 2, 0)[4], "40,125,250,1k,4k,13k");
    EXPECT_EQ(headerFor(8, 0, 0)[1], "L,C,R,SR A,SBR,SBL,SL A,SPBL,SPBR");
}

TEST(ReverbHeader, ReverbTypesFourAndThreeReadAlike) {
    EXPECT_EQ(headerFor(5, 0, 3)[7], "EQ ON,FRONT ALIGN");
    EXPECT_EQ(headerFor(5, 0, 4)[7], "EQ ON,FRONT ALIGN");
    EXPECT_EQ(headerFor(5, 0, 1)[7], "EQ ON,SYMMETRY");
    EXPECT_EQ(headerFor(5, 0, 5)[7], "EQ ON,CUSTOM");
    EXPECT_EQ(headerFor(5, 0, 9)[7], "EQ ON,");
}

TEST(ReverbBlock, WritesSignedHundredthsWithTheSignOutsideTheNumber) {
    ReverbConverter converter;
    converter.setConfiguration(5, 0, 0);
    Bytes body;
    for (auto [a, b] : {std::pair<std::uint16_t, std::uint16_t>{0xFF38, 0x00C8},
                        {0x8000, 0x7FFF},
                        {0xFFFF, 0x0001},
                        {0x0000, 0x04D2}}) {
        const Bytes r = record(a, b);
        body.insert(body.end(), r.begin(), r.end());
    }
    Lines lines;
    converter.writeDataBlock(1, false, true, body, lines);
    ASSERT_EQ(lines.size(), 10u);
    EXPECT_EQ(firstFields(lines[5], 3), "63Hz,-2.00,2.00");
    EXPECT_EQ(firstFields(lines[6], 3), "125Hz,-327.68,327.67");
    EXPECT_EQ(firstFields(lines[7], 3), "250Hz,-0.01,0.01");
    EXPECT_EQ(firstFields(lines[8], 3), "500Hz,0.00,12.34");
    EXPECT_EQ(std::count(lines[5].begin(), lines[5].end(), ','), 32);
    EXPECT_TRUE(lines[5].ends_with(",0.00,0.00"));
    EXPECT_EQ(lines[9], "");
}

TEST(ReverbBlock, SixBandBodyWithTheLowBandSet) {
    ReverbConverter converter;
    converter.setConfiguration(7, 2, 0);
    const Bytes body(384, 0);
    Lines lines;
    converter.writeDataBlock(4, false, true, body, lines);
    ASSERT_EQ(lines.size(), 2u + 1u + 2u + 6u + 1u);
    EXPECT_EQ(lines[0], "[MEMO4]");
    EXPECT_EQ(lines[2], "[DATA4]");
    EXPECT_TRUE(lines[3].starts_with("SR A,0,1,2,")) << lines[3];
    EXPECT_TRUE(lines[3].ends_with(",30,31"));
    EXPECT_EQ(lines[4],
              "Time[msec],5,10,15,20,25,30,35,40,45,50,55,60,65,70,75,80,85,90,95,100,105,110,115,"
              "120,125,130,135,140,145,150,155,160");
    EXPECT_TRUE(lines[5].starts_with("40Hz,0.00,"));
    EXPECT_TRUE(lines[10].starts_with("13kHz,"));
    EXPECT_EQ(lines[11], "");
}

TEST(ReverbBlock, AMeasuredAndAfterPairShareOneHeading) {
    ReverbConverter converter;
    converter.setConfiguration(5, 0, 0);
    const Bytes body(576, 0);
    Lines lines;
    converter.writeDataBlock(2, false, true, body, lines);
    converter.writeDataBlock(2, true, false, body, lines);
    converter.writeDataBlock(3, false, false, {}, lines);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[MEMO2]"), 1);
    const Lines tail(lines.end() - 6, lines.end());
    EXPECT_EQ(tail, (Lines{"[DATA2A]", "", "[MEMO3]", "", "[DATA3]", ""}));
    EXPECT_TRUE(lines[3].starts_with("C,0,1"));
}

Bytes groupDelayBody(std::int8_t first, std::int8_t scale, std::int8_t base, std::int8_t offset) {
    Bytes body(131, 0);
    body[0] = static_cast<std::uint8_t>(first);
    body[64] = static_cast<std::uint8_t>(first);
    body[128] = static_cast<std::uint8_t>(scale);
    body[129] = static_cast<std::uint8_t>(base);
    body[130] = static_cast<std::uint8_t>(offset);
    return body;
}

TEST(GroupDelay, ScalesBytesAndAddsTheOffsetToTheAfterRows) {
    ReverbConverter converter;
    converter.setConfiguration(10, 0, 0);
    converter.convertGroupDelay(0, groupDelayBody(-51, 25, 0, 15));
    ASSERT_TRUE(converter.hasGroupDelay());
    Lines lines;
    converter.writeGroupDelaySection(lines);
    ASSERT_EQ(lines.size(), 13u);
    EXPECT_EQ(lines[0], "[CHANNEL]");
    EXPECT_EQ(lines[1], "Front");
    EXPECT_EQ(lines[2], "");
    EXPECT_EQ(lines[3], "[Before]");
    EXPECT_TRUE(lines[4].starts_with(",0,1,2,"));
    EXPECT_TRUE(lines[4].ends_with(",62,63"));
    EXPECT_TRUE(lines[5].starts_with("Freq[Hz],200,215,231,"));
    EXPECT_TRUE(lines[5].ends_with(",17280,18590,20000"));
    EXPECT_EQ(firstFields(lines[6], 3), "Front,-0.500000,0.000000");
    EXPECT_EQ(lines[7], "");
    EXPECT_EQ(lines[8], "[After]");
    EXPECT_EQ(lines[9], lines[4]);
    EXPECT_EQ(firstFields(lines[11], 3), "Front,1.000000,1.500000");
    EXPECT_EQ(lines.back(), "(Offset = +1.5ms)");
}

TEST(GroupDelay, GroupsAreWrittenInTheirFixedOrder) {
    ReverbConverter converter;
    converter.setConfiguration(10, 0, 0);
    for (int attribute : {7, 5, 3, 2, 1, 0, 4, 6})
        converter.convertGroupDelay(attribute, groupDelayBody(0, 10, 0, 2));
    Lines lines;
    converter.writeGroupDelaySection(lines);
    EXPECT_EQ(lines[1], "Front,Center,Surround A,Surround B,Surr Back,Top Surr");
    Lines names;
    for (const auto& line : lines) {
        if (line.find(",0.000000") != std::string::npos ||
            line.find(",0.200000") != std::string::npos)
            names.push_back(line.substr(0, line.find(',')));
    }
    EXPECT_EQ(names,
              (Lines{"Front", "Center", "Surround A", "Surround B", "Surr Back", "Top Surr",
                     "Front", "Center", "Surround A", "Surround B", "Surr Back", "Top Surr"}));
    EXPECT_EQ(lines.back(), "(Offset = +0.2ms)");
}

TEST(GroupDelay, UnnamedGroupsAndShortBodiesAreHarmless) {
    ReverbConverter converter;
    converter.convertGroupDelay(4, groupDelayBody(10, 10, 0, 0));
    EXPECT_FALSE(converter.hasGroupDelay());
    converter.convertGroupDelay(2, Bytes(10, 0x7F));
    ASSERT_TRUE(converter.hasGroupDelay());
    Lines lines;
    converter.writeGroupDelaySection(lines);
    EXPECT_EQ(lines[1], "Center");
    EXPECT_EQ(firstFields(lines[6], 2), "Center,0.000000");
    EXPECT_EQ(lines.back(), "(Offset = +0.0ms)");
}

}  // namespace
}  // namespace sonalyx
