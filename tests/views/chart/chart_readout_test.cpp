#include <gtest/gtest.h>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include "support/document_window.h"
#include "views/chart/chart_widget.h"

namespace sonalyx::test {
namespace {

using namespace chart;

// Three parallel decays 10 dB apart, a point every 5 ms: no two points within reach.
ChartModel knownChart() {
    ChartModel m;
    m.left = {50, 80, 5, QStringLiteral("Level[dB] ")};
    m.bottom = {0, 160, 10, QStringLiteral("Time[msec]")};
    const char* titles[] = {"High", "Mid", "Low"};
    for (int s = 0; s < 3; ++s) {
        m.series[s].title = QLatin1String(titles[s]);
        for (int t = 1; t <= 32; ++t)
            m.series[s].points.push_back({5.0 * t, 75.0 - 10 * s - 0.05 * 5 * t, QString()});
    }
    return m;
}

// A shown chart, hovered with real mouse events.
class ChartReadoutTest : public ::testing::Test {
  protected:
    void show(bool view3d) {
        widget_.model() = knownChart();
        widget_.model().view.enabled = view3d;
        widget_.resize(640, 420);
        widget_.show();
        ASSERT_TRUE(QTest::qWaitForWindowExposed(&widget_));
        QCoreApplication::processEvents();
    }
    QPoint pixelOf(int slot, int index) const {
        const Point& p = widget_.model().series[static_cast<std::size_t>(slot)].points[index];
        return ChartProjection::forChart(widget_.model(), QRectF(widget_.rect()))
            .map(p.x, p.y, slot)
            .toPoint();
    }

    ChartWidget widget_;
};

TEST_F(ChartReadoutTest, ReadsTheNearestPointIn2DAnd3D) {
    struct Row {
        bool view3d;
        int slot;
        int index;
        const char* text;
    } rows[] = {{false, 0, 3, "High: 20 ms, 74 dB"},
                {false, 1, 8, "Mid: 45 ms, 62.75 dB"},
                {true, 2, 0, "Low: 5 ms, 54.75 dB"},
                {true, 1, 20, "Mid: 105 ms, 59.75 dB"}};
    QSignalSpy texts(&widget_, &ChartWidget::readoutChanged);
    for (const Row& row : rows) {
        show(row.view3d);
        const QString where =
            QStringLiteral("3D %1 slot %2 point %3").arg(row.view3d).arg(row.slot).arg(row.index);
        QTest::mouseMove(&widget_, pixelOf(row.slot, row.index) + QPoint(1, 1));
        const Readout& r = widget_.readout();
        ASSERT_TRUE(r.shown) << where.toStdString();
        EXPECT_EQ(r.point.slot, row.slot) << where.toStdString();
        EXPECT_EQ(r.point.index, row.index) << where.toStdString();
        EXPECT_EQ(r.text, QLatin1String(row.text));
        EXPECT_EQ(QToolTip::text(), r.text);
        ASSERT_FALSE(texts.isEmpty());
        EXPECT_EQ(texts.last().at(0).toString(), r.text);
    }
    // The last row, in 3D, for a person to look at.
    EXPECT_TRUE(widget_.grab().save(screenshotPath(QStringLiteral("chart-readout-3d.png"))));
}

TEST_F(ChartReadoutTest, NothingOutsideThePlotAndNoRedrawWhileHovering) {
    show(false);
    QTest::mouseMove(&widget_, pixelOf(1, 10));
    QCoreApplication::processEvents();
    const int renders = widget_.cacheRenders();
    ASSERT_GE(renders, 1);
    QSignalSpy texts(&widget_, &ChartWidget::readoutChanged);
    for (int i = 0; i < 12; ++i) {
        QTest::mouseMove(&widget_, pixelOf(1, 10 + i) + QPoint(0, -2));
        widget_.repaint();
    }
    EXPECT_EQ(widget_.cacheRenders(), renders) << "a hover drew the chart again";
    EXPECT_EQ(widget_.readout().point.index, 21);
    EXPECT_GE(texts.size(), 10);

    // The crosshair is on screen, and not in the chart's own picture (print, export).
    const QImage onScreen = widget_.grab().toImage();
    EXPECT_TRUE(onScreen.save(screenshotPath(QStringLiteral("chart-readout.png"))));
    QImage chartOnly(onScreen.size(), onScreen.format());
    {
        QPainter painter(&chartOnly);
        widget_.paint(painter, QRectF(widget_.rect()));
    }
    EXPECT_NE(onScreen, chartOnly);

    QTest::mouseMove(&widget_, QPoint(2, 2));
    EXPECT_FALSE(widget_.readout().shown);
    EXPECT_EQ(texts.last().at(0).toString(), QString());
    EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 2000));

    // A change of the chart is drawn again once.
    widget_.model().series[0].points.clear();
    widget_.repaint();
    EXPECT_EQ(widget_.cacheRenders(), renders + 1);
}

}  // namespace
}  // namespace sonalyx::test
