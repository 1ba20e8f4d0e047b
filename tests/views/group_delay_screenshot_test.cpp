#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QImage>
#include <QSlider>
#include <QTabWidget>
#include <cstdlib>
#include <functional>

#include "view_fixture.h"
#include "views/chart/chart_widget.h"
#include "views/group_delay_view.h"
#include "views/view_export.h"

namespace sonalyx::test {
namespace {

// The Group Delay tab's line and bar views drawn into build/screenshots/, for a person to
// look at; the checks make sure the curves or bars are drawn in their group's colour.
class GroupDelayScreenshotTest : public ViewFixture {};

TEST_F(GroupDelayScreenshotTest, LineAndBarViews) {
    struct Row {
        const char* name;
        QSize size;
        std::function<void(TMDIChild&)> setUp;
        QColor drawn;
    } rows[] = {
        {"line-3d", QSize(1180, 720), [](TMDIChild&) {}, QColor(0xff, 0x40, 0x40)},
        {"line-2d", QSize(1180, 720), [](TMDIChild& w) { w.SetGraph3D(false); },
         QColor(0xff, 0xd0, 0x00)},
        {"line-3d-small", QSize(580, 480), [](TMDIChild&) {}, QColor(0xff, 0x40, 0x40)},
        {"one-group-2d", QSize(900, 600),
         [](TMDIChild& w) {
             w.SetGraph3D(false);
             w.Panel1()->ComboChannel()->setCurrentIndex(3);
             w.Panel1()->TrackBar(Track::Zoom)->setValue(16);
         },
         QColor(0x30, 0xc8, 0xff)},
        {"bar-3d", QSize(1180, 720),
         [](TMDIChild& w) {
             w.Panel1()->TrackBar(Track::TimeSlice)->setValue(12);
             w.Panel1()->TrackBar(Track::Zoom)->setValue(14);
             w.OnClickTimeSlice();
         },
         QColor(0xff, 0x40, 0x40)},
        {"bar-2d", QSize(1180, 720),
         [](TMDIChild& w) {
             w.SetGraph3D(false);
             w.Panel1()->TrackBar(Track::TimeSlice)->setValue(12);
             w.Panel1()->TrackBar(Track::Zoom)->setValue(14);
             w.OnClickTimeSlice();
         },
         QColor(0xff, 0x8c, 0x1a)},
    };
    const QString folder = QStringLiteral(SONALYX_BINARY_DIR "/screenshots");
    QDir().mkpath(folder);
    for (const Row& r : rows) {
        auto child = open(9, {}, r.size);
        child->PageControl()->setCurrentIndex(TMDIChild::kGroupDelayTab);
        r.setUp(*child);
        QApplication::processEvents();
        const QString path =
            folder + QStringLiteral("/groupdelay-%1.png").arg(QLatin1String(r.name));
        QString error;
        ASSERT_TRUE(ViewExport(*child).Save(path, error)) << error.toStdString();
        const QImage image(path);
        ASSERT_EQ(image.size(), r.size) << r.name;
        // Only inside the chart: the legend's swatches carry the same colours.
        const auto* chart = child->GroupDelay()->Chart101();
        const QRect area(chart->mapTo(child.get(), QPoint(0, 0)), chart->size());
        int drawnPixels = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                const QColor c = image.pixelColor(x, y);
                drawnPixels += std::abs(c.red() - r.drawn.red()) +
                                   std::abs(c.green() - r.drawn.green()) +
                                   std::abs(c.blue() - r.drawn.blue()) <
                               40;
            }
        }
        EXPECT_GT(drawnPixels, 20) << r.name;
    }
}

}  // namespace
}  // namespace sonalyx::test
