#include "link/form_rs232c.h"

#include <gtest/gtest.h>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <memory>

#include "raw_pty.h"
#include "support/recording_messenger.h"

namespace sonalyx {
namespace {

class FormRS232CTest : public ::testing::Test {
  protected:
    QPlainTextEdit* memo() { return window->findChild<QPlainTextEdit*>("Memo1"); }

    test::RecordingMessenger messenger;
    std::unique_ptr<TFormRS232C> window = std::make_unique<TFormRS232C>(messenger);
};

TEST_F(FormRS232CTest, ShowsReceivingOnABlackWindowWithAProgressBar) {
    EXPECT_EQ(window->windowTitle(), "Sonalyx");
    EXPECT_EQ(window->size(), QSize(320, 148));
    EXPECT_EQ(window->palette().color(QPalette::Window), QColor(Qt::black));
    auto* label = window->findChild<QLabel*>("Label1");
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), "Receiving");
    EXPECT_EQ(label->font().family(), "Arial");
    EXPECT_EQ(label->font().pixelSize(), 16);
    EXPECT_EQ(label->palette().color(QPalette::WindowText), QColor(Qt::white));
    auto* bar = window->findChild<QProgressBar*>("ProgressBar1");
    ASSERT_NE(bar, nullptr);
    // Busy until the run's length is known, then commands answered out of the total.
    EXPECT_EQ(bar->maximum(), 0);
    window->ShowProgress({7, 21, "Reverb, Center, measured", 65'000});
    EXPECT_EQ(bar->maximum(), 21);
    EXPECT_EQ(bar->value(), 7);
    EXPECT_EQ(window->findChild<QLabel*>("LabelKind")->text(), "Reverb, Center, measured");
    EXPECT_EQ(window->findChild<QLabel*>("LabelTimeLeft")->text(), "About 1 min 5 s left");
    ASSERT_NE(memo(), nullptr);
    window->show();
    EXPECT_FALSE(memo()->isVisible());
    EXPECT_TRUE(window->windowFlags() & Qt::WindowStaysOnTopHint);
}

TEST_F(FormRS232CTest, TheTraceGoesToMemo1InMonitorMode) {
    test::RawPty pty;
    ASSERT_TRUE(window->OpenPort(pty.portPath(), true));
    EXPECT_EQ(memo()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    window->LogLine("a line of my own");
    window->link().close();
    EXPECT_EQ(memo()->toPlainText().toStdString(),
              pty.portPath() + ": OPENNED\na line of my own\nPort closed.");
}

}  // namespace
}  // namespace sonalyx
