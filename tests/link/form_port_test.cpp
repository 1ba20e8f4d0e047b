#include "link/form_port.h"

#include <gtest/gtest.h>
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QTest>

#include "link/port_list.h"
#include "test_application.h"

namespace sonalyx {
namespace {

class FormPortTest : public ::testing::Test {
  protected:
    void SetUp() override { test::ensureApplication(); }

    static QCheckBox* box(TFormPort& form, const char* name) {
        auto* found = form.findChild<QCheckBox*>(QString::fromLatin1(name));
        EXPECT_NE(found, nullptr) << name;
        return found;
    }
    // Clicks where the check box's indicator or the button's face is.
    static void click(QWidget* widget) {
        QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
    }
};

TEST_F(FormPortTest, OpensWithTheFirstPortAndAllKindsChecked) {
    TFormPort form({"/dev/ttyS9", "/dev/ttyS0"});
    EXPECT_EQ(form.PortName(), "/dev/ttyS9");
    EXPECT_TRUE(form.ReceiveReverb());
    EXPECT_TRUE(form.ReceiveGroupDelay());
    EXPECT_TRUE(form.ReceiveTORVEPara());
    EXPECT_FALSE(box(form, "cbNoTimeout")->isVisibleTo(&form));
    EXPECT_EQ(form.size(), QSize(184, 241));
    EXPECT_EQ(form.findChild<QPushButton*>("Button1")->text(), "OK");
    EXPECT_EQ(form.findChild<QPushButton*>("Button2")->text(), "CANCEL");
}

TEST_F(FormPortTest, ANewDialogForgetsTheLastChoice) {
    {
        TFormPort first({"COM1", "COM2", "COM3", "COM4"});
        first.show();
        first.findChild<QComboBox*>("ComboBox1")->setCurrentIndex(3);
        click(box(first, "cbGroupDelay"));
        click(box(first, "cbTORVEPara"));
        ASSERT_EQ(first.PortName(), "COM4");
        ASSERT_FALSE(first.ReceiveGroupDelay());
    }
    TFormPort second({"COM1", "COM2", "COM3", "COM4"});
    EXPECT_EQ(second.PortName(), "COM1");
    EXPECT_TRUE(second.ReceiveReverb());
    EXPECT_TRUE(second.ReceiveGroupDelay());
    EXPECT_TRUE(second.ReceiveTORVEPara());
}

TEST_F(FormPortTest, TheLastCheckedKindChecksItselfAgain) {
    TFormPort form({"COM1"});
    form.show();
    click(box(form, "cbReverb"));
    click(box(form, "cbGroupDelay"));
    EXPECT_FALSE(form.ReceiveReverb());
    EXPECT_FALSE(form.ReceiveGroupDelay());
    click(box(form, "cbTORVEPara"));
    EXPECT_TRUE(form.ReceiveTORVEPara());
    // Any box can be the last one.
    click(box(form, "cbReverb"));
    click(box(form, "cbTORVEPara"));
    click(box(form, "cbReverb"));
    EXPECT_TRUE(form.ReceiveReverb());
    EXPECT_FALSE(form.ReceiveTORVEPara());
}

TEST_F(FormPortTest, OkAcceptsAndCancelRejects) {
    TFormPort ok({"COM1"});
    ok.show();
    click(ok.findChild<QPushButton*>("Button1"));
    EXPECT_EQ(ok.result(), QDialog::Accepted);

    TFormPort cancel({"COM1"});
    cancel.show();
    click(cancel.findChild<QPushButton*>("Button2"));
    EXPECT_EQ(cancel.result(), QDialog::Rejected);
}

TEST_F(FormPortTest, AnEmptyPortListStillNamesAPort) {
    TFormPort form(QStringList{});
    EXPECT_EQ(form.PortName(), "COM1");
}

TEST(PortList, PortsNamedOnTheCommandLineComeFirstInOrder) {
    const QStringList named = portsNamedOnCommandLine(
        {"sonalyx", "a.csv", "--port", "/tmp/receiver", "--port=/dev/ttyUSB7", "--port"});
    EXPECT_EQ(named, QStringList({"/tmp/receiver", "/dev/ttyUSB7"}));

    const QStringList offered = offeredPorts(named);
    ASSERT_GE(offered.size(), 2);
    EXPECT_EQ(offered.at(0), "/tmp/receiver");
    EXPECT_EQ(offered.at(1), "/dev/ttyUSB7");
    EXPECT_EQ(offered.count("/tmp/receiver"), 1);
}

TEST(PortList, ANamedSystemPortIsOfferedOnce) {
    const QStringList system = offeredPorts({});
    if (system.isEmpty()) {
        GTEST_SKIP() << "this machine lists no serial ports";
    }
    const QStringList offered = offeredPorts({system.last()});
    EXPECT_EQ(offered.size(), system.size());
    EXPECT_EQ(offered.first(), system.last());
}

}  // namespace
}  // namespace sonalyx
