#include <gtest/gtest.h>

#include <cstdint>
#include <utility>

#include "document/parameter_rows.h"
#include "document/text_format.h"

namespace sonalyx::test {
namespace {

std::string converted(const std::string& field) {
    std::string out;
    return convertDistanceCell(field, out) ? out : field;
}

// Units become display text, which is then left alone, as is a text without apostrophe or one
// that the blank would push past the 30 characters read.
// Centimetres round in two passes: 0.95 is raised in the first, 0.5 in the second, and
// anything between -1 and 0 gives 0.
TEST(DistanceCells, UnitsBecomeDisplayTextWithTwoPassRounding) {
    const std::pair<const char*, const char*> rows[] = {
        {"345cm", "3.45m"},
        {"10.5feet", "10' 06\""},
        {"125inch", "10' 05\""},
        {"12'04\"", "12' 04\""},
        {"\"0'03-1/2\"\"\"", "0' 03-1/2\""},
        {"---", "---"},
        {"5\"", "5\""},
        {"0.95cm", "0.01m"},
        {"0.5cm", "0.01m"},
        {"0.49cm", "0.00m"},
        {"-0.7cm", "0.00m"},
        {"-1.5cm", "-0.02m"},
        {"199.5cm", "2.00m"},
        {"11.6inch", "1' 00\""},
        {"12'04-1/2 behind the sofa   \"\"", "12'04-1/2 behind the sofa   \"\""},
    };
    for (const auto& [field, shown] : rows) {
        EXPECT_EQ(converted(field), shown) << field;
        EXPECT_EQ(converted(shown), shown) << "rewritten again: " << shown;
    }
}

TEST(ParameterRows, DistanceBlockIsConvertedAndWrittenBack) {
    std::vector<std::string> lines = {
        "* Speaker Setting",
        "Front,,Large",
        "125cm,,stays outside the block",
        "",
        "* Speaker Distance",
        ",,[M1],[M2]",
        "Left,,345cm,3.45m",
        "Right,,12'04\",---",
        "Center,,10.5feet",
        "* Channel Level",
        "Left,,330cm",
    };
    ParameterGrid grid;
    ASSERT_TRUE(ParseParameterRows(lines, grid));
    ASSERT_EQ(grid.rowCount(), 11);
    EXPECT_EQ(lines[2], "125cm,,stays outside the block");
    EXPECT_EQ(lines[6], "Left,,3.45m,3.45m,,,,,,,,,,,");
    EXPECT_EQ(lines[7], "Right,,12' 04\",---,,,,,,,,,,,");
    EXPECT_EQ(lines[10], "Left,,330cm");
    EXPECT_EQ(grid.cell(6, 2), "3.45m");
    EXPECT_EQ(grid.cell(7, 0), "Right");
    EXPECT_EQ(grid.cell(8, 2), "10' 06\"");
    EXPECT_EQ(grid.cell(5, 2), "[M1]");
    EXPECT_EQ(grid.longestDistanceText, 7);  // 12' 04"
    EXPECT_EQ(grid.cell(99, 0), "");
}

TEST(ParameterRows, AtMostFifteenFieldsAndLengthFromColumnsOneToSeven) {
    std::vector<std::string> lines = {"* Speaker Distance", "a,b,c,d,e,f,g,h,i,j,k,l,m,n,o,p,q",
                                      "x,,,,,,,,0123456789ABC"};
    ParameterGrid grid;
    ASSERT_TRUE(ParseParameterRows(lines, grid));
    EXPECT_EQ(grid.cell(1, 14), "o");
    EXPECT_EQ(grid.longestDistanceText, 1);  // column 8 does not count
    std::vector<std::string> none;
    EXPECT_FALSE(ParseParameterRows(none, grid));
}

// The writer's fast two-decimal path must give exactly what the general conversion gives.
TEST(TextFormat, FastTwoDecimalsMatchTheGeneralConversion) {
    const float samples[] = {0.0f,  -0.0f,   -0.001f, 0.125f, 0.375f,     -2.005f, 12.25f,
                             -3.5f, 99.995f, 1e-7f,   -1e-7f, 123456.78f, 3.4e38f, -7.0f};
    for (float v : samples) {
        std::string fast;
        appendFixed2(fast, v);
        EXPECT_EQ(fast, formatFixed(v, 2)) << v;
    }
    std::uint32_t bits = 12345;
    for (int i = 0; i < 200000; ++i) {
        bits = bits * 1664525u + 1013904223u;
        const float v = static_cast<float>(static_cast<std::int32_t>(bits) % 2000000) / 997.0f;
        std::string fast;
        appendFixed2(fast, v);
        ASSERT_EQ(fast, formatFixed(v, 2)) << v;
    }
}

}  // namespace
}  // namespace sonalyx::test
