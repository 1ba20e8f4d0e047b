#include "link/form_port.h"

#include <gtest/gtest.h>
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QTest>

#include "link/port_list.h"

namespace sonalyx {
namespace {

QCheckBox* box(TFormPort& form, const char* name) {
    auto* found = form.findChild<QCheckBox*>(QString::fromLatin1(name));
    EXPECT_NE(found, nullptr) << name;
    return found;
}

// Clicks where the check box's indicator or the button's face is.
void click(QWidget* widget) {
    QTest::mouseClick(widget, Qt::LeftButton, {}, QPoint(8, widget->height() / 2));
}

void expectAllKindsChecked(TFormPort& form) {
    EXPECT_TRUE(form.ReceiveReverb());
    EXPECT_TRUE(form.ReceiveGroupDelay());
    EXPECT_TRUE(form.ReceiveTORVEPara());
}

// Each dialog starts afresh: the first port, all kinds checked, whatever the last one chose.
TEST(FormPort, OpensWithTheFirstPortAndAllKindsChecked) {
    {
        TFormPort first({"COM1", "COM2", "COM3", "COM4"});
        first.show();
        expectAllKindsChecked(first);
        EXPECT_FALSE(box(first, "cbNoTimeout")->isVisibleTo(&first));
        EXPECT_EQ(first.size(), QSize(184, 241));
        EXPECT_EQ(first.findChild<QPushButton*>("Button1")->text(), "OK");
        EXPECT_EQ(first.findChild<QPushButton*>("Button2")->text(), "CANCEL");
        first.findChild<QComboBox*>("ComboBox1")->setCurrentIndex(3);
        click(box(first, "cbGroupDelay"));
        click(box(first, "cbTORVEPara"));
        ASSERT_EQ(first.PortName(), "COM4");
        ASSERT_FALSE(first.ReceiveGroupDelay());
    }
    TFormPort second({"/dev/ttyS9", "/dev/ttyS0"});
    EXPECT_EQ(second.PortName(), "/dev/ttyS9");
    expectAllKindsChecked(second);
    EXPECT_EQ(TFormPort(QStringList{}).PortName(), "COM1");  // an empty list still names one
}

TEST(FormPort, TheLastCheckedKindChecksItselfAgain) {
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

TEST(FormPort, OkAcceptsAndCancelRejects) {
    for (const auto& [button, result] :
         {std::pair{"Button1", QDialog::Accepted}, std::pair{"Button2", QDialog::Rejected}}) {
        TFormPort form({"COM1"});
        form.show();
        click(form.findChild<QPushButton*>(button));
        EXPECT_EQ(form.result(), result) << button;
    }
}

TEST(PortList, PortsNamedOnTheCommandLineComeFirstInOrder) {
    const QStringList named = portsNamedOnCommandLine(
        {"sonalyx", "a.csv", "--port", "/tmp/receiver", "--port=/dev/ttyUSB7", "--port"});
    EXPECT_EQ(named, QStringList({"/tmp/receiver", "/dev/ttyUSB7"}));
    const QStringList offered = offeredPorts(named);
    ASSERT_GE(offered.size(), 2);
    EXPECT_EQ(offered.mid(0, 2), named);
    EXPECT_EQ(offered.count("/tmp/receiver"), 1);
    // A system port named again is offered once, first.
    const QStringList system = offeredPorts({});
    if (!system.isEmpty()) {
        const QStringList again = offeredPorts({system.last()});
        EXPECT_EQ(again.size(), system.size());
        EXPECT_EQ(again.first(), system.last());
    }
}

}  // namespace
}  // namespace sonalyx
