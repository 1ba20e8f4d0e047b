#include <gtest/gtest.h>
#include <QApplication>
#include <QComboBox>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "view_fixture.h"
#include "views/chart/chart_widget.h"
#include "views/panel_button.h"
#include "views/reverb_view.h"

namespace sonalyx::test {
namespace {

class MDIChildTest : public ViewFixture {
  protected:
    static int VisibleCharts(TMDIChild& child) {
        int n = 0;
        for (int i = 0; i < ReverbView::kCharts; ++i) {
            n += child.Reverb()->Chart(i)->isVisibleTo(&child);
        }
        return n;
    }
    static QPlainTextEdit* FileMemo(TMDIChild& child, int section) {
        return child.findChild<QPlainTextEdit*>(QStringLiteral("MemoFile%1").arg(section + 1));
    }
};

TEST_F(MDIChildTest, FrameHasItsCaptionTabsAndNamedControls) {
    TMDIChild child(QStringLiteral("New Data"), messenger_, chooser_);
    EXPECT_EQ(child.windowTitle(), QStringLiteral("New Data"));
    QTabWidget* tabs = child.PageControl();
    ASSERT_EQ(tabs->count(), 3);
    EXPECT_EQ(tabs->tabText(0), QStringLiteral("Reverb"));
    EXPECT_EQ(tabs->tabText(1), QStringLiteral("Group Delay"));
    EXPECT_EQ(tabs->tabText(2), QStringLiteral("Parameters"));
    for (const char* name : {"Panel1",
                             "ScrollBox1",
                             "Chart1",
                             "Chart15",
                             "LabelNoData",
                             "ComboChannel",
                             "PanelLegend",
                             "LegendTitle10",
                             "Shape10",
                             "Track_Zoom",
                             "Track_Move",
                             "Track_Elevation",
                             "Track_Rotation",
                             "Track_TimeSlice",
                             "ScrollBar_Perspective",
                             "EditElevation",
                             "EditRotation",
                             "EditTimeSlice",
                             "BtnTimeSlice",
                             "BtnEQBefore",
                             "BtnEQAfter",
                             "Ch",
                             "Freq",
                             "RadioGroup1",
                             "Zoom_Down",
                             "TimeSlice_Up",
                             "Timer1",
                             "PanelTimeSlice"}) {
        EXPECT_NE(child.findChild<QObject*>(QLatin1String(name)), nullptr) << name;
    }
    // Design positions of the trackbars and what they give the charts.
    const auto& view = child.Reverb()->Chart(0)->model().view;
    EXPECT_EQ(view.elevation, 348);
    EXPECT_EQ(view.rotation, 310);
    EXPECT_EQ(view.perspective, 25);
    EXPECT_EQ(child.Reverb()->Chart(0)->model().left.minimum, 53);
    EXPECT_EQ(child.Reverb()->Chart(0)->model().left.maximum, 63);
}

TEST_F(MDIChildTest, AllChartsStandInRowsOfThree) {
    struct Row {
        int layout;
        int charts;
        int rowsPerScreen;
        bool scrollBar;
    } rows[] = {
        {5, 5, 2, false}, {7, 7, 3, false}, {9, 9, 3, false}, {10, 10, 3, true}, {11, 9, 3, false}};
    for (const Row& r : rows) {
        auto child = open(r.layout);
        QScrollArea* box = child->Reverb()->ScrollBox1();
        EXPECT_EQ(VisibleCharts(*child), r.charts) << "layout " << r.layout;
        const QRect first = child->Reverb()->Chart(0)->geometry();
        const QRect fourth = child->Reverb()->Chart(3)->geometry();
        EXPECT_EQ(first.height(), box->height() / r.rowsPerScreen) << "layout " << r.layout;
        EXPECT_EQ(fourth.top(), first.height()) << "layout " << r.layout;
        EXPECT_EQ(child->Reverb()->Chart(1)->geometry().left(), first.width() + 1);
        EXPECT_EQ(box->verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOn, r.scrollBar)
            << "layout " << r.layout;
        const int expectedWidth =
            r.scrollBar ? (box->width() - box->style()->pixelMetric(QStyle::PM_ScrollBarExtent)) / 3
                        : box->width() / 3;
        EXPECT_EQ(first.width(), expectedWidth) << "layout " << r.layout;
        const auto* memo = child->Reverb()->ChannelMemo(3);
        EXPECT_EQ(memo->geometry(), QRect(fourth.left() + 4, fourth.bottom() + 1 - 52, 66, 45));
    }
}

TEST_F(MDIChildTest, OneSelectedChannelFillsOneLargeChartOrHidesItWithoutData) {
    auto child = open(9, {"[DATA3A]"});
    auto* combo = child->Panel1()->ComboChannel();
    EXPECT_EQ(combo->count(), 10);
    EXPECT_EQ(combo->itemText(3), QStringLiteral("Right"));
    combo->setCurrentIndex(3);
    EXPECT_EQ(VisibleCharts(*child), 1);
    EXPECT_EQ(child->Reverb()->Chart(0)->geometry().size(), child->Reverb()->ScrollBox1()->size());
    EXPECT_EQ(child->Reverb()->ChartTitle(0)->text(), QStringLiteral("Right"));
    child->OnClickEQAfter();
    EXPECT_EQ(VisibleCharts(*child), 0);
    // In "ALL" the chart of that channel stays, drawn without points.
    combo->setCurrentIndex(0);
    EXPECT_EQ(VisibleCharts(*child), 9);
    const auto& empty = child->Reverb()->Chart(2)->model();
    for (const auto& series : empty.series) {
        EXPECT_TRUE(series.points.empty());
    }
    EXPECT_EQ(child->Reverb()->Chart(1)->model().series[0].points.size(), 32u);
}

TEST_F(MDIChildTest, ADocumentWithoutReverbDataShowsOnlyNoData) {
    TMDIChild child(QStringLiteral("/x/empty.csv"), messenger_, chooser_);
    child.resize(900, 600);
    child.show();
    ASSERT_TRUE(child.LoadDocument({"[DATE]", "2026.01.02 03:04"}, QStringLiteral("/x/empty.csv")));
    EXPECT_TRUE(child.Reverb()->LabelNoData()->isVisibleTo(&child));
    EXPECT_EQ(child.Reverb()->LabelNoData()->text(), QStringLiteral("No Data"));
    EXPECT_EQ(VisibleCharts(child), 0);
    for (int tab : {1, 2}) {
        auto* pages = child.PageControl()->widget(tab)->findChild<QStackedWidget*>(
            QStringLiteral("SectionPages"));
        EXPECT_EQ(pages->currentWidget()->objectName(), QStringLiteral("LabelNoData"));
    }
}

TEST_F(MDIChildTest, AFileThatIsNotADocumentIsReportedAndShowsNothing) {
    TMDIChild child(QStringLiteral("/x/notes.txt"), messenger_, chooser_);
    child.show();
    EXPECT_FALSE(child.LoadDocument({"hello"}, QStringLiteral("/x/notes.txt")));
    EXPECT_EQ(messenger_.said, std::vector<std::string>{"Illegal file format.|/x/notes.txt"});
    EXPECT_FALSE(child.widget()->isVisible());
}

TEST_F(MDIChildTest, MemosAreShownEditedStoredAndSaved) {
    auto child = openCopy(5);
    const auto& doc = child->Document();
    ASSERT_FALSE(doc.channelMemos[0].empty());
    EXPECT_EQ(child->Reverb()->ChannelMemo(0)->toPlainText().toStdString(),
              doc.channelMemos[0].front());
    EXPECT_FALSE(child->IsModified());
    FileMemo(*child, 2)->setPlainText(QStringLiteral("Firmware 1.50\nafter update"));
    child->Reverb()->ChannelMemo(1)->setPlainText(QStringLiteral("moved 20 cm left"));
    EXPECT_TRUE(child->IsModified());
    EXPECT_EQ(doc.channelMemos[1], std::vector<std::string>{"moved 20 cm left"});
    ASSERT_TRUE(child->Save());
    const auto written = readDocumentLines(path_.toStdString());
    ASSERT_TRUE(written.has_value());
    MeasurementDocument reread;
    ASSERT_TRUE(DocumentLoader::load(reread, *written, path_.toStdString(), nullptr));
    EXPECT_EQ(reread.fileMemos[2], (std::vector<std::string>{"Firmware 1.50", "after update"}));
    EXPECT_EQ(reread.channelMemos[1], std::vector<std::string>{"moved 20 cm left"});

    child->SetPairMode(1);
    child->Reverb()->ChannelMemo(0)->setPlainText(QStringLiteral("fronts as a pair"));
    EXPECT_EQ(doc.groupMemos[0], std::vector<std::string>{"fronts as a pair"});
    EXPECT_EQ(doc.channelMemos[0], reread.channelMemos[0]);
}

TEST_F(MDIChildTest, ChFreqAndPairModeReduceTheSelectionAndRebuildTheLists) {
    auto child = open(10);
    auto* combo = child->Panel1()->ComboChannel();
    combo->setCurrentIndex(3);
    child->FreqClick();
    EXPECT_EQ(combo->currentIndex(), 1);
    EXPECT_EQ(combo->itemText(1), QStringLiteral("63Hz"));
    EXPECT_EQ(combo->toolTip(), QStringLiteral("Frequency"));
    EXPECT_EQ(child->Panel1()->LegendCaption(9), QStringLiteral("TS"));
    combo->setCurrentIndex(0);
    child->ChClick();
    EXPECT_EQ(combo->currentIndex(), 0);
    EXPECT_EQ(VisibleCharts(*child), 10);
    child->SetPairMode(1);
    EXPECT_EQ(combo->count(), 1 + child->Document().groupCount);
    EXPECT_EQ(VisibleCharts(*child), child->Document().groupCount);
    EXPECT_EQ(child->Panel1()->LegendCaption(0), QStringLiteral("63"));
    // 2D bars along channel groups in Freq mode.
    child->SetGraph3D(false);
    child->FreqClick();
    child->OnClickTimeSlice();
    const auto& bottom = child->Reverb()->Chart(0)->model().bottom;
    EXPECT_EQ(bottom.maximum, child->Document().groupCount);
    EXPECT_EQ(bottom.title, QStringLiteral("Channel"));
}

TEST_F(MDIChildTest, BeforeAndAfterPickTheVariantAndIgnoreARepeatedClick) {
    auto child = open(7);
    const auto& doc = child->Document();
    auto pointY = [&] { return child->Reverb()->Chart(1)->model().series[2].points[5].y; };
    EXPECT_NEAR(pointY(), doc.reverbValues[0][1][2][5] + 58.0, 1e-4);
    child->OnClickEQAfter();
    EXPECT_EQ(child->ReverbVariant(), 1);
    EXPECT_NEAR(pointY(), doc.reverbValues[1][1][2][5] + 58.0, 1e-4);
    EXPECT_TRUE(child->Panel1()->BtnEQAfter()->isPressed());
    EXPECT_FALSE(child->Panel1()->BtnEQBefore()->isPressed());
    child->OnClickEQAfter();
    EXPECT_EQ(child->ReverbVariant(), 1);
    child->OnClickEQBefore();
    EXPECT_NEAR(pointY(), doc.reverbValues[0][1][2][5] + 58.0, 1e-4);
}

TEST_F(MDIChildTest, TrackbarsDriveTheChartViews) {
    auto child = open(9);
    auto* panel = child->Panel1();
    auto charts = child->TargetCharts();
    ASSERT_EQ(charts.size(), 15);
    panel->TrackBar(Track::Zoom)->setValue(19);
    panel->TrackBar(Track::Move)->setValue(0);
    for (auto* chart : charts) {
        EXPECT_DOUBLE_EQ(chart->model().left.minimum, 75.5);
        EXPECT_DOUBLE_EQ(chart->model().left.maximum, 80.5);
        EXPECT_DOUBLE_EQ(chart->model().left.increment, 0.5);
    }
    panel->TrackBar(Track::Elevation)->setValue(90);
    panel->TrackBar(Track::Rotation)->setValue(0);
    EXPECT_EQ(charts.back()->model().view.elevation, 270);
    EXPECT_EQ(charts.back()->model().view.rotation, 360);
    EXPECT_EQ(panel->EditElevation()->text(), QStringLiteral("90"));
    child->SetGraph3D(false);
    EXPECT_FALSE(panel->TrackBar(Track::Elevation)->isEnabled());
    EXPECT_FALSE(charts.front()->model().view.enabled);
    panel->TrackBar(Track::Rotation)->setValue(20);
    EXPECT_EQ(charts.front()->model().view.rotation, 340);
    EXPECT_EQ(panel->EditRotation()->text(), QStringLiteral("0"));
}

TEST_F(MDIChildTest, TimeSliceLabelsAndBarMode) {
    auto child = open(9, {}, QSize(1000, 700));
    auto* panel = child->Panel1();
    QSlider* slice = panel->TrackBar(Track::TimeSlice);
    EXPECT_EQ(slice->maximum(), 31);
    EXPECT_TRUE(panel->PanelLegend()->isVisibleTo(panel));
    slice->setValue(4);
    EXPECT_EQ(panel->EditTimeSlice()->text(), QStringLiteral("20-25msec"));
    EXPECT_EQ(child->Reverb()->Chart(0)->model().series[0].kind, chart::SeriesKind::Line);

    child->OnClickTimeSlice();
    EXPECT_TRUE(child->BarMode());
    EXPECT_FALSE(panel->PanelLegend()->isVisibleTo(panel));
    EXPECT_TRUE(slice->isVisibleTo(panel));
    EXPECT_EQ(slice->toolTip(), QStringLiteral("Time Position"));
    const auto& bar = child->Reverb()->Chart(0)->model().series[0];
    EXPECT_EQ(bar.kind, chart::SeriesKind::Bar);
    EXPECT_NEAR(bar.points.at(0).y, child->Document().reverbValues[0][0][0][4] + 58.0, 1e-4);

    child->PageControl()->setCurrentIndex(TMDIChild::kGroupDelayTab);
    EXPECT_EQ(slice->maximum(), 63);
    EXPECT_EQ(panel->Perspective()->value(), 30);
    EXPECT_EQ(slice->toolTip(), QStringLiteral("Frequency"));
    slice->setValue(23);
    EXPECT_EQ(panel->EditTimeSlice()->text(), QStringLiteral("0.999-1.074kHz"));
    child->PageControl()->setCurrentIndex(TMDIChild::kReverbTab);
    EXPECT_EQ(slice->value(), 23);
    EXPECT_EQ(panel->Perspective()->value(), 25);

    child->OnClickTimeSlice();
    EXPECT_FALSE(slice->isVisibleTo(panel));
    EXPECT_TRUE(panel->PanelLegend()->isVisibleTo(panel));
    child->resize(1000, 380);
    QApplication::processEvents();
    EXPECT_LT(panel->height(), ViewControls::kLegendMinHeight);
    EXPECT_FALSE(panel->PanelLegend()->isVisibleTo(panel));
}

TEST_F(MDIChildTest, WheelAndArrowKeysScrollTheChartsBy32) {
    auto child = open(10, {}, QSize(1000, 500));
    QScrollBar* bar = child->Reverb()->ScrollBox1()->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 64);
    child->OnMouseWheelDown();
    EXPECT_EQ(bar->value(), 32);
    QTest::keyClick(child.get(), Qt::Key_Down);
    EXPECT_EQ(bar->value(), 64);
    child->OnMouseWheelUp();
    EXPECT_EQ(bar->value(), 32);
    child->PageControl()->setCurrentIndex(TMDIChild::kGroupDelayTab);
    child->OnMouseWheelDown();
    child->PageControl()->setCurrentIndex(TMDIChild::kReverbTab);
    EXPECT_EQ(bar->value(), 32);
}

TEST_F(MDIChildTest, DemoRotationSwingsAndPausesAtTheEnds) {
    TMDIChild child(QStringLiteral("New Data"), messenger_, chooser_);
    for (int i = 0; i < 40; ++i) {
        child.DemoRotateStep();
    }
    EXPECT_EQ(child.RotationPosition(), 90);
    EXPECT_FALSE(child.RotateBackward());
    child.DemoRotateStep();  // the pause at the end turns it round
    EXPECT_EQ(child.RotationPosition(), 90);
    EXPECT_TRUE(child.RotateBackward());
    child.DemoRotateStep();
    EXPECT_EQ(child.RotationPosition(), 89);
    EXPECT_EQ(child.Reverb()->Chart(14)->model().view.rotation, 271);
    child.SetGraph3D(false);
    child.DemoRotateStep();
    EXPECT_EQ(child.RotationPosition(), 89);
}

TEST_F(MDIChildTest, CloseQueryFollowsTheAnswer) {
    auto child = openCopy(5);
    FileMemo(*child, 0)->appendPlainText(QStringLiteral("x"));
    messenger_.answers = {Answer::Cancel, Answer::No};
    EXPECT_FALSE(child->CloseQuery());
    EXPECT_TRUE(child->CloseQuery());
    EXPECT_EQ(messenger_.said, (std::vector<std::string>{"Save changes to doc.csv ?|",
                                                         "Save changes to doc.csv ?|"}));
}

TEST_F(MDIChildTest, SavingNewDataUnderANameRenamesTheWindowAndReportsThePath) {
    TMDIChild child(QStringLiteral("New Data"), messenger_, chooser_);
    ASSERT_TRUE(child.LoadDocument(sampleLines(11), QStringLiteral("New Data")));
    EXPECT_TRUE(child.IsModified());
    const QString target = folder_.filePath(QStringLiteral("saved.csv"));
    chooser_.path = target.toStdString();
    QStringList reported;
    QObject::connect(&child, &TMDIChild::SavedAs, [&](const QString& p) { reported.append(p); });
    messenger_.answers = {Answer::Yes};
    EXPECT_TRUE(child.CloseQuery());
    EXPECT_EQ(messenger_.said, std::vector<std::string>{"Save New Data ?|"});
    EXPECT_EQ(reported, QStringList{target});
    EXPECT_EQ(child.windowTitle(), target);
    EXPECT_TRUE(QFile::exists(target));
}

TEST_F(MDIChildTest, ParameterRowsAndGroupDelayGroupsAreShown) {
    auto child = open(10);
    auto* table = child->findChild<QTableWidget*>(QStringLiteral("ParameterTable"));
    ASSERT_GT(table->rowCount(), 10);
    EXPECT_EQ(table->item(0, 0)->text(), QStringLiteral("* Speaker Setting"));
    auto* groups = child->findChild<QTableWidget*>(QStringLiteral("GroupDelayTable"));
    ASSERT_GT(groups->rowCount(), 0);
    EXPECT_EQ(groups->item(0, 0)->text(), QStringLiteral("Front"));
}

}  // namespace
}  // namespace sonalyx::test
