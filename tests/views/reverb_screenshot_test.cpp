#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QImage>
#include <QSet>
#include <QSlider>
#include <cstdlib>
#include <functional>

#include "view_fixture.h"
#include "views/view_export.h"

namespace sonalyx::test {
namespace {

// The main modes of the Reverb tab drawn into build/screenshots/, for a person to look at;
// the checks make sure each picture shows drawn curves, not empty walls.
class ReverbScreenshotTest : public ViewFixture {};

TEST_F(ReverbScreenshotTest, MainModes) {
    struct Row {
        const char* name;
        int layout;
        std::function<void(TMDIChild&)> setUp;
        QColor curve;  // some curve or bar of the picture is drawn in (about) this colour
    } rows[] = {
        {"3d-all", 9, [](TMDIChild&) {}, QColor(248, 0, 0)},
        {"one-channel", 9,
         [](TMDIChild& w) {
             w.Panel1()->ComboChannel()->setCurrentIndex(1);
             w.Panel1()->TrackBar(Track::Zoom)->setValue(16);
         },
         QColor(80, 144, 248)},
        {"freq", 10, [](TMDIChild& w) { w.FreqClick(); }, QColor(255, 153, 0)},
        {"2d", 7,
         [](TMDIChild& w) {
             w.SetGraph3D(false);
             w.Panel1()->TrackBar(Track::Zoom)->setValue(16);
         },
         QColor(0, 216, 112)},
        {"bar-2d", 9,
         [](TMDIChild& w) {
             w.SetGraph3D(false);
             w.Panel1()->TrackBar(Track::TimeSlice)->setValue(20);
             w.OnClickTimeSlice();
         },
         QColor(0, 104, 224)},
        {"bar-3d", 5,
         [](TMDIChild& w) {
             w.Panel1()->TrackBar(Track::TimeSlice)->setValue(20);
             w.OnClickTimeSlice();
         },
         QColor(248, 0, 0)},
        {"pair-scroll", 10, [](TMDIChild& w) { w.SetPairMode(1); }, QColor(192, 216, 56)},
        {"eleven-scroll", 10, [](TMDIChild&) {}, QColor(232, 72, 8)},
    };
    const QString folder = QStringLiteral(SONALYX_BINARY_DIR "/screenshots");
    QDir().mkpath(folder);
    for (const Row& r : rows) {
        auto child = open(r.layout, {}, QSize(1180, 720));
        r.setUp(*child);
        QApplication::processEvents();
        const QString path = folder + QStringLiteral("/reverb-%1.png").arg(QLatin1String(r.name));
        QString error;
        ASSERT_TRUE(ViewExport(*child).Save(path, error)) << error.toStdString();
        const QImage image(path);
        ASSERT_EQ(image.size(), QSize(1180, 720)) << r.name;
        QSet<QRgb> colours;
        int curvePixels = 0;
        for (int y = 0; y < image.height(); y += 1) {
            for (int x = 0; x < image.width(); x += 1) {
                colours.insert(image.pixel(x, y));
                // Shaded bars and smoothed lines come near their colour, not always onto it.
                const QColor c = image.pixelColor(x, y);
                curvePixels += std::abs(c.red() - r.curve.red()) +
                                   std::abs(c.green() - r.curve.green()) +
                                   std::abs(c.blue() - r.curve.blue()) <
                               40;
            }
        }
        EXPECT_GT(colours.size(), 200) << r.name;
        EXPECT_GT(curvePixels, 10) << r.name;
    }
}

}  // namespace
}  // namespace sonalyx::test
