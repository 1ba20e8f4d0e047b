#include <gtest/gtest.h>
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTest>

#include "support/document_window.h"
#include "views/parameters/parameters_view.h"
#include "views/parameters/sheet_scroll_box.h"

namespace sonalyx::test {
namespace {

// A document window on the Parameters tab.
struct ParametersWindow : DocumentWindow {
    explicit ParametersWindow(const std::string& layout, QSize size = {1000, 640})
        : DocumentWindow(layout, size) {
        window().PageControl()->setCurrentIndex(TMDIChild::kParametersTab);
        QApplication::processEvents();
    }
};

QLabel* picture(TMDIChild& child) {
    return child.findChild<QLabel*>(QStringLiteral("ImageSheet"));
}

QWidget* panel(TMDIChild& child) {
    return child.findChild<QWidget*>(QStringLiteral("ChartAllMemoryLong"));
}

QString shot(const char* name) {
    return screenshotPath(QLatin1String(name));
}

TEST(ParametersView, ComboChannelSelectsTheMemory) {
    ParametersWindow child("10");
    auto* combo = child->findChild<QComboBox*>(QStringLiteral("ComboChannel"));
    ASSERT_NE(combo, nullptr);
    EXPECT_TRUE(combo->isVisible());
    ASSERT_EQ(combo->count(), 7);
    EXPECT_EQ(combo->itemText(0), QStringLiteral("ALL MEMORY"));
    EXPECT_TRUE(picture(*child)->isVisible());
    ParametersView* view = child->Parameters();
    EXPECT_EQ(view->Sheet().ops.front().text, "- TORVE Parameters -      [ALL MEMORY]");
    EXPECT_EQ(picture(*child)->size(), QSize(view->Sheet().width, view->Sheet().height));

    combo->setCurrentIndex(3);
    EXPECT_EQ(view->Memory(), 3);
    EXPECT_EQ(view->Sheet().ops.front().text, "- TORVE Parameters -      [MEMORY3]");
    EXPECT_EQ(view->Sheet().width, 647);
    ASSERT_TRUE(picture(*child)->grab().save(shot("parameters-memory3.png")));

    // Off the Parameters tab the box picks channels again; back on it, memory 3 is kept.
    child->PageControl()->setCurrentIndex(TMDIChild::kReverbTab);
    EXPECT_EQ(combo->itemText(0), QStringLiteral("ALL"));
    EXPECT_NE(combo->count(), 7);
    child->PageControl()->setCurrentIndex(TMDIChild::kParametersTab);
    EXPECT_EQ(combo->currentIndex(), 3);
    EXPECT_EQ(view->Memory(), 3);
}

TEST(ParametersView, SmallSheetFillsTheBoxLargeSheetScrolls) {
    ParametersWindow child("5", QSize(1400, 900));
    auto* box = child->Parameters()->ScrollBox3();
    child->findChild<QComboBox*>(QStringLiteral("ComboChannel"))->setCurrentIndex(1);
    QApplication::processEvents();
    const QSize sheet = picture(*child)->size();
    ASSERT_LT(sheet.height(), box->viewport()->height());
    EXPECT_EQ(panel(*child)->size(), box->viewport()->size());
    EXPECT_EQ(box->verticalScrollBar()->maximum(), 0);

    child->findChild<QComboBox*>(QStringLiteral("ComboChannel"))->setCurrentIndex(0);
    QApplication::processEvents();
    const int tall = picture(*child)->height();
    ASSERT_GT(tall, box->viewport()->height());
    EXPECT_EQ(panel(*child)->height(), tall);
    EXPECT_EQ(panel(*child)->width(), box->viewport()->width());
    EXPECT_EQ(box->verticalScrollBar()->maximum(), tall - box->viewport()->height());

    // The wheel and the arrow keys move 32 pixels a step.
    box->setFocus();
    QTest::keyClick(box, Qt::Key_Down);
    EXPECT_EQ(box->verticalScrollBar()->value(), 32);
    QWheelEvent down(QPointF(50, 50), box->mapToGlobal(QPointF(50, 50)), QPoint(), QPoint(0, -240),
                     Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(box->viewport(), &down);
    EXPECT_EQ(box->verticalScrollBar()->value(), 32 + 64);
    QTest::keyClick(box, Qt::Key_Up);
    EXPECT_EQ(box->verticalScrollBar()->value(), 64);
    ASSERT_TRUE(child->grab().save(shot("parameters-tab-all-memory.png")));
}

TEST(ParametersView, ScreenshotsOfSheetsAndPages) {
    ParametersWindow child("10");
    ParametersView* view = child->Parameters();
    ASSERT_TRUE(picture(*child)->grab().save(shot("parameters-all-memory.png")));
    view->SetMemory(1);
    ASSERT_TRUE(picture(*child)->grab().save(shot("parameters-memory1.png")));
    const QImage one = view->BuildParameterPage(0, 1);
    EXPECT_EQ(one.size(), QSize(647, 1310));
    ASSERT_TRUE(one.save(shot("parameters-page-memory1.png")));
    view->SetMemory(0);
    for (int p = 0; p < 3; ++p) {
        const QImage page = view->BuildParameterPage(p, 3);
        ASSERT_TRUE(
            page.save(screenshotPath(QStringLiteral("parameters-page-%1-of-3.png").arg(p + 1))));
        // Paper is white with black text.
        EXPECT_EQ(page.pixel(page.width() - 1, page.height() - 1), qRgb(255, 255, 255));
    }
    // The screen sheet is silver on black; without parameter lines the picture stays hidden.
    const QImage screen = picture(*child)->pixmap().toImage();
    EXPECT_EQ(screen.pixel(0, 0), qRgb(0, 0, 0));
    EXPECT_TRUE(screen.allGray());
    child->Document().parameterLines.clear();
    EXPECT_FALSE(view->BuildParameterSheet());
    EXPECT_FALSE(picture(*child)->isVisible());
}

}  // namespace
}  // namespace sonalyx::test
