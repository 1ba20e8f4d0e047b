// The value-to-pixel mapping: 2D corners, the front and top views, fitting inside the rect
// over the whole range of the view controls, and smooth, flip-free turning.
#include <gtest/gtest.h>

#include <QRectF>
#include <cmath>

#include "views/chart/chart_projection.h"
#include "views/chart/chart_samples.h"

namespace sonalyx::test {
namespace {

using namespace chart;

const QRectF kRect(0, 0, 533, 333);
const LabelRoom kRoom{30, 6, 12, 28};

ChartModel viewed(bool enabled, int elevation, int rotation, int perspective) {
    ChartModel m = sampleDecayChart();
    m.view.enabled = enabled;
    m.view.elevation = elevation;
    m.view.rotation = rotation;
    m.view.perspective = perspective;
    return m;
}

void expectNear(QPointF actual, QPointF expected, const char* what) {
    EXPECT_NEAR(actual.x(), expected.x(), 1e-6) << what;
    EXPECT_NEAR(actual.y(), expected.y(), 1e-6) << what;
}

TEST(ChartProjection, TwoDimensionalCornersMapToThePlotRectangle) {
    const ChartModel m = viewed(false, 348, 310, 25);
    const ChartProjection p(m, kRect, kRoom);
    // The margins (5 left, 20 top, 10 right, 20 bottom) plus the label room.
    const QRectF plot(35, 26, 533 - 35 - 22, 333 - 26 - 48);
    EXPECT_EQ(p.plotRect(), plot);
    const struct {
        double x, y;
        QPointF pixel;
        const char* what;
    } rows[] = {
        {0, 50, plot.bottomLeft(), "origin"},
        {160, 80, plot.topRight(), "far corner"},
        {0, 80, plot.topLeft(), "top left"},
        {80, 65, plot.center(), "centre"},
        {40, 57.5, {plot.left() + plot.width() / 4, plot.bottom() - plot.height() / 4}, "quarter"},
    };
    for (const auto& row : rows) {
        for (const double slot : {0.0, 8.0}) {  // depth plays no part in 2D
            expectNear(p.map(row.x, row.y, slot), row.pixel, row.what);
        }
    }
}

TEST(ChartProjection, FrontViewWithoutPerspectiveIsTheTwoDimensionalChart) {
    const ChartProjection flat(viewed(false, 0, 0, 0), kRect, kRoom);
    const ChartProjection front(viewed(true, 360, 360, 0), kRect, kRoom);
    for (const double slot : {-0.5, 0.0, 4.0, 8.5}) {
        for (const QPointF v : {QPointF(0, 50), QPointF(160, 80), QPointF(35, 61.5)}) {
            expectNear(front.map(v.x(), v.y(), slot), flat.map(v.x(), v.y(), slot), "front");
        }
    }
    // With perspective the back of the box shrinks towards the middle.
    const ChartProjection deep(viewed(true, 360, 360, 50), kRect, kRoom);
    const QPointF frontCorner = deep.map(0, 50, deep.frontDepth());
    const QPointF backCorner = deep.map(0, 50, deep.backDepth());
    EXPECT_GT(backCorner.x(), frontCorner.x());
    EXPECT_LT(backCorner.y(), frontCorner.y());
}

TEST(ChartProjection, TopViewShowsTheFloorPlan) {
    const ChartProjection top(viewed(true, 270, 360, 0), kRect, kRoom);
    // Seen from straight above, the level no longer moves a point; further slots stand higher.
    for (const double x : {0.0, 80.0, 160.0}) {
        expectNear(top.map(x, 50, 3), top.map(x, 80, 3), "level is hidden");
        EXPECT_LT(top.map(x, 60, 5).y(), top.map(x, 60, 4).y()) << "slot 5 behind slot 4";
        EXPECT_NEAR(top.map(x, 60, 5).x(), top.map(x, 60, 4).x(), 1e-6);
    }
    EXPECT_GT(top.map(160, 60, 0).x(), top.map(0, 60, 0).x());
}

TEST(ChartProjection, BoxFitsTheRectOverTheWholeRangeOfTheControls) {
    const QRectF area(35, 26, 533 - 35 - 22, 333 - 26 - 48);
    for (const bool orthogonal : {false, true}) {
        for (int perspective : {0, 25, 60, 100}) {
            for (int elevation = 270; elevation <= 360; elevation += 6) {
                for (int rotation = 270; rotation <= 360; rotation += 6) {
                    ChartModel m = viewed(true, elevation, rotation, perspective);
                    m.view.orthogonal = orthogonal;
                    const ChartProjection p(m, kRect, kRoom);
                    const QRectF plot = p.plotRect();
                    SCOPED_TRACE(::testing::Message()
                                 << "e " << elevation << " r " << rotation << " p " << perspective
                                 << " o " << orthogonal);
                    EXPECT_TRUE(area.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(plot));
                    // Scaled as large as fits: one side fills the area.
                    EXPECT_TRUE(std::abs(plot.width() - area.width()) < 1e-6 ||
                                std::abs(plot.height() - area.height()) < 1e-6);
                    for (int c = 0; c < 8; ++c) {
                        const QPointF at =
                            p.mapUnit(c & 1, (c >> 1) & 1, c & 4 ? p.backDepth() : p.frontDepth());
                        EXPECT_TRUE(plot.adjusted(-1e-6, -1e-6, 1e-6, 1e-6).contains(at));
                    }
                }
            }
        }
    }
}

double cornerShift(const ChartProjection& a, const ChartProjection& b) {
    double most = 0;
    for (int c = 0; c < 8; ++c) {
        const double z = c & 4 ? a.backDepth() : a.frontDepth();
        const QPointF d = a.mapUnit(c & 1, (c >> 1) & 1, z) - b.mapUnit(c & 1, (c >> 1) & 1, z);
        most = std::max(most, std::hypot(d.x(), d.y()));
    }
    return most;
}

// On screen: how long the bottom axis looks against the depth axis, and the floor against
// the left axis. Turning away from the front shortens the first; tilting raises the second.
double bottomOverDepth(const ChartProjection& p) {
    const QPointF a = p.mapUnit(0, 0, p.frontDepth()) - p.mapUnit(1, 0, p.frontDepth());
    const QPointF b = p.mapUnit(1, 0, p.frontDepth()) - p.mapUnit(1, 0, p.backDepth());
    return std::hypot(a.x(), a.y()) / std::max(1e-9, std::hypot(b.x(), b.y()));
}

double floorOverWall(const ChartProjection& p) {
    const double floor =
        std::abs(p.mapUnit(0, 0, p.frontDepth()).y() - p.mapUnit(0, 0, p.backDepth()).y());
    const double wall =
        std::abs(p.mapUnit(0, 0, p.backDepth()).y() - p.mapUnit(0, 1, p.backDepth()).y());
    return floor / std::max(1e-9, wall);
}

TEST(ChartProjection, OneDegreeStepsChangeThePictureSmoothlyAndMonotonically) {
    const double diagonal = std::hypot(kRect.width(), kRect.height());
    const struct {
        const char* control;
        int from;
        int to;
    } sweeps[] = {{"rotation", 360, 270}, {"elevation", 360, 270}, {"perspective", 0, 100}};
    for (const auto& sweep : sweeps) {
        SCOPED_TRACE(sweep.control);
        const std::string control = sweep.control;
        // The ratios are checked without perspective, which adds its own convergence.
        const auto at = [&](int value) {
            ChartModel m = viewed(true, 348, 310, control == "rotation" ? 0 : 25);
            (control == "rotation"    ? m.view.rotation
             : control == "elevation" ? m.view.elevation
                                      : m.view.perspective) = value;
            return ChartProjection(m, kRect, kRoom);
        };
        const int step = sweep.to > sweep.from ? 1 : -1;
        ChartProjection previous = at(sweep.from);
        for (int v = sweep.from + step; v != sweep.to + step; v += step) {
            const ChartProjection next = at(v);
            EXPECT_LT(cornerShift(previous, next), 0.03 * diagonal) << "at " << v;
            if (control == "rotation") {
                EXPECT_LT(bottomOverDepth(next), bottomOverDepth(previous)) << "at " << v;
            } else if (control == "elevation") {
                EXPECT_GT(floorOverWall(next), floorOverWall(previous)) << "at " << v;
            }
            previous = next;
        }
    }
}

TEST(ChartProjection, DepthStepsFollowTheLastSlotThatDraws) {
    ChartModel m;
    EXPECT_EQ(ChartProjection::slotsInUse(m), 1);
    // The cursor finds nothing on an empty chart (the readout test hovers real curves).
    EXPECT_FALSE(ChartProjection(m, kRect, kRoom).nearestPoint(m, QPointF(10, 10)).found());
    m.series[3].points = {{0, 0, {}}, {1, 1, {}}};
    EXPECT_EQ(ChartProjection::slotsInUse(m), 4);
    m.series[9].points = {{0, 0, {}}};  // a parked slot: one point draws no line
    EXPECT_EQ(ChartProjection::slotsInUse(m), 4);
    m.series[9].kind = SeriesKind::Bar;  // but one bar
    EXPECT_EQ(ChartProjection::slotsInUse(m), 10);
    m.referenceSeries.resize(12);
    m.referenceSeries[11].points = {{0, 0, {}}, {1, 1, {}}};
    EXPECT_EQ(ChartProjection::slotsInUse(m), 12);
}

}  // namespace
}  // namespace sonalyx::test
