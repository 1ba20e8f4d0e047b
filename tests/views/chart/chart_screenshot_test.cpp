// Draws the charts a user sees into images under build/screenshots/ (to look at), and checks
// what must hold in the pixels: the curves and walls are there, and nothing leaves the rect.
#include <gtest/gtest.h>

#include <QDir>
#include <QImage>
#include <QPainter>
#include <functional>

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
    QDir().mkpath(QStringLiteral(SONALYX_BINARY_DIR "/screenshots"));
    for (const Shot& shot : shots) {
        ChartModel model = sampleDecayChart();
        shot.setUp(model);
        const QImage image = render(model, shot.size, shot.paper);
        image.save(QStringLiteral(SONALYX_BINARY_DIR "/screenshots/chart-%1.png").arg(shot.name));
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
    QDir().mkpath(QStringLiteral(SONALYX_BINARY_DIR "/screenshots"));
    for (const bool view3d : {false, true}) {
        ChartModel model = sampleBarChart();
        model.view.enabled = view3d;
        const QSize size(533, 333);
        const QImage image = render(model, size, false);
        image.save(QStringLiteral(SONALYX_BINARY_DIR "/screenshots/chart-bars-%1.png")
                       .arg(view3d ? "3d" : "2d"));
        EXPECT_EQ(countColour(image, Qt::magenta, QRect(QPoint(0, 0), size)), 0);
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
