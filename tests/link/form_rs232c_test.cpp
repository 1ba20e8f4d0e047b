#include "link/form_rs232c.h"

#include <gtest/gtest.h>
#include <QLabel>
#include <QPlainTextEdit>
#include <QProgressBar>

#include "raw_pty.h"
#include "recording_messenger.h"
#include "test_application.h"

namespace sonalyx {
namespace {

class FormRS232CTest : public ::testing::Test {
  protected:
    void SetUp() override { test::ensureApplication(); }

    QPlainTextEdit* memo() { return form.findChild<QPlainTextEdit*>("Memo1"); }

    test::RecordingMessenger messenger;
    TFormRS232C form{messenger};
};

TEST_F(FormRS232CTest, ShowsReceivingOnABlackWindowWithAProgressBar) {
    EXPECT_EQ(form.windowTitle(), "Sonalyx");
    EXPECT_EQ(form.size(), QSize(299, 66));
    EXPECT_EQ(form.palette().color(QPalette::Window), QColor(Qt::black));
    auto* label = form.findChild<QLabel*>("Label1");
    ASSERT_NE(label, nullptr);
    EXPECT_EQ(label->text(), "Receiving");
    EXPECT_EQ(label->font().family(), "Arial");
    EXPECT_EQ(label->font().pixelSize(), 16);
    EXPECT_EQ(label->palette().color(QPalette::WindowText), QColor(Qt::white));
    auto* bar = form.findChild<QProgressBar*>("ProgressBar1");
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->minimum(), 0);
    EXPECT_EQ(bar->maximum(), 100);
    form.setProgress(37);
    EXPECT_EQ(bar->value(), 37);
    ASSERT_NE(memo(), nullptr);
    form.show();
    EXPECT_FALSE(memo()->isVisible());
    EXPECT_TRUE(form.windowFlags() & Qt::WindowStaysOnTopHint);
}

TEST_F(FormRS232CTest, TheTraceGoesToMemo1OnlyInMonitorMode) {
    test::RawPty pty;
    ASSERT_TRUE(form.OpenPort(pty.portPath(), true));
    EXPECT_EQ(memo()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    form.LogLine("a line of my own");
    form.link().close();
    EXPECT_EQ(memo()->toPlainText().toStdString(),
              pty.portPath() + ": OPENNED\na line of my own\nPort closed.");

    memo()->clear();
    ASSERT_TRUE(form.OpenPort(pty.portPath(), false));
    form.LogLine("not written");
    form.link().close();
    EXPECT_TRUE(memo()->toPlainText().isEmpty());
}

TEST_F(FormRS232CTest, AFailedOpenIsReportedOnce) {
    EXPECT_FALSE(form.OpenPort("/dev/sonalyx-no-such-port", false));
    EXPECT_EQ(messenger.messages, std::vector<std::string>(
                                      {"Cannot open the serial port(/dev/sonalyx-no-such-port)."}));
    EXPECT_EQ(memo()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
}

}  // namespace
}  // namespace sonalyx
