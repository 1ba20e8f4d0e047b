#include <gtest/gtest.h>
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QScrollBar>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTest>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "sheets/sheet_text.h"
#include "views/mdi_child.h"
#include "views/parameters_view.h"
#include "views/sheet_scroll_box.h"

namespace {

class SilentMessenger : public sonalyx::Messenger {
  public:
    sonalyx::Answer show(const std::string&, const std::string&, sonalyx::MessageMode) override {
        return sonalyx::Answer::Ok;
    }
};

class NoChooser : public sonalyx::FileChooser {
  public:
    std::optional<std::string> chooseSaveFile(const std::string&) override { return std::nullopt; }
};

QString screenshotFolder() {
    const QString folder = QStringLiteral(SONALYX_BINARY_DIR "/screenshots");
    QDir().mkpath(folder);
    return folder;
}

class ParametersViewTest : public ::testing::Test {
  protected:
    std::unique_ptr<TMDIChild> open(const char* layout, QSize size = QSize(1000, 640)) {
        const std::string path =
            std::string(SONALYX_SAMPLES_DIR "/sample-layout-") + layout + ".csv";
        const auto lines = sonalyx::readDocumentLines(path);
        EXPECT_TRUE(lines.has_value());
        auto child =
            std::make_unique<TMDIChild>(QString::fromStdString(path), messenger_, chooser_);
        EXPECT_TRUE(child->LoadDocument(lines.value_or(std::vector<std::string>{}),
                                        QString::fromStdString(path)));
        child->resize(size);
        child->show();
        child->PageControl()->setCurrentIndex(TMDIChild::kParametersTab);
        QApplication::processEvents();
        return child;
    }
    static QLabel* picture(TMDIChild& child) {
        return child.findChild<QLabel*>(QStringLiteral("ImageSheet"));
    }
    static QWidget* panel(TMDIChild& child) {
        return child.findChild<QWidget*>(QStringLiteral("ChartAllMemoryLong"));
    }

    SilentMessenger messenger_;
    NoChooser chooser_;
};

TEST_F(ParametersViewTest, ComboChannelSelectsTheMemory) {
    auto child = open("10");
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
    ASSERT_TRUE(picture(*child)->grab().save(screenshotFolder() + "/parameters-memory3.png"));

    // Off the Parameters tab the box picks channels again; back on it, memory 3 is kept.
    child->PageControl()->setCurrentIndex(TMDIChild::kReverbTab);
    EXPECT_EQ(combo->itemText(0), QStringLiteral("ALL"));
    EXPECT_NE(combo->count(), 7);
    child->PageControl()->setCurrentIndex(TMDIChild::kParametersTab);
    EXPECT_EQ(combo->currentIndex(), 3);
    EXPECT_EQ(view->Memory(), 3);
}

TEST_F(ParametersViewTest, SmallSheetFillsTheBoxLargeSheetScrolls) {
    auto child = open("5", QSize(1400, 900));
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
    ASSERT_TRUE(child->grab().save(screenshotFolder() + "/parameters-tab-all-memory.png"));
}

TEST_F(ParametersViewTest, ScreenshotsOfSheetsAndPages) {
    auto child = open("10");
    ParametersView* view = child->Parameters();
    ASSERT_TRUE(picture(*child)->grab().save(screenshotFolder() + "/parameters-all-memory.png"));
    view->SetMemory(1);
    ASSERT_TRUE(picture(*child)->grab().save(screenshotFolder() + "/parameters-memory1.png"));
    const QImage one = view->BuildParameterPage(0, 1);
    EXPECT_EQ(one.size(), QSize(647, 1310));
    ASSERT_TRUE(one.save(screenshotFolder() + "/parameters-page-memory1.png"));
    view->SetMemory(0);
    for (int p = 0; p < 3; ++p) {
        const QImage page = view->BuildParameterPage(p, 3);
        ASSERT_TRUE(page.save(screenshotFolder() +
                              QStringLiteral("/parameters-page-%1-of-3.png").arg(p + 1)));
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
