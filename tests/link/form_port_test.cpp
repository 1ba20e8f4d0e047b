#include "link/form_port.h"

#include <gtest/gtest.h>
#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QPushButton>
#include <QTemporaryFile>
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
        TFormPort first({{"COM1"}, {"COM2"}, {"COM3"}, {"COM4"}});
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
    TFormPort second({{"/dev/ttyS9"}, {"/dev/ttyS0"}});
    EXPECT_EQ(second.PortName(), "/dev/ttyS9");
    expectAllKindsChecked(second);
    EXPECT_EQ(TFormPort(QList<PortChoice>{}).PortName(), "COM1");  // an empty list still names one
}

// Each port is listed with what the system says of it; the name is what gets opened.
TEST(FormPort, ListsWhatTheSystemSaysOfEachPort) {
    TFormPort form({{"/dev/ttyUSB0", "FT232R USB UART", "FTDI"}, {"/dev/ttyS0"}});
    form.show();
    auto* ports = form.findChild<QComboBox*>("ComboBox1");
    EXPECT_EQ(ports->itemText(0), "/dev/ttyUSB0 \u2014 FT232R USB UART (FTDI)");
    EXPECT_EQ(ports->toolTip(), ports->itemText(0));
    EXPECT_EQ(form.PortName(), "/dev/ttyUSB0");
    ports->setCurrentIndex(1);
    EXPECT_EQ(form.PortName(), "/dev/ttyS0");
    ports->setEditText("/tmp/receiver");
    EXPECT_EQ(form.PortName(), "/tmp/receiver");
    ports->setCurrentIndex(0);
    ports->showPopup();
    // The dialog and its list, into build/screenshots/ for a person to look at.
    QWidget* list = ports->view()->window();
    EXPECT_GE(list->width(), ports->view()->sizeHintForColumn(0));
    QDir().mkpath(QStringLiteral(SONALYX_BINARY_DIR "/screenshots"));
    EXPECT_TRUE(
        form.grab().save(QStringLiteral(SONALYX_BINARY_DIR "/screenshots/port-dialog.png")));
    EXPECT_TRUE(list->grab().save(QStringLiteral(SONALYX_BINARY_DIR "/screenshots/port-list.png")));
    ports->hidePopup();
}

TEST(FormPort, TheLastCheckedKindChecksItselfAgain) {
    TFormPort form({{"COM1"}});
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
        TFormPort form({{"COM1"}});
        form.show();
        click(form.findChild<QPushButton*>(button));
        EXPECT_EQ(form.result(), result) << button;
    }
}

TEST(PortList, NamedPortsComeFirstThenTheLastOneUsedThenTheSystems) {
    EXPECT_EQ(portsNamedOnCommandLine(
                  {"sonalyx", "a.csv", "--port", "/tmp/rx", "--port=/dev/ttyUSB7", "--port"}),
              QStringList({"/tmp/rx", "/dev/ttyUSB7"}));
    const QList<PortChoice> system = {{"/dev/ttyS0"}, {"/dev/ttyUSB0", "FT232R", "FTDI"}};
    QTemporaryFile device;  // a pseudo-terminal, say: a device the system does not list
    ASSERT_TRUE(device.open());
    const QString pty = device.fileName();
    const std::tuple<QStringList, QString, QStringList> rows[] = {
        {{"/tmp/rx", "/dev/ttyUSB0"}, {}, {"/tmp/rx", "/dev/ttyUSB0", "/dev/ttyS0"}},
        {{"/tmp/rx"}, "/dev/ttyUSB0", {"/tmp/rx", "/dev/ttyUSB0", "/dev/ttyS0"}},
        {{}, "/dev/ttyUSB9", {"/dev/ttyS0", "/dev/ttyUSB0"}},  // the last one gone
        {{}, pty, {pty, "/dev/ttyS0", "/dev/ttyUSB0"}},
    };
    for (const auto& [named, last, offered] : rows) {
        QStringList names;
        for (const PortChoice& port : offeredPorts(named, last, system)) {
            names << port.name;
        }
        EXPECT_EQ(names, offered) << last.toStdString();
    }
    // Named, a port is described as the system describes it.
    EXPECT_EQ(offeredPorts({"/dev/ttyUSB0"}, {}, system).first(), system.at(1));
}

}  // namespace
}  // namespace sonalyx
