#include <gtest/gtest.h>

#include "views/window/view_axis.h"

namespace sonalyx {
namespace {

TEST(ViewAxis, ReverbZoomKeepsTheCentreAndScalesTheStep) {
    struct Row {
        int zoom;
        double centreMin, centreMax;
        double min, max, step;
    } rows[] = {
        {18, 53, 63, 53, 63, 1},        // the default: 10 dB in 1 dB steps
        {19, 53, 63, 55.5, 60.5, 0.5},  // the top end
        {0, 53, 63, 8, 108, 10},        // the bottom end
        {19, 40, 60, 47.5, 52.5, 0.5},  // a moved window zooms about its own centre
    };
    for (const Row& r : rows) {
        const auto range = view_axis::ReverbZoom(r.zoom, r.centreMin, r.centreMax);
        EXPECT_DOUBLE_EQ(range.minimum, r.min) << "zoom " << r.zoom;
        EXPECT_DOUBLE_EQ(range.maximum, r.max) << "zoom " << r.zoom;
        EXPECT_DOUBLE_EQ(range.increment, r.step) << "zoom " << r.zoom;
    }
}

TEST(ViewAxis, ReverbMoveRecentresOnTheBaseAndInvertsTheSlider) {
    struct Row {
        int move;
        double increment, min, max;
    } rows[] = {
        {20, 1, 53, 63}, {0, 1, 73, 83}, {40, 1, 33, 43}, {40, 0.5, 35.5, 40.5}, {0, 10, 28, 128},
    };
    for (const Row& r : rows) {
        const auto range = view_axis::ReverbMove(r.move, r.increment);
        EXPECT_DOUBLE_EQ(range.minimum, r.min) << "move " << r.move << " step " << r.increment;
        EXPECT_DOUBLE_EQ(range.maximum, r.max) << "move " << r.move << " step " << r.increment;
    }
}

TEST(ViewAxis, GroupDelayAxisFollowsTheSpan) {
    const auto axis = GroupDelayAxis::FromSpan(1.8f);
    EXPECT_FLOAT_EQ(axis.base, 0.9f);
    EXPECT_FLOAT_EQ(axis.scale, 0.38f);
    EXPECT_EQ(axis.moveRef, 19);     // 19 * 0.38 = 7.22 >= 10 - 2.8
    EXPECT_EQ(axis.moveExtent, 30);  // and 11 more steps reach 4 ms
    const auto wide = GroupDelayAxis::FromSpan(8.0f);
    EXPECT_FLOAT_EQ(wide.base, 4.0f);
    EXPECT_EQ(wide.moveRef, 1);

    const auto zoomed = view_axis::GroupDelayZoom(18, axis.moveRef, axis);
    EXPECT_NEAR(zoomed.increment, 0.095, 1e-6);
    EXPECT_NEAR(zoomed.maximum, 0.9 + 5 * 0.095, 1e-6);
    EXPECT_NEAR(zoomed.minimum, 0.9 - 5 * 0.095, 1e-6);
    const auto shifted = view_axis::GroupDelayZoom(18, axis.moveRef + 7, axis);
    EXPECT_NEAR(shifted.maximum, 0.9 - 2 * 0.095, 1e-6);
    const auto moved = view_axis::GroupDelayMove(axis.moveRef + 2, 0.38, axis);
    EXPECT_NEAR(moved.minimum, 0.9 - 5 * 0.38 - 2 * 0.38, 1e-6);
    EXPECT_NEAR(moved.maximum - moved.minimum, 3.8, 1e-6);
}

TEST(ViewAxis, TimeSliceCaptions) {
    EXPECT_EQ(view_axis::ReverbTimeSliceCaption(0), QStringLiteral("0-5msec"));
    EXPECT_EQ(view_axis::ReverbTimeSliceCaption(31), QStringLiteral("155-160msec"));
    const std::pair<int, const char*> bands[] = {
        {0, "0-200Hz"}, {22, "928-999Hz"}, {23, "0.999-1.074kHz"}, {63, "18.590-20.000kHz"}};
    for (const auto& [band, caption] : bands) {
        EXPECT_EQ(view_axis::GroupDelayBandCaption(band), QLatin1String(caption))
            << "band " << band;
    }
}

}  // namespace
}  // namespace sonalyx
