#include <gtest/gtest.h>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QSlider>
#include <QTabWidget>
#include <QTest>
#include <algorithm>

#include "support/document_window.h"
#include "support/golden.h"
#include "views/chart/chart_widget.h"
#include "views/group_delay/group_delay_filler.h"
#include "views/group_delay/group_delay_view.h"

namespace sonalyx::test {
namespace {

using chart::SeriesKind;

// The labels of all 64 bands, one line per window width on either side of each threshold, in
// 2D and 3D: "." for no label, "_" for a blank grid mark, otherwise the text.
TEST(GroupDelayFiller, PointLabelsFollowTheWindowWidthAndThe3DRule) {
    std::vector<GoldenSection> sections;
    for (const bool view3D : {false, true}) {
        auto& lines =
            sections.emplace_back(view3D ? "3D" : "2D", std::vector<std::string>{}).second;
        for (const int width : {300, 301, 320, 321, 450, 451, 599, 600, 601}) {
            QString line = QString::number(width) + QLatin1Char(':');
            for (int band = 0; band < kGroupDelayBands; ++band) {
                const QString label = GroupDelayFiller::PointLabel(band, width, view3D);
                line += QLatin1Char(' ') + (label.isEmpty()               ? QStringLiteral(".")
                                            : label == QLatin1String(" ") ? QStringLiteral("_")
                                                                          : label);
            }
            lines.push_back(line.toStdString());
        }
    }
    expectSectionsMatchGolden(testDataPath("views/group_delay_labels.txt"), sections);
}

// The sample's lines with some lines left out (the "(Offset" line, a group's row after
// "[After]"), for documents the shipped samples do not cover.
std::vector<std::string> linesWithout(const std::string& layout,
                                      const std::vector<std::string>& prefixes) {
    auto lines = sampleLines(layout);
    const auto after = std::find(lines.begin(), lines.end(), "[After]");
    lines.erase(std::remove_if(after, lines.end(),
                               [&](const std::string& line) {
                                   return std::any_of(
                                       prefixes.begin(), prefixes.end(),
                                       [&](const std::string& p) { return line.rfind(p, 0) == 0; });
                               }),
                lines.end());
    return lines;
}

// The sample with its offset line saying spanText and read as the section's last offset: the
// blank line after it, which would set the span back to 1.8, is left out.
std::vector<std::string> linesWithSpan(const std::string& layout, const std::string& spanText) {
    auto lines = sampleLines(layout);
    const auto offset = std::find_if(lines.begin(), lines.end(), [](const std::string& line) {
        return line.rfind("(Offset = ", 0) == 0;
    });
    EXPECT_NE(offset, lines.end());
    *offset = "(Offset = " + spanText + "ms)";
    lines.erase(offset + 1);
    return lines;
}

// A document window on the Group Delay tab.
struct GroupDelayWindow : DocumentWindow {
    explicit GroupDelayWindow(const std::vector<std::string>& lines, QSize size = {1000, 640})
        : DocumentWindow(lines, QStringLiteral("gd.csv"), size) {
        window().PageControl()->setCurrentIndex(TMDIChild::kGroupDelayTab);
        QApplication::processEvents();
    }
};

chart::ChartModel& chart(TMDIChild& child) {
    return child.GroupDelay()->Chart101()->model();
}

int slotsWithCurves(const chart::ChartModel& model) {
    return static_cast<int>(std::count_if(model.series.begin(), model.series.end(),
                                          [](const auto& s) { return s.points.size() > 1; }));
}

TEST(GroupDelayView, LineFillDrawsEveryGroupAndParksTheOtherSlots) {
    GroupDelayWindow child(sampleLines("9"));
    const auto& model = chart(*child);
    const int groups = child->Document().groupDelay.groupCount;
    ASSERT_EQ(groups, 4);
    EXPECT_EQ(child->TargetCharts().size(), 1);
    EXPECT_EQ(model.bottom.increment, 31);
    EXPECT_EQ(model.left.title, QStringLiteral("Group Delay[msec] "));
    EXPECT_EQ(child->Panel1()->ComboChannel()->count(), groups + 1);
    EXPECT_EQ(child->Panel1()->ComboChannel()->itemText(1), QStringLiteral("Front"));
    // The curves' points and colours, the parked slots and the white swatches are in the
    // render goldens of this tab (tests/data/views).
    EXPECT_EQ(slotsWithCurves(model), groups);

    // A narrower window relabels the axis: no frequency text in 3D below 600 pixels.
    child->resize(580, 480);
    QApplication::processEvents();
    EXPECT_EQ(model.series[0].points[0].label, QStringLiteral(" "));
    child->SetGraph3D(false);
    EXPECT_EQ(model.series[0].points[0].label, QStringLiteral("200"));
    EXPECT_EQ(model.series[0].points[7].label, QStringLiteral(" "));
    EXPECT_EQ(model.series[0].points[3].label, QStringLiteral(""));

    child->Panel1()->ComboChannel()->setCurrentIndex(2);
    EXPECT_EQ(slotsWithCurves(model), 1);
    EXPECT_EQ(model.series[1].points.size(), 64u);
    EXPECT_EQ(model.series[0].title, QStringLiteral(" "));
    // The Reverb tab keeps its own list and choice.
    child->PageControl()->setCurrentIndex(TMDIChild::kReverbTab);
    EXPECT_EQ(child->Panel1()->ComboChannel()->currentIndex(), 0);
    child->PageControl()->setCurrentIndex(TMDIChild::kGroupDelayTab);
    EXPECT_EQ(child->Panel1()->ComboChannel()->currentIndex(), 2);

    // The readout names a curve's band by its frequency edges.
    child->Panel1()->TrackBar(Track::Zoom)->setValue(0);
    auto* chart101 = child->GroupDelay()->Chart101();
    chart101->repaint();
    const auto& point = model.series[1].points[22];
    QTest::mouseMove(chart101, chart::ChartProjection::forChart(model, QRectF(chart101->rect()))
                                   .map(point.x, point.y, 1)
                                   .toPoint());
    EXPECT_EQ(chart101->readout().text, QStringLiteral("%1: 928-999Hz, %2 ms")
                                            .arg(model.series[1].title.trimmed())
                                            .arg(point.y, 0, 'f', 2));
}

TEST(GroupDelayView, AGroupWithoutAfterDataKeepsItsSwatch) {
    GroupDelayWindow child(linesWithout("9", {"Center,"}));
    child->OnClickEQAfter();
    const auto& model = chart(*child);
    EXPECT_EQ(slotsWithCurves(model), 3);
    EXPECT_EQ(model.series[1].points.size(), 1u);
    EXPECT_EQ(model.series[1].title, QStringLiteral(" "));
    EXPECT_EQ(child->Panel1()->LegendColour(1), model.series[1].colour);
    EXPECT_NE(child->Panel1()->LegendColour(1), QColor(Qt::white));
    child->OnClickEQBefore();
    EXPECT_EQ(slotsWithCurves(model), 4);
}

TEST(GroupDelayView, ZoomAndMoveAtTheEndsOfTheirRanges) {
    // The samples read as 1.8 ms (a blank line follows their offset line), and a 3 ms span.
    const auto span18 = sampleLines("9");
    const auto span30 = linesWithSpan("9", "+3.0");
    struct Row {
        const char* name;
        const std::vector<std::string>& lines;
        int moveRef, moveMax;
        int zoom, move;
        double min, max;
    } rows[] = {
        // The axis maths is view_axis's; these check the sliders reach it from both ends.
        {"1.8 default", span18, 19, 30, 18, 19, 0.425, 1.375},
        {"1.8 zoom 19 move 0", span18, 19, 30, 19, 0, 1.565, 2.04},
        {"3.0 default", span30, 12, 20, 18, 12, 0.875, 2.125},
        {"3.0 zoom 0 move top", span30, 12, 20, 0, 20, -14.75, -2.25},
    };
    for (const Row& r : rows) {
        GroupDelayWindow child(r.lines);
        QSlider* move = child->Panel1()->TrackBar(Track::Move);
        EXPECT_EQ(move->maximum(), r.moveMax) << r.name;
        EXPECT_EQ(move->value(), r.moveRef) << r.name;
        child->Panel1()->TrackBar(Track::Zoom)->setValue(r.zoom);
        move->setValue(r.move);
        const auto& left = chart(*child).left;
        EXPECT_NEAR(left.minimum, r.min, 1e-5) << r.name;
        EXPECT_NEAR(left.maximum, r.max, 1e-5) << r.name;
        // The Reverb tab gets its own slider back, and this tab its position again.
        child->PageControl()->setCurrentIndex(TMDIChild::kReverbTab);
        EXPECT_EQ(move->maximum(), 40) << r.name;
        EXPECT_EQ(move->value(), 20) << r.name;
        child->PageControl()->setCurrentIndex(TMDIChild::kGroupDelayTab);
        EXPECT_EQ(move->value(), r.move) << r.name;
    }
}

TEST(GroupDelayView, BarGraphsShowOneBandFromTheAxisBottom) {
    GroupDelayWindow child(sampleLines("9"));
    child->Panel1()->TrackBar(Track::TimeSlice)->setValue(23);  // its caption: mdi_child_test
    child->OnClickTimeSlice();
    const auto& model = chart(*child);
    const auto& doc = child->Document().groupDelay;
    for (const bool view3D : {true, false}) {
        child->SetGraph3D(view3D);
        for (int g = 0; g < 4; ++g) {
            const auto& s = model.series[g];
            ASSERT_EQ(s.points.size(), 1u) << "group " << g << " 3D " << view3D;
            EXPECT_EQ(s.kind, SeriesKind::Bar);
            EXPECT_EQ(s.origin, model.left.minimum);
            EXPECT_FLOAT_EQ(s.points[0].y, doc.values[0][g][23]);
            EXPECT_EQ(s.points[0].x, view3D ? 24 : g + 0.5) << "group " << g;
        }
        EXPECT_TRUE(model.series[4].points.empty());
        EXPECT_EQ(model.bottom.title.trimmed(),
                  view3D ? QStringLiteral("Freq[Hz]") : QStringLiteral("Channel"));
    }
    child->Panel1()->TrackBar(Track::Zoom)->setValue(10);
    EXPECT_EQ(model.series[0].origin, model.left.minimum);
}

}  // namespace
}  // namespace sonalyx::test
