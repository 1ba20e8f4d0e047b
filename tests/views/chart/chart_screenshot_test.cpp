// Draws the charts a user sees into images under build/screenshots/ (to look at), and checks
// what must hold in the pixels: the curves and walls are there, and nothing leaves the rect.
#include <gtest/gtest.h>

#include <QImage>
#include <QPainter>
#include <functional>

#include "support/document_window.h"
#include "views/chart/chart_painter.h"
#include "views/chart/chart_projection.h"
#include "views/chart/chart_samples.h"
#include "views/chart/chart_widget.h"

namespace sonalyx::test {
namespace {

using namespace chart;

struct Shot {
    const char* name;
    QSize size;
    std::function<void(ChartModel&)> setUp;
    bool paper = false;
};

// Saved under build/screenshots/chart-<name>.png for a person to look at.
void save(const QImage& image, const QString& name) {
    EXPECT_TRUE(image.save(screenshotPath(QStringLiteral("chart-%1.png").arg(name))));
}

QImage render(const ChartModel& model, QSize size, bool paper) {
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::magenta);  // anything left magenta was not painted
    QPainter painter(&image);
    paintChart(painter, QRectF(QPointF(0, 0), size), model, ChartAppearance{paper});
    return image;
}

int countColour(const QImage& image, const QColor& colour, const QRect& area) {
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            n += image.pixelColor(x, y) == colour;
        }
    }
    return n;
}

// Pixels of the first band's pure red, antialiased edges included; no other ink is red.
int countRed(const QImage& image, const QRect& area) {
    int n = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            const QColor c = image.pixelColor(x, y);
            n += c.red() > 120 && c.red() > 3 * c.green() + 40 && c.red() > 3 * c.blue() + 40;
        }
    }
    return n;
}

TEST(ChartScreenshots, DrawEachViewWithCurvesInsideThePlot) {
    const std::vector<Shot> shots = {
        {"3d-waterfall", {533, 333}, [](ChartModel&) {}},
        {"3d-waterfall-large", {1600, 1000}, [](ChartModel&) {}},
        {"3d-waterfall-small", {250, 160}, [](ChartModel&) {}},
        {"3d-default-axis",
         {533, 333},
         [](ChartModel& m) {
             m.left = {53, 63, 1, m.left.title};
         }},
        {"2d", {533, 333}, [](ChartModel& m) { m.view.enabled = false; }},
        {"2d-small", {250, 160}, [](ChartModel& m) { m.view.enabled = false; }},
        {"elevation-270", {533, 333}, [](ChartModel& m) { m.view.elevation = 270; }},
        {"rotation-360", {533, 333}, [](ChartModel& m) { m.view.rotation = 360; }},
        {"rotation-270", {533, 333}, [](ChartModel& m) { m.view.rotation = 270; }},
        {"orthogonal", {533, 333}, [](ChartModel& m) { m.view.orthogonal = true; }},
        {"paper", {533, 333}, [](ChartModel&) {}, true},
        {"paper-2d", {533, 333}, [](ChartModel& m) { m.view.enabled = false; }, true},
        {"reference",
         {533, 333},
         [](ChartModel& m) {
             m.view.enabled = false;
             for (int b = 0; b < 2; ++b) {
                 Series r = m.series[static_cast<std::size_t>(b)];
                 for (Point& p : r.points) {
                     p.y -= 4;
                 }
                 r.reference = true;
                 m.referenceSeries.push_back(r);
             }
         }},
    };
    for (const Shot& shot : shots) {
        ChartModel model = sampleDecayChart();
        shot.setUp(model);
        const QImage image = render(model, shot.size, shot.paper);
        save(image, QLatin1String(shot.name));
        const QRect all(QPoint(0, 0), shot.size);
        EXPECT_EQ(countColour(image, Qt::magenta, all), 0) << shot.name;
        // The first band's curve shows, and only inside the plot.
        const QRect plot = ChartProjection::forChart(model, QRectF(all))
                               .plotRect()
                               .toAlignedRect()
                               .adjusted(-1, -1, 1, 1);
        const int inside = countRed(image, plot);
        EXPECT_GT(inside, shot.size.width() / 10) << shot.name;
        EXPECT_EQ(countRed(image, all), inside) << shot.name;
    }
}

