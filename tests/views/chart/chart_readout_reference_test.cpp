#include <gtest/gtest.h>

#include "views/chart/chart_readout.h"

namespace sonalyx::chart {
namespace {

Series curve(std::vector<Point> points) {
    Series series;
    series.title = QStringLiteral("63");
    series.points = std::move(points);
    return series;
}

// A point of this document and of the reference read the same pair of values from either side;
// a curve without a counterpart at that time says so.
TEST(ChartReadoutReferenceTest, NamesTheOtherDocumentsValueAndTheDifference) {
    const Series reference = curve({{45, 60.5, {}}, {55, 58, {}}});
    const std::tuple<std::vector<Series>, NearestPoint, std::string> cases[] = {
        {{reference}, {0, 0}, "63: 45 ms, 61.25 dB · ref 60.50 dB · Δ +0.75 dB"},
        {{reference},
         {0, 0, true},
         "Reference · 63: 45 ms, 60.5 dB · document 61.25 dB · Δ +0.75 dB"},
        {{reference}, {0, 1}, "63: 50 ms, 57.75 dB · no reference value"},
        {{Series{}, reference}, {0, 0}, "63: 45 ms, 61.25 dB · no reference value"},
    };
    ChartModel model;
    model.left.title = QStringLiteral("Level[dB] ");
    model.bottom.title = QStringLiteral("Time[msec]");
    model.series[0] = curve({{45, 61.25, {}}, {50, 57.75, {}}});
    for (const auto& [referenceSeries, found, expected] : cases) {
        model.referenceSeries = referenceSeries;
        EXPECT_EQ(readoutText(model, found, {}).toStdString(), expected);
    }
}

}  // namespace
}  // namespace sonalyx::chart
