#include <gtest/gtest.h>
#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QLabel>
#include <QSlider>
#include <QTabWidget>
#include <functional>

#include "document/document_comparison.h"
#include "support/document_window.h"
#include "support/golden.h"
#include "views/chart/chart_widget.h"
#include "views/compare/reference_note.h"
#include "views/group_delay/group_delay_view.h"
#include "views/reverb/reverb_view.h"
#include "views/window/panel_button.h"
#include "views/window/view_export.h"

namespace sonalyx::test {
namespace {

std::shared_ptr<const MeasurementDocument> reference(const std::string& layout) {
    return std::make_shared<MeasurementDocument>(loadSampleDocument(layout));
}

class CompareViewTest : public ::testing::Test {};

// Whatever the view, each reference series stands in its slot's colour and kind; it has points
// exactly where the document's slot has some and the reference holds the same curve; bars
// stand in pairs, the reference's to the right.
TEST_F(CompareViewTest, ReferenceCurvesPairTheirSlotsInEveryView) {
    const struct Row {
        const char* name;
        std::function<void(TMDIChild&)> setUp;
    } rows[] = {
        {"3D lines of every channel", [](TMDIChild&) {}},
        {"3D bars by band",
         [](TMDIChild& w) {
             w.FreqClick();
             w.OnClickTimeSlice();
         }},
        {"2D bars of groups",
         [](TMDIChild& w) {
             w.SetPairMode(1);
             w.SetGraph3D(false);
             w.OnClickTimeSlice();
         }},
        {"group delay", [](TMDIChild& w) { w.PageControl()->setCurrentIndex(1); }},
    };
    for (const Row& row : rows) {
        DocumentWindow child("7");
        child->SetReference(reference("5"), QStringLiteral("five.csv"));
        row.setUp(*child);
        int paired = 0;
        for (auto* chart : child->TargetCharts()) {
            const auto& model = chart->model();
            if (!model.visible) {
                continue;
            }
            ASSERT_EQ(model.referenceSeries.size(), model.series.size()) << row.name;
            for (std::size_t s = 0; s < model.series.size(); ++s) {
                const auto& own = model.series[s];
                const auto& ref = model.referenceSeries[s];
                EXPECT_TRUE(ref.reference);
                // Nothing of the reference here, or a parked slot.
                if (ref.points.empty() ||
                    (ref.points.size() < 2 && ref.kind == chart::SeriesKind::Line)) {
                    continue;
                }
                EXPECT_EQ(ref.colour, own.colour) << row.name;
                EXPECT_EQ(ref.kind, own.kind) << row.name;
                EXPECT_EQ(ref.points.size(), own.points.size()) << row.name << ", slot " << s;
                if (own.kind == chart::SeriesKind::Bar && !own.points.empty()) {
                    EXPECT_LT(own.points[0].x, ref.points[0].x) << row.name;
                    // One label for the pair, under its middle.
                    EXPECT_DOUBLE_EQ(own.points[0].x + own.labelOffset,
                                     ref.points[0].x + ref.labelOffset);
                }
                ++paired;
            }
        }
        EXPECT_GT(paired, 0) << row.name;
    }
}

TEST_F(CompareViewTest, DifferenceIsCentredOnZeroAndZoomAndMoveActOnIt) {
    DocumentWindow child("7");
    const auto ref = reference("5");
    child->SetReference(ref, QStringLiteral("five.csv"));
    const auto* note = child->Panel1()->PanelReference();
    EXPECT_TRUE(note->isVisibleTo(&child.window()));
    EXPECT_EQ(note->LabelReference()->text(), QStringLiteral("Reference: five.csv"));
    EXPECT_EQ(note->LabelUnmatched()->text(), child->ReferenceUnmatched());

    child->SetDifferenceMode(TMDIChild::DifferenceMode::FromReference);
    const auto& left = child->Reverb()->Chart(0)->model().left;
    EXPECT_EQ(left.title, QStringLiteral("Difference[dB] "));
    EXPECT_EQ(std::make_pair(left.minimum, left.maximum), std::make_pair(-5.0, 5.0));
    // Left's 63 Hz curve, point by point.
    const MeasurementDocument expected = DocumentComparison(child->Document(), *ref).Difference();
    const auto& points = child->Reverb()->Chart(0)->model().series[0].points;
    ASSERT_EQ(points.size(), 32u);
    for (int t = 0; t < 32; ++t) {
        EXPECT_NEAR(points[t].y, expected.reverbValues[0][0][0][t], 1e-6) << t;
    }
    EXPECT_TRUE(child->Reverb()->Chart(0)->model().referenceSeries.empty());

    child->Panel1()->TrackBar(Track::Move)->setValue(22);
    EXPECT_EQ(std::make_pair(left.minimum, left.maximum), std::make_pair(-7.0, 3.0));
    child->Panel1()->TrackBar(Track::Zoom)->setValue(16);
    EXPECT_EQ(std::make_pair(left.minimum, left.maximum), std::make_pair(-12.0, 8.0));

    child->PageControl()->setCurrentIndex(TMDIChild::kGroupDelayTab);
    const auto& delay = child->GroupDelay()->Chart101()->model().left;
    EXPECT_EQ(delay.title, QStringLiteral("Difference[msec] "));
    EXPECT_NEAR(delay.minimum, -delay.maximum, 1e-9);

    // Ending the comparison ends the difference from it; the levels come back about 58 dB.
    child->PageControl()->setCurrentIndex(TMDIChild::kReverbTab);
    child->SetReference(nullptr, QString());
    EXPECT_EQ(child->Difference(), TMDIChild::DifferenceMode::Off);
    EXPECT_EQ(left.title, QStringLiteral("Level[dB] "));
    EXPECT_EQ(std::make_pair(left.minimum, left.maximum), std::make_pair(46.0, 66.0));
    EXPECT_FALSE(note->isVisibleTo(&child.window()));

    child->SetDifferenceMode(TMDIChild::DifferenceMode::AfterMinusBefore);
    EXPECT_EQ(child->Difference(), TMDIChild::DifferenceMode::AfterMinusBefore);
    EXPECT_FALSE(child->Panel1()->BtnEQAfter()->isEnabled());
}

// Overlays and a difference view written to build/screenshots/ for a person to look at; each
// must differ from the same view without the comparison.
TEST_F(CompareViewTest, Screenshots) {
    const struct Row {
        const char* name;
        std::function<void(TMDIChild&)> setUp;
        TMDIChild::DifferenceMode mode;
    } rows[] = {
        {"overlay-3d-left", [](TMDIChild& w) { w.Panel1()->ComboChannel()->setCurrentIndex(1); },
         TMDIChild::DifferenceMode::Off},
        {"overlay-2d-left",
         [](TMDIChild& w) {
             w.SetGraph3D(false);
             w.Panel1()->ComboChannel()->setCurrentIndex(1);
         },
         TMDIChild::DifferenceMode::Off},
        {"overlay-bar-3d-left",
         [](TMDIChild& w) {
             w.Panel1()->ComboChannel()->setCurrentIndex(1);
             w.Panel1()->TrackBar(Track::TimeSlice)->setValue(16);
             w.OnClickTimeSlice();
         },
         TMDIChild::DifferenceMode::Off},
        {"overlay-bar-2d-freq",
         [](TMDIChild& w) {
             w.SetGraph3D(false);
             w.FreqClick();
             w.Panel1()->ComboChannel()->setCurrentIndex(5);
             w.Panel1()->TrackBar(Track::TimeSlice)->setValue(16);
             w.OnClickTimeSlice();
         },
         TMDIChild::DifferenceMode::Off},
        {"difference-3d", [](TMDIChild&) {}, TMDIChild::DifferenceMode::FromReference},
    };
    for (const Row& row : rows) {
        DocumentWindow child("10", QSize(1180, 760));
        row.setUp(*child);
        QApplication::processEvents();
        const QImage plain = ViewExport(*child).Grab();
        child->SetReference(reference("7"), QStringLiteral("sample-layout-7.csv"));
        child->SetDifferenceMode(row.mode);
        QApplication::processEvents();
        const QString path = screenshotPath(QStringLiteral("compare-%1.png").arg(row.name));
        QString error;
        ASSERT_TRUE(ViewExport(*child).Save(path, error)) << error.toStdString();
        const QImage compared(path);
        EXPECT_EQ(compared.size(), QSize(1180, 760)) << row.name;
        EXPECT_NE(compared, plain.convertToFormat(compared.format())) << row.name;
    }
}

}  // namespace
}  // namespace sonalyx::test
