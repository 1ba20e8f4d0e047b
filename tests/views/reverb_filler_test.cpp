#include <gtest/gtest.h>

#include "document/document_loader.h"
#include "view_fixture.h"
#include "views/reverb_filler.h"

namespace sonalyx {
namespace {

using chart::ChartModel;
using chart::SeriesKind;

MeasurementDocument Load(int layout, const std::vector<std::string>& drop = {}) {
    MeasurementDocument doc;
    EXPECT_TRUE(DocumentLoader::load(doc, test::sampleLines(layout, drop), "x.csv", nullptr));
    return doc;
}

int VisibleSeries(const ChartModel& model) {
    int n = 0;
    for (const auto& s : model.series) {
        n += s.visible;
    }
    return n;
}

TEST(ReverbFiller, LineFillDrawsEachBandInItsColourAboveTheLevelBase) {
    // Rows of the band colour table as the charts must show them.
    const std::pair<int, QColor> colours[] = {
        {0, QColor(248, 0, 0)},    {1, QColor(232, 72, 8)},   {2, QColor(248, 160, 40)},
        {3, QColor(192, 216, 56)}, {4, QColor(0, 216, 112)},  {5, QColor(0, 104, 224)},
        {6, QColor(80, 144, 248)}, {7, QColor(144, 88, 208)}, {8, QColor(160, 16, 124)}};
    const auto doc = Load(9);
    ReverbSelection selection;
    selection.variant = 1;
    ReverbFiller filler(doc, selection);
    ChartModel model;
    Swatches swatches{};
    filler.FillLineChart(model, 3, true, swatches);
    EXPECT_EQ(VisibleSeries(model), 9);
    for (const auto& [band, colour] : colours) {
        const auto& series = model.series[band];
        EXPECT_EQ(series.colour, colour) << "band " << band;
        EXPECT_EQ(swatches[band], colour) << "band " << band;
        EXPECT_EQ(series.kind, SeriesKind::Line);
        ASSERT_EQ(series.points.size(), 32u) << "band " << band;
        for (int t : {0, 17, 31}) {
            EXPECT_DOUBLE_EQ(series.points[t].x, 5.0 * (t + 1));
            EXPECT_NEAR(series.points[t].y, doc.reverbValues[1][3][band][t] + 58.0, 1e-4)
                << "band " << band << " t " << t;
        }
    }
    EXPECT_EQ(model.series[0].title, QStringLiteral("63"));
    EXPECT_EQ(swatches[9], QColor(Qt::white));
    EXPECT_EQ(model.bottom.maximum, 160);
    EXPECT_EQ(model.bottom.title, QStringLiteral("Time[msec]"));
}

TEST(ReverbFiller, SwatchesPastTheBandCountAreWhite) {
    const auto doc = Load(5);  // six bands
    ChartModel model;
    Swatches swatches{};
    ReverbFiller(doc, {}).FillLineChart(model, 0, true, swatches);
    for (int i = 0; i < kLegendEntries; ++i) {
        EXPECT_EQ(swatches[i] == QColor(Qt::white), i >= 6) << "swatch " << i;
    }
    EXPECT_EQ(ReverbFiller(doc, {}).LegendCaptions(),
              (QStringList{"63", "125", "250", "1k", "4k", "11.3k", "", "", "", ""}));
}

TEST(ReverbFiller, FreqModeDrawsEveryChannelOfOneBandInTheChannelColours) {
    const std::pair<int, QColor> colours[] = {
        {0, QColor(0, 102, 0)},     {1, QColor(0, 153, 0)},     {2, QColor(204, 204, 0)},
        {3, QColor(255, 153, 0)},   {4, QColor(255, 51, 51)},   {5, QColor(204, 102, 255)},
        {6, QColor(153, 153, 255)}, {7, QColor(204, 255, 255)}, {8, QColor(178, 178, 178)},
        {9, QColor(206, 206, 206)}};
    const auto doc = Load(10);
    ReverbSelection selection;
    selection.chFreq = 1;
    ReverbFiller filler(doc, selection);
    ChartModel model;
    Swatches swatches{};
    filler.FillLineChartByBand(model, 4, swatches);
    EXPECT_EQ(VisibleSeries(model), 10);
    for (const auto& [item, colour] : colours) {
        EXPECT_EQ(model.series[item].colour, colour) << "channel " << item;
        ASSERT_EQ(model.series[item].points.size(), 32u);
        EXPECT_NEAR(model.series[item].points[9].y, doc.reverbValues[0][item][4][9] + 58.0, 1e-4);
    }
    EXPECT_EQ(model.series[9].title, QStringLiteral("TS"));
    EXPECT_EQ(filler.ComboItems().mid(0, 3), (QStringList{"ALL", "63Hz", "125Hz"}));
    EXPECT_EQ(filler.ChartCount(), 9);
    EXPECT_EQ(filler.LegendCaptions().front(), QStringLiteral("L"));
}

TEST(ReverbFiller, AChannelWithoutDataForTheVariantHasNoPoints) {
    const auto doc = Load(9, {"[DATA3A]"});
    ReverbSelection after;
    after.variant = 1;
    after.chFreq = 1;
    ChartModel model;
    Swatches swatches{};
    ReverbFiller(doc, after).FillLineChartByBand(model, 0, swatches);
    ASSERT_FALSE(doc.positionHasData[1][2]);
    ASSERT_TRUE(doc.positionHasData[1][1]);
    for (int item = 0; item < 9; ++item) {
        EXPECT_EQ(model.series[item].points.empty(), !doc.positionHasData[1][item])
            << "channel " << item;
    }
    EXPECT_FALSE(ReverbFiller(doc, after).ItemHasData(2));
    EXPECT_TRUE(ReverbFiller(doc, {}).ItemHasData(2));
    ReverbFiller(doc, after).FillLineChart(model, 2, false, swatches);
    EXPECT_EQ(VisibleSeries(model), 9);
    EXPECT_TRUE(model.series[0].points.empty());
}

TEST(ReverbFiller, PairModeDrawsTheGroupCurves) {
    const auto doc = Load(7);
    ReverbSelection pair;
    pair.pairMode = 1;
    ReverbFiller filler(doc, pair);
    ASSERT_EQ(filler.ListLength(), doc.groupCount);
    EXPECT_EQ(filler.ComboItems().at(1), QStringLiteral("Front"));
    EXPECT_EQ(filler.ItemByLongName(QStringLiteral("Front")), 0);
    ChartModel model;
    Swatches swatches{};
    filler.FillLineChart(model, 1, filler.ItemHasData(1), swatches);
    ASSERT_EQ(model.series[2].points.size(), 32u);
    EXPECT_NEAR(model.series[2].points[4].y, doc.groupValues[0][1][2][4] + 58.0, 1e-4);
}

TEST(ReverbFiller, BarsShowOneTimeSlice) {
    const auto doc = Load(9);
    struct Row {
        bool view3D;
        int chFreq;
        double firstX;
        double bottomMax;
        const char* bottomTitle;
    } rows[] = {
        {true, 0, 5 * 7.5, 160, "Time[msec]"},
        {true, 1, 5 * 7.5, 160, "Time[msec]"},
        {false, 0, 0.5, 9, "Freq[Hz]"},
        {false, 1, 0.5, 9, "Channel"},
    };
    for (const Row& r : rows) {
        ReverbSelection bars;
        bars.barMode = true;
        bars.view3D = r.view3D;
        bars.chFreq = r.chFreq;
        bars.timeSlice = 7;
        ChartModel model;
        model.left.minimum = 53;
        Swatches swatches{};
        ReverbFiller filler(doc, bars);
        r.chFreq == 0 ? filler.FillBarChart(model, 1, true, swatches)
                      : filler.FillBarChartByBand(model, 1, swatches);
        const std::string row = (r.view3D ? "3D " : "2D ") + std::to_string(r.chFreq);
        const auto& second = model.series[1];
        EXPECT_EQ(second.kind, SeriesKind::Bar) << row;
        EXPECT_EQ(second.origin, 53) << row;
        ASSERT_EQ(second.points.size(), 1u) << row;
        EXPECT_DOUBLE_EQ(model.series[0].points[0].x, r.firstX) << row;
        const double value = doc.reverbValues[0][1][1][7];  // item 1, band 1 either way
        EXPECT_NEAR(second.points[0].y, value + 58.0, 1e-4) << row;
        EXPECT_EQ(model.bottom.maximum, r.bottomMax) << row;
        EXPECT_EQ(model.bottom.title, QLatin1String(r.bottomTitle)) << row;
        EXPECT_EQ(second.points[0].label.isEmpty(), r.view3D) << row;
    }
}

}  // namespace
}  // namespace sonalyx
