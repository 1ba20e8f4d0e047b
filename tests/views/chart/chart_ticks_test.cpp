#include <gtest/gtest.h>

#include "views/chart/chart_style.h"
#include "views/chart/chart_ticks.h"

namespace sonalyx::chart {
namespace {

// The bottom axis's ticks come from the points' labels of every visible series, one per
// position, and from the increment when no point is labelled.
TEST(ChartTicks, BottomLabelsComeFromEveryLabelledSeriesOncePerPosition) {
    struct Row {
        const char* name;
        std::vector<std::vector<Point>> series;  // one entry per slot
        std::vector<std::pair<double, QString>> ticks;
        double labelOffset = 0;
    } rows[] = {
        {"curves sharing their labels",
         {{{1, 0, "200"}, {2, 0, ""}, {4, 0, " "}}, {{1, 0, "200"}, {2, 0, ""}, {4, 0, " "}}},
         {{1, "200"}, {4, ""}}},
        {"bars side by side",
         {{{2.5, 1, "C"}}, {{0.5, 1, "A"}}, {}, {{1.5, 1, "B"}}},
         {{0.5, "A"}, {1.5, "B"}, {2.5, "C"}}},
        {"a parked slot before the labelled one", {{{0, 0, ""}}, {{3, 1, "x"}}}, {{3, "x"}}},
        {"no labels: the increment", {{{1, 0, ""}}}, {{0, "0"}, {2, "2"}, {4, "4"}}},
        {"a bar moved aside for its pair", {{{1.25, 1, "A"}}}, {{1.5, "A"}}, 0.25},
    };
    for (const Row& r : rows) {
        ChartModel model;
        model.bottom.minimum = 0;
        model.bottom.maximum = 4;
        model.bottom.increment = 2;
        for (std::size_t s = 0; s < r.series.size(); ++s) {
            model.series[s].points = r.series[s];
            model.series[s].labelOffset = r.labelOffset;
        }
        const ChartStyle style(model, QRectF(0, 0, 400, 300), ChartAppearance{});
        const ChartTicks ticks(model, style, false, kSeriesSlots);
        ASSERT_EQ(ticks.bottom.size(), r.ticks.size()) << r.name;
        for (std::size_t i = 0; i < r.ticks.size(); ++i) {
            EXPECT_EQ(ticks.bottom[i].value, r.ticks[i].first) << r.name << " tick " << i;
            EXPECT_EQ(ticks.bottom[i].text, r.ticks[i].second) << r.name << " tick " << i;
        }
    }
}

}  // namespace
}  // namespace sonalyx::chart
