#include <gtest/gtest.h>
#include <QApplication>
#include <QSlider>
#include <QTest>
#include <QTimer>

#include "support/document_window.h"
#include "views/reverb/reverb_view.h"
#include "views/window/step_button.h"

namespace sonalyx::test {
namespace {

class StepButtonsTest : public ::testing::Test {
  protected:
    QSlider* TrackBar(Track track) { return panel_->TrackBar(track); }
    StepButton* Button(Step step) { return panel_->StepButtonOf(step); }

    DocumentWindow child_{"9"};
    ViewControls* panel_ = child_->Panel1();
};

TEST_F(StepButtonsTest, AMouseClickStepsTwiceAndTheKeyboardOnce) {
    struct Row {
        Step step;
        Track track;
        int from, afterClick;
    } rows[] = {
        {Step::MoveDown, Track::Move, 20, 18},
        {Step::ZoomUp, Track::Zoom, 19, 19},
        {Step::ZoomDown, Track::Zoom, 0, 0},
        {Step::ElevationUp, Track::Elevation, 89, 90},
        {Step::RotationDown, Track::Rotation, 50, 48},
        {Step::TimeSliceUp, Track::TimeSlice, 30, 31},
    };
    child_->OnClickTimeSlice();  // shows the time-slice buttons
    for (const Row& r : rows) {
        TrackBar(r.track)->setValue(r.from);
        QTest::mouseClick(Button(r.step), Qt::LeftButton);
        EXPECT_EQ(TrackBar(r.track)->value(), r.afterClick)
            << Button(r.step)->objectName().toStdString();
        EXPECT_FALSE(child_->Timer1()->isActive());
    }
    TrackBar(Track::Move)->setValue(20);
    Button(Step::MoveUp)->click();
    EXPECT_EQ(TrackBar(Track::Move)->value(), 21);
}

TEST_F(StepButtonsTest, HoldingRepeatsAfterAPauseAndLeavingStopsAtOnce) {
    QSlider* elevation = TrackBar(Track::Elevation);
    StepButton* up = Button(Step::ElevationUp);
    QTest::mousePress(up, Qt::LeftButton);
    EXPECT_EQ(elevation->value(), 13);
    EXPECT_TRUE(child_->Timer1()->isActive());
    EXPECT_EQ(child_->Timer1()->interval(), 500);
    QTRY_VERIFY_WITH_TIMEOUT(elevation->value() >= 16, 10000);
    EXPECT_EQ(child_->Timer1()->interval(), 60);
    EXPECT_EQ(child_->Reverb()->Chart(0)->model().view.elevation, 360 - elevation->value());

    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(up, &leave);
    EXPECT_FALSE(child_->Timer1()->isActive());
    const int stopped = elevation->value();
    QTest::qWait(200);
    QTest::mouseRelease(up, Qt::LeftButton, {}, QPoint(-20, -20));
    EXPECT_EQ(elevation->value(), stopped);
}

TEST_F(StepButtonsTest, TrackbarsHandTheFocusBack) {
    child_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&*child_));
    for (Track track : {Track::Zoom, Track::Move, Track::Elevation, Track::Rotation}) {
        TrackBar(track)->setFocus(Qt::MouseFocusReason);
        EXPECT_FALSE(TrackBar(track)->hasFocus());
    }
    EXPECT_TRUE(child_->widget()->hasFocus());
}

}  // namespace
}  // namespace sonalyx::test