TEST(ChartScreenshots, BarsBelowTheAxisAreHatched) {
    for (const bool view3d : {false, true}) {
        ChartModel model = sampleBarChart();
        model.view.enabled = view3d;
        const QSize size(533, 333);
        const QImage image = render(model, size, false);
        save(image, QStringLiteral("bars-%1").arg(view3d ? "3d" : "2d"));
        EXPECT_EQ(countColour(image, Qt::magenta, QRect(QPoint(0, 0), size)), 0);
        if (view3d) {
            continue;
        }
        // Inside a bar's outline: solid red for a bar in range, red hatching on black for the
        // last one, whose value lies below the axis.
        const ChartProjection p = ChartProjection::forChart(model, QRectF(QPoint(0, 0), size));
        const auto inner = [&](const Point& bar, double top) {
            return QRectF(p.map(bar.x - 0.25, top, 0), p.map(bar.x + 0.25, model.left.minimum, 0))
                .toAlignedRect()
                .adjusted(2, 2, -2, -2);
        };
        const Point& inRange = model.series[0].points.front();
        const QRect solid = inner(inRange, inRange.y);
        EXPECT_EQ(countRed(image, solid), solid.width() * solid.height());
        const QRect hatched = inner(model.series[0].points.back(), model.left.minimum + 0.9);
        ASSERT_FALSE(hatched.isEmpty());
        const int red = countRed(image, hatched);
        EXPECT_GT(red, 0);
        EXPECT_LT(red, hatched.width() * hatched.height() * 3 / 4);
    }
}

// Curves and bars beyond the axis: nothing of them is drawn but a mark at the edge they pass,
// one for each value cut off.
TEST(ChartScreenshots, ValuesPastTheAxisAreMarkedAtItsEdge) {
    for (const bool bars : {false, true}) {
        ChartModel model = bars ? sampleBarChart() : sampleDecayChart();
        model.view.enabled = false;
        model.left = {20, 40, 2, model.left.title};
        const QSize size(533, 333);
        const QImage image = render(model, size, false);
        save(image, QStringLiteral("clipped-%1").arg(bars ? "bars" : "curves"));
        const QRect plot =
            ChartProjection::forChart(model, QRectF(QPointF(0, 0), size)).plotRect().toRect();
        const QRect edge(plot.left() - 4, plot.top() - 1, plot.width() + 8, 7);
        const int red = countRed(image, edge);
        EXPECT_GE(red, static_cast<int>(model.series[0].points.size()) * 8) << bars;
        EXPECT_EQ(countRed(image, QRect(QPoint(0, 0), size)), red) << bars;
    }
}

TEST(ChartScreenshots, OddModelsAndRectsPaintOnlyTheirRect) {
    const QRectF kRect(10, 10, 300, 200);
    const struct {
        const char* what;
        QRectF rect;
        std::function<void(ChartModel&)> setUp;
    } rows[] = {
        {"tiny rect", {10, 10, 30, 20}, [](ChartModel&) {}},
        {"empty rect", {10, 10, 0, 0}, [](ChartModel&) {}},
        {"flat left axis", kRect, [](ChartModel& m) { m.left.maximum = m.left.minimum; }},
        {"reversed bottom axis", kRect,
         [](ChartModel& m) { std::swap(m.bottom.minimum, m.bottom.maximum); }},
        {"infinite axis", kRect, [](ChartModel& m) { m.left.maximum = INFINITY; }},
        {"huge increment count", kRect, [](ChartModel& m) { m.left.increment = 1e-9; }},
        {"no series", kRect, [](ChartModel& m) { m.series = {}; }},
        {"depth 0, top view", kRect,
         [](ChartModel& m) { m.view.depthPercent = 0, m.view.elevation = 270; }},
        {"no clipping", kRect,
         [](ChartModel& m) {
             m.clipPoints = false, m.left = {60, 62, 1, {}};
         }},
    };
    for (const auto& row : rows) {
        for (const bool view3d : {false, true}) {
            ChartModel model = sampleDecayChart();
            model.view.enabled = view3d;
            row.setUp(model);
            QImage image(340, 240, QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::magenta);
            QPainter painter(&image);
            paintChart(painter, row.rect, model, {});
            painter.end();
            const QRect inside = row.rect.toAlignedRect();
            const QRect all = image.rect();
            EXPECT_EQ(countColour(image, Qt::magenta, all),
                      all.width() * all.height() - inside.width() * inside.height())
                << row.what << (view3d ? " 3D" : " 2D");
        }
    }
}

TEST(ChartScreenshots, WidgetPaintsItsModel) {
    ChartWidget widget;
    widget.model() = sampleDecayChart();
    widget.resize(400, 250);
    const QImage grabbed = widget.grab().toImage();
    const QImage direct = render(widget.model(), QSize(400, 250), false);
    EXPECT_EQ(grabbed.convertToFormat(QImage::Format_RGB32),
              direct.convertToFormat(QImage::Format_RGB32));
}

}  // namespace
}  // namespace sonalyx::test
