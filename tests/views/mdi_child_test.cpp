#include <gtest/gtest.h>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QTest>
#include <QWheelEvent>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "support/document_window.h"
#include "support/golden.h"
#include "views/chart/chart_widget.h"
#include "views/reverb/reverb_view.h"
#include "views/window/fit_to_data.h"
#include "views/window/panel_button.h"

namespace sonalyx::test {
namespace {

int VisibleCharts(TMDIChild& child) {
    int n = 0;
    for (int i = 0; i < ReverbView::kCharts; ++i)
        n += child.Reverb()->Chart(i)->isVisibleTo(&child);
    return n;
}

QPlainTextEdit* FileMemo(TMDIChild& child, int section) {
    return child.findChild<QPlainTextEdit*>(QStringLiteral("MemoFile%1").arg(section + 1));
}

TEST(MDIChild, FrameHasItsCaptionTabsAndNamedControls) {
    RecordingMessenger messenger;
    ScriptedChooser chooser;
    TMDIChild child(QStringLiteral("New Data"), messenger, chooser);
    EXPECT_EQ(child.windowTitle(), QStringLiteral("New Data"));
    QTabWidget* tabs = child.PageControl();
    ASSERT_EQ(tabs->count(), 3);
    EXPECT_EQ(QStringList({tabs->tabText(0), tabs->tabText(1), tabs->tabText(2)}),
              QStringList({"Reverb", "Group Delay", "Parameters"}));
    const QString names = QStringLiteral(
        "Panel1 ScrollBox1 Chart1 Chart15 LabelNoData ComboChannel PanelLegend LegendTitle10 "
        "Shape10 Track_Zoom Track_Move Track_Elevation Track_Rotation Track_TimeSlice "
        "ScrollBar_Perspective EditElevation EditRotation EditTimeSlice BtnTimeSlice BtnEQBefore "
        "BtnEQAfter Ch Freq RadioGroup1 Zoom_Down TimeSlice_Up Timer1 PanelTimeSlice");
    for (const QString& name : names.split(QLatin1Char(' ')))
        EXPECT_NE(child.findChild<QObject*>(name), nullptr) << name.toStdString();
    // The trackbars' design positions and what they give the charts: the render goldens.
}

TEST(MDIChild, AllChartsStandInRowsOfThree) {
    struct Row {
        int layout;
        int charts;
        int rowsPerScreen;
        bool scrollBar;
    } rows[] = {
        {5, 5, 2, false}, {7, 7, 3, false}, {9, 9, 3, false}, {10, 10, 3, true}, {11, 9, 3, false}};
    for (const Row& r : rows) {
        SCOPED_TRACE(r.layout);
        DocumentWindow child(std::to_string(r.layout));
        QScrollArea* box = child->Reverb()->ScrollBox1();
        EXPECT_EQ(VisibleCharts(*child), r.charts);
        const QRect first = child->Reverb()->Chart(0)->geometry();
        const QRect fourth = child->Reverb()->Chart(3)->geometry();
        EXPECT_EQ(first.height(), box->height() / r.rowsPerScreen);
        EXPECT_EQ(fourth.top(), first.height());
        EXPECT_EQ(child->Reverb()->Chart(1)->geometry().left(), first.width() + 1);
        EXPECT_EQ(box->verticalScrollBarPolicy() == Qt::ScrollBarAlwaysOn, r.scrollBar);
        const int expectedWidth =
            r.scrollBar ? (box->width() - box->style()->pixelMetric(QStyle::PM_ScrollBarExtent)) / 3
                        : box->width() / 3;
        EXPECT_EQ(first.width(), expectedWidth);
        const auto* memo = child->Reverb()->ChannelMemo(3);
        EXPECT_EQ(memo->geometry(), QRect(fourth.left() + 4, fourth.bottom() + 1 - 52, 66, 45));
    }
}

TEST(MDIChild, OneSelectedChannelFillsOneLargeChartOrHidesItWithoutData) {
    DocumentWindow child(sampleLines("9", {"[DATA3A]"}), QStringLiteral("nine.csv"));
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

// A file that is not a document: the main window tests see it reported and its window closed.
TEST(MDIChild, NoReverbDataShowsNoData) {
    DocumentWindow empty({"[DATE]", "2026.01.02 03:04"}, QStringLiteral("/x/empty.csv"));
    ASSERT_TRUE(empty.loaded());
    EXPECT_TRUE(empty->Reverb()->LabelNoData()->isVisibleTo(&*empty));
    EXPECT_EQ(empty->Reverb()->LabelNoData()->text(), QStringLiteral("No Data"));
    EXPECT_EQ(VisibleCharts(*empty), 0);
    for (int tab : {1, 2}) {
        auto* pages = empty->PageControl()->widget(tab)->findChild<QStackedWidget*>(
            QStringLiteral("SectionPages"));
        EXPECT_EQ(pages->currentWidget()->objectName(), QStringLiteral("LabelNoData"));
    }
}

TEST(MDIChild, MemosAreShownEditedStoredAndSaved) {
    DocumentWindow child("5");
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
    const auto written = readDocumentLines(child.path().toStdString());
    ASSERT_TRUE(written.has_value());
    MeasurementDocument reread;
    ASSERT_TRUE(DocumentLoader::load(reread, *written, child.path().toStdString(), nullptr));
    EXPECT_EQ(reread.fileMemos[2], (std::vector<std::string>{"Firmware 1.50", "after update"}));
    EXPECT_EQ(reread.channelMemos[1], std::vector<std::string>{"moved 20 cm left"});

    child->SetPairMode(1);
    child->Reverb()->ChannelMemo(0)->setPlainText(QStringLiteral("fronts as a pair"));
    EXPECT_EQ(doc.groupMemos[0], std::vector<std::string>{"fronts as a pair"});
    EXPECT_EQ(doc.channelMemos[0], reread.channelMemos[0]);

    // An empty memo invites a note only under the mouse; a long one scrolls.
    QPlainTextEdit* blank = child->Reverb()->ChannelMemo(2);
    EXPECT_TRUE(blank->placeholderText().isEmpty());
    QEvent enter(QEvent::Enter);
    QApplication::sendEvent(blank, &enter);
    EXPECT_EQ(blank->placeholderText(), QStringLiteral("Channel memo"));
    blank->setPlainText(QStringLiteral("one\ntwo\nthree\nfour\nfive"));
    QApplication::processEvents();
    EXPECT_TRUE(blank->verticalScrollBar()->isVisibleTo(blank));
}

TEST(MDIChild, ChFreqAndPairModeReduceTheSelectionAndRebuildTheLists) {
    DocumentWindow child("10");
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

TEST(MDIChild, BeforeAndAfterPickTheVariantAndIgnoreARepeatedClick) {
    DocumentWindow child("7");
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

TEST(MDIChild, TrackbarsDriveTheChartViews) {
    DocumentWindow child("9");
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
    QTest::mouseClick(panel->EditElevation(), Qt::LeftButton);  // restores the design position
    EXPECT_EQ(panel->TrackBar(Track::Elevation)->value(), 12);
    child->SetGraph3D(false);
    EXPECT_FALSE(panel->TrackBar(Track::Elevation)->isEnabled());
    EXPECT_FALSE(charts.front()->model().view.enabled);
    panel->TrackBar(Track::Rotation)->setValue(20);
    EXPECT_EQ(charts.front()->model().view.rotation, 340);
    EXPECT_EQ(panel->EditRotation()->text(), QStringLiteral("0"));

    // Each graph tab's trackbars show what its own charts have.
    child->SetGraph3D(true);
    child->PageControl()->setCurrentIndex(TMDIChild::kGroupDelayTab);
    EXPECT_EQ(panel->TrackBar(Track::Zoom)->value(), 18);
    panel->TrackBar(Track::Zoom)->setValue(10);
    panel->TrackBar(Track::Rotation)->setValue(80);
    for (const int tab : {TMDIChild::kReverbTab, TMDIChild::kGroupDelayTab}) {
        child->PageControl()->setCurrentIndex(tab);
        const auto& model = child->TargetCharts().front()->model();
        EXPECT_EQ(panel->TrackBar(Track::Zoom)->value(), tab == 0 ? 19 : 10);
        EXPECT_EQ(360 - panel->TrackBar(Track::Rotation)->value(), model.view.rotation);
        EXPECT_EQ(panel->EditRotation()->text().toInt(), panel->TrackBar(Track::Rotation)->value());
    }
}

// Every point the visible charts draw lies inside the fitted axis, and no move at one zoom
// step tighter holds them all.
TEST(MDIChild, FitToDataHoldsEveryDrawnPointAtTheTightestZoom) {
    const struct {
        const char* layout;
        int tab = 0;
        bool after = false, bars = false, freq = false;  // bars: 2D bars
        int channel = 0, zoom = -1;
        const char* reference = nullptr;  // its curves count too
        DifferenceMode difference = DifferenceMode::Off;
    } rows[] = {
        {"11"},
        {"11", 1},
        {"11", 1, true, true},
        {"9", 0, false, true, true},
        {"5", 0, false, false, false, 2, 2},
        {.layout = "7", .reference = "11"},
        {.layout = "10", .difference = DifferenceMode::AfterMinusBefore},
    };
    for (const auto& row : rows) {
        DocumentWindow child(row.layout);
        child->PageControl()->setCurrentIndex(row.tab);
        if (row.reference)
            child->SetReference(
                std::make_shared<MeasurementDocument>(loadSampleDocument(row.reference)),
                QStringLiteral("ref"));
        child->SetDifferenceMode(row.difference);
        if (row.after)
            child->OnClickEQAfter();
        if (row.freq)
            child->FreqClick();
        if (row.bars) {
            child->SetGraph3D(false);
            child->OnClickTimeSlice();
        }
        child->Panel1()->ComboChannel()->setCurrentIndex(row.channel);
        if (row.zoom >= 0)
            child->Panel1()->TrackBar(Track::Zoom)->setValue(row.zoom);
        child->FitToData();
        std::vector<const chart::ChartModel*> models;
        for (const auto* chart : child->TargetCharts())
            models.push_back(&chart->model());
        const auto span = FitToData::DrawnSpan(models);
        ASSERT_TRUE(span.has_value());
        const auto outside = [&] {
            const auto& left = models.front()->left;
            return left.minimum > span->low || left.maximum < span->high;
        };
        for (const auto* model : models)
            EXPECT_EQ(model->left.minimum, models.front()->left.minimum);
        EXPECT_FALSE(outside()) << row.layout;
        QSlider* zoom = child->Panel1()->TrackBar(Track::Zoom);
        QSlider* move = child->Panel1()->TrackBar(Track::Move);
        if (zoom->value() == zoom->maximum())
            continue;  // nothing is tighter
        zoom->setValue(zoom->value() + 1);
        for (int m = move->minimum(); m <= move->maximum(); ++m) {
            move->setValue(m);
            EXPECT_TRUE(outside()) << row.layout << " move " << m;
        }
    }
}

TEST(MDIChild, TimeSliceLabelsAndBarMode) {
    DocumentWindow child("9", QSize(1000, 700));
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
    panel->TrackBar(Track::Zoom)->setValue(12);  // the bars stay on the floor of the axis
    EXPECT_EQ(bar.origin, child->Reverb()->Chart(0)->model().left.minimum);

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

TEST(MDIChild, WheelAndArrowKeysScrollTheChartsBy32) {
    DocumentWindow child("10", QSize(1000, 500));
    QScrollArea* box = child->Reverb()->ScrollBox1();
    QScrollBar* bar = box->verticalScrollBar();
    ASSERT_GT(bar->maximum(), 96);
    child->OnMouseWheelDown();
    EXPECT_EQ(bar->value(), 32);
    QTest::keyClick(&*child, Qt::Key_Down);
    EXPECT_EQ(bar->value(), 64);
    QTest::keyClick(box, Qt::Key_Down);  // the box itself, once a chart was clicked
    EXPECT_EQ(bar->value(), 96);
    child->OnMouseWheelUp();
    EXPECT_EQ(bar->value(), 64);
    // 32 pixels per 120 units of vertical delta, however the delta comes.
    const struct {
        QPoint delta;
        int value;
    } wheel[] = {{{0, -40}, 64}, {{0, -40}, 64}, {{0, -40}, 96}, {{-120, 0}, 96},
                 {{0, 0}, 96},   {{0, 240}, 32}, {{0, 60}, 32},  {{0, 60}, 0}};
    for (const auto& w : wheel) {
        QWheelEvent event(QPointF(5, 5), box->mapToGlobal(QPointF(5, 5)), QPoint(), w.delta,
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box->viewport(), &event);
        EXPECT_EQ(bar->value(), w.value) << w.delta.x() << "," << w.delta.y();
    }
    bar->setValue(32);
    child->PageControl()->setCurrentIndex(TMDIChild::kGroupDelayTab);
    child->OnMouseWheelDown();
    child->PageControl()->setCurrentIndex(TMDIChild::kReverbTab);
    EXPECT_EQ(bar->value(), 32);
}

TEST(MDIChild, DemoRotationSwingsAndPausesAtTheEnds) {
    RecordingMessenger messenger;
    ScriptedChooser chooser;
    TMDIChild child(QStringLiteral("New Data"), messenger, chooser);
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

TEST(MDIChild, GroupDelayGroupsAreShown) {
    DocumentWindow child("10");
    auto* groups = child->findChild<QTableWidget*>(QStringLiteral("GroupDelayTable"));
    ASSERT_GT(groups->rowCount(), 0);
    EXPECT_EQ(groups->item(0, 0)->text(), QStringLiteral("Front"));
    // The legend reads every group's name whole.
    child->PageControl()->setCurrentIndex(TMDIChild::kGroupDelayTab);
    QApplication::processEvents();
    for (auto* title : child->Panel1()->PanelLegend()->findChildren<QLabel*>()) {
        if (title->isVisibleTo(child->Panel1())) {
            EXPECT_GE(title->width(), title->sizeHint().width()) << title->text().toStdString();
        }
    }
}

}  // namespace
}  // namespace sonalyx::test
