// What the emulator's receivers never send: extreme values, unknown codes, short and unnamed
// replies. Whole runs for every configuration are compared byte for byte in
// receive_document_test.cpp.
#include "retrieval/reverb_converter.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace sonalyx {
namespace {

using Lines = std::vector<std::string>;
using Bytes = std::vector<std::uint8_t>;

std::string firstFields(const std::string& row, int count) {
    size_t pos = 0;
    for (int i = 0; i < count && pos != std::string::npos; ++i)
        pos = row.find(',', pos + 1);
    return row.substr(0, pos);
}

TEST(ReverbBlock, WritesSignedHundredthsWithTheSignOutsideTheNumber) {
    const struct {
        std::uint16_t raw;
        const char* text;
    } rows[] = {{0xFF38, "-2.00"}, {0x00C8, "2.00"}, {0x8000, "-327.68"}, {0x7FFF, "327.67"},
                {0xFFFF, "-0.01"}, {0x0001, "0.01"}, {0x0000, "0.00"},    {0x04D2, "12.34"}};
    for (const auto& row : rows) {
        ReverbConverter converter;
        converter.setConfiguration(5, 0, 0);
        Bytes body(64, 0);
        body[2] = static_cast<std::uint8_t>(row.raw >> 8);
        body[3] = static_cast<std::uint8_t>(row.raw & 0xFF);
        Lines lines;
        converter.writeDataBlock(1, false, true, body, lines);
        ASSERT_EQ(lines.size(), 7u) << row.text;
        EXPECT_EQ(firstFields(lines[5], 3), std::string("63Hz,0.00,") + row.text) << row.raw;
    }
}

TEST(ReverbBlock, ShortOrEmptyBodiesWriteWholeRecordsOnly) {
    ReverbConverter converter;
    converter.setConfiguration(7, 2, 0);
    Lines lines;
    converter.writeDataBlock(4, false, true, Bytes(64 * 2 + 30, 0), lines);
    converter.writeDataBlock(4, true, true, {}, lines);
    EXPECT_EQ(lines, (Lines{"[MEMO4]", "", "[DATA4]", lines[3], lines[4], lines[5], lines[6], "",
                            "[DATA4A]", lines[9], lines[10], ""}));
    EXPECT_TRUE(lines[3].starts_with("SR A,0,1,2,")) << lines[3];
    EXPECT_TRUE(lines[6].starts_with("125Hz,")) << lines[6];
}

TEST(ReverbHeader, AnUnknownConfigurationAndBandSelectorTakeTheDefaults) {
    ReverbConverter converter;
    converter.setConfiguration(8, 7, 2);
    Lines lines;
    converter.writeHeader(lines);
    EXPECT_EQ(lines, (Lines{"[CHANNEL]", "L,C,R,SR A,SBR,SBL,SL A,SPBL,SPBR", "", "[BAND]",
                            "63,125,250,500,1k,2k,4k,8k,16k", "", "[REVERB TYPE]",
                            "EQ ON,ALL CH ADJUST", ""}));
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
    // -51 / 255 x 2.5 - 0 = -0.5 before, + 1.5 after; each group's after rows take its own
    // offset, and the base is taken off every value.
    converter.convertGroupDelay(0, groupDelayBody(-51, 25, 0, 15));
    converter.convertGroupDelay(3, groupDelayBody(51, 25, -10, -5));
    Lines lines;
    converter.writeGroupDelaySection(lines);
    ASSERT_EQ(lines.size(), 15u);
    EXPECT_EQ(lines[1], "Front,Surr Back");
    EXPECT_EQ(firstFields(lines[6], 3), "Front,-0.500000,0.000000");
    EXPECT_EQ(firstFields(lines[7], 3), "Surr Back,1.500000,1.000000");
    EXPECT_EQ(firstFields(lines[12], 3), "Front,1.000000,1.500000");
    EXPECT_EQ(firstFields(lines[13], 3), "Surr Back,1.000000,0.500000");
    // The offset line shows the last block's.
    EXPECT_EQ(lines.back(), "(Offset = +-0.5ms)");
}

TEST(GroupDelay, UnnamedGroupsAndShortBodiesAreHarmless) {
    ReverbConverter converter;
    converter.convertGroupDelay(4, groupDelayBody(10, 10, 0, 0));
    converter.convertGroupDelay(6, groupDelayBody(10, 10, 0, 0));
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
