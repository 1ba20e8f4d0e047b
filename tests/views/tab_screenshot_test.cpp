// The main modes of the Reverb and Group Delay tabs drawn into build/screenshots/, for a person
// to look at; the checks make sure each picture shows curves or bars drawn in their colour
// inside the charts (the legend's swatches carry the same colours, so they are left out).
#include <gtest/gtest.h>
#include <QApplication>
#include <QComboBox>
#include <QImage>
#include <QScrollArea>
#include <QSlider>
#include <QTabWidget>
#include <cstdlib>

#include "support/document_window.h"
#include "views/chart/chart_widget.h"
#include "views/group_delay/group_delay_view.h"
#include "views/reverb/reverb_view.h"
#include "views/window/view_export.h"

namespace sonalyx::test {
namespace {

// What a user sets before looking, applied in this order.
struct Steps {
    bool flat = false;  // Graph2D
    bool freq = false;
    bool pair = false;
    int combo = 0;
    int zoom = -1;
    int bars = -1;  // the slice (or band) shown as bars
    void apply(TMDIChild& w) const {
        if (flat)
            w.SetGraph3D(false);
        if (freq)
            w.FreqClick();
        if (pair)
            w.SetPairMode(1);
        w.Panel1()->ComboChannel()->setCurrentIndex(combo);
        if (zoom >= 0)
            w.Panel1()->TrackBar(Track::Zoom)->setValue(zoom);
        if (bars >= 0) {
            w.Panel1()->TrackBar(Track::TimeSlice)->setValue(bars);
            w.OnClickTimeSlice();
        }
    }
};

TEST(TabScreenshots, ReverbAndGroupDelayModes) {
    const QSize large(1180, 720);
    struct Row {
        const char* name;
        const char* layout;
        bool groupDelay;
        QSize size;
        Steps steps;
        QColor drawn;  // some curve or bar is drawn in (about) this colour
    } rows[] = {
        {"reverb-3d-all", "9", false, large, {}, {248, 0, 0}},
        {"reverb-one-channel", "9", false, large, {.combo = 1, .zoom = 16}, {80, 144, 248}},
        {"reverb-freq", "10", false, large, {.freq = true}, {255, 153, 0}},
        {"reverb-2d", "7", false, large, {.flat = true, .zoom = 16}, {0, 216, 112}},
        {"reverb-bar-2d", "9", false, large, {.flat = true, .bars = 20}, {0, 104, 224}},
        {"reverb-bar-3d", "5", false, large, {.bars = 20}, {248, 0, 0}},
        {"reverb-pair-scroll", "10", false, large, {.pair = true}, {192, 216, 56}},
        {"reverb-eleven-scroll", "10", false, large, {}, {232, 72, 8}},
        {"groupdelay-line-3d", "9", true, large, {}, {0xff, 0x40, 0x40}},
        {"groupdelay-line-2d", "9", true, large, {.flat = true}, {0xff, 0xd0, 0x00}},
        {"groupdelay-line-3d-small", "9", true, {580, 480}, {}, {0xff, 0x40, 0x40}},
        {"groupdelay-one-group-2d",
         "9",
         true,
         {900, 600},
         {.flat = true, .combo = 3, .zoom = 16},
         {0x30, 0xc8, 0xff}},
        {"groupdelay-bar-3d", "9", true, large, {.zoom = 14, .bars = 12}, {0xff, 0x40, 0x40}},
        {"groupdelay-bar-2d",
         "9",
         true,
         large,
         {.flat = true, .zoom = 14, .bars = 12},
         {0xff, 0x8c, 0x1a}},
    };
    for (const Row& r : rows) {
        DocumentWindow child(r.layout, r.size);
        if (r.groupDelay)
            child->PageControl()->setCurrentIndex(TMDIChild::kGroupDelayTab);
        r.steps.apply(*child);
        QApplication::processEvents();
        const QString path = screenshotPath(QStringLiteral("%1.png").arg(QLatin1String(r.name)));
        QString error;
        ASSERT_TRUE(ViewExport(*child).Save(path, error)) << error.toStdString();
        const QImage image(path);
        ASSERT_EQ(image.size(), r.size) << r.name;
        const QWidget* charts = r.groupDelay
                                    ? static_cast<QWidget*>(child->GroupDelay()->Chart101())
                                    : child->Reverb()->ScrollBox1();
        const QRect area(charts->mapTo(&*child, QPoint(0, 0)), charts->size());
        int drawn = 0;
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                // Shaded bars and smoothed lines come near their colour, not always onto it.
                const QColor c = image.pixelColor(x, y);
                drawn += std::abs(c.red() - r.drawn.red()) + std::abs(c.green() - r.drawn.green()) +
                             std::abs(c.blue() - r.drawn.blue()) <
                         40;
            }
        }
        EXPECT_GT(drawn, 20) << r.name;
    }
}

}  // namespace
}  // namespace sonalyx::test
