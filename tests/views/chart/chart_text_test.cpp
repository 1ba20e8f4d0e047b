// The chart's texts: axis value format (whatever the locale), segment clipping at the axis box,
// and the JSON writer with one golden chart (which holds its block and one-line layouts).
#include <gtest/gtest.h>

#include <charconv>
#include <clocale>
#include <cmath>
#include <locale>
#include <sstream>

#include "support/golden.h"
#include "views/chart/axis_value_format.h"
#include "views/chart/chart_json.h"
#include "views/chart/json_writer.h"
#include "views/chart/segment_clipper.h"

namespace sonalyx::test {
namespace {

using namespace chart;

// Runs body under the C locale and, where installed, under a German one.
template <typename Body>
void underEachLocale(Body body) {
    body("C");
    const std::string saved = std::setlocale(LC_ALL, nullptr);
    if (!std::setlocale(LC_ALL, "de_DE.UTF-8")) {
        return;
    }
    std::locale::global(std::locale("de_DE.UTF-8"));
    body("de_DE.UTF-8");
    std::locale::global(std::locale::classic());
    std::setlocale(LC_ALL, saved.c_str());
}

TEST(ChartText, AxisValuesFollowThePictureWithAFullStop) {
    const struct {
        double value;
        const char* picture;
        const char* text;
    } rows[] = {
        {53, "#,##0.0##", "53.0"},
        {57.5, "#,##0.0##", "57.5"},
        {0.38, "#,##0.0##", "0.38"},
        {0.38 * 3, "#,##0.0##", "1.14"},  // no floating-point tail
        {2.0 / 3.0, "#,##0.0##", "0.667"},
        {-1.0001, "#,##0.0##", "-1.0"},
        {-0.0001, "#,##0.0##", "0.0"},  // no "-0.0"
        {1234.5, "#,##0.0##", "1,234.5"},
        {-1234567.125, "#,##0.0##", "-1,234,567.125"},
        {999.9999, "#,##0.0##", "1,000.0"},
        {100, "#,##0.0##", "100.0"},
        {2.6, "0", "3"},
        {2.5, "0.00", "2.50"},
        {12345, "0.#", "12345"},
    };
    underEachLocale([&](const char* locale) {
        for (const auto& row : rows) {
            EXPECT_EQ(formatAxisValue(row.value, QString::fromLatin1(row.picture)),
                      QString::fromLatin1(row.text))
                << row.value << " with " << row.picture << " under " << locale;
        }
    });
}

TEST(ChartText, SegmentsAreCutWhereTheyCrossTheAxisBox) {
    const ValueBox box{0, 10, 0, 10};
    const struct {
        QPointF from, to;
        bool visible;
        QPointF clippedFrom, clippedTo;
        bool fromClipped, toClipped;
        const char* what;
    } rows[] = {
        {{1, 1}, {9, 9}, true, {1, 1}, {9, 9}, false, false, "inside"},
        {{5, 5}, {15, 5}, true, {5, 5}, {10, 5}, false, true, "leaves right"},
        {{-5, 5}, {5, 5}, true, {0, 5}, {5, 5}, true, false, "enters left"},
        {{-5, -5}, {15, 15}, true, {0, 0}, {10, 10}, true, true, "crosses"},
        {{5, 20}, {5, 8}, true, {5, 10}, {5, 8}, true, false, "falls in from above"},
        {{2, 8}, {6, 12}, true, {2, 8}, {4, 10}, false, true, "rises out of the top"},
        {{11, 0}, {20, 5}, false, {}, {}, false, false, "outside"},
        {{-2, 9}, {2, 13}, false, {}, {}, false, false, "misses the corner"},
        {{0, -5}, {0, 5}, true, {0, 0}, {0, 5}, true, false, "along the edge"},
        {{3, 3}, {3, 3}, true, {3, 3}, {3, 3}, false, false, "a point"},
        {{3, NAN}, {4, 4}, false, {}, {}, false, false, "a missing value"},
    };
    for (const auto& row : rows) {
        const ClippedSegment s = clipSegment(row.from, row.to, box);
        ASSERT_EQ(s.visible, row.visible) << row.what;
        if (!row.visible) {
            continue;
        }
        EXPECT_NEAR(s.from.x(), row.clippedFrom.x(), 1e-12) << row.what;
        EXPECT_NEAR(s.from.y(), row.clippedFrom.y(), 1e-12) << row.what;
        EXPECT_NEAR(s.to.x(), row.clippedTo.x(), 1e-12) << row.what;
        EXPECT_NEAR(s.to.y(), row.clippedTo.y(), 1e-12) << row.what;
        EXPECT_EQ(s.fromClipped, row.fromClipped) << row.what;
        EXPECT_EQ(s.toClipped, row.toClipped) << row.what;
    }
}

TEST(ChartText, JsonNumbersAreShortAndReadBackExactly) {
    const struct {
        double value;
        const char* text;
    } rows[] = {{5, "5"},         {61.25, "61.25"},  {0.1, "0.1"},
                {-0.38, "-0.38"}, {1e21, "1e+21"},   {1.0 / 3, "0.3333333333333333"},
                {NAN, "null"},    {INFINITY, "null"}};
    underEachLocale([&](const char* locale) {
        for (const auto& row : rows) {
            const std::string text = JsonWriter::number(row.value);
            EXPECT_EQ(text, row.text) << locale;
            double back = 0;
            if (std::isfinite(row.value)) {
                std::from_chars(text.data(), text.data() + text.size(), back);
                EXPECT_EQ(back, row.value) << text;
            }
        }
    });
}

TEST(ChartText, JsonStringsAreEscapedAndStayUtf8) {
    const struct {
        const char* in;
        const char* out;
    } rows[] = {
        {"Level[dB] ", "\"Level[dB] \""},
        {"say \"hi\"\\", "\"say \\\"hi\\\"\\\\\""},
        {"a\nb\r\tc", "\"a\\nb\\r\\tc\""},
        {"\x01\x1f", "\"\\u0001\\u001f\""},
        {"\xc2\xb5s \xe2\x80\x93 5", "\"\xc2\xb5s \xe2\x80\x93 5\""},
    };
    for (const auto& row : rows) {
        EXPECT_EQ(JsonWriter::quoted(row.in), row.out) << row.in;
    }
}

TEST(ChartText, ChartJsonMatchesTheGoldenFile) {
    ChartModel m;
    m.name = QStringLiteral("Chart1");
    m.left = {53, 63, 1, QStringLiteral("Level[dB] ")};
    m.bottom = {0, 160, 10, QStringLiteral("Time[msec]")};
    m.depth = {0, 1, 1, QStringLiteral("Freq[Hz]")};
    m.series[0].title = QStringLiteral("63");
    m.series[0].colour = QColor(248, 0, 0);
    m.series[0].points = {{5, 61.25, {}}, {10, 60.5, {}}, {15, 59.125, {}}};
    m.series[1].title = QString::fromUtf8("1k \xe2\x80\x93 \"a\"");
    m.series[1].colour = QColor(232, 72, 8);
    m.series[1].kind = SeriesKind::Bar;
    m.series[1].points = {{1, 0.38, QStringLiteral("200")}, {2, -0.1, QStringLiteral(" ")}};
    Series reference = m.series[0];
    reference.reference = true;
    reference.points.resize(1);
    m.referenceSeries.push_back(reference);

    JsonWriter json;
    writeChartJson(json, m, QRect(1, 0, 533, 333));
    std::vector<std::string> lines;
    std::istringstream in(json.text());
    for (std::string line; std::getline(in, line);) {
        lines.push_back(line);
    }
    expectMatchesGolden(testDataPath("chart/small_chart.json"), lines);
}

}  // namespace
}  // namespace sonalyx::test
