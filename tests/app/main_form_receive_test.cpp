#include <QAction>
#include <QLabel>
#include <QProgressBar>

#include "link/form_rs232c.h"
#include "main_form_fixture.h"
#include "support/emulated_receiver.h"
#include "views/mdi_child.h"

namespace {

using sonalyx::test::EmulatedReceiver;

bool receiveActionsEnabled(const TMainForm& form) {
    return form.Action(QStringLiteral("FileReceive"))->isEnabled() &&
           form.Action(QStringLiteral("FileOtherReceive"))->isEnabled();
}

}  // namespace

class MainFormReceiveTest : public MainFormTest {
  protected:
    void SetUp() override {
        MainFormTest::SetUp();
        receiveTickMs_ = 20;
    }
};

TEST_F(MainFormReceiveTest, FullReceiveFromTheEmulatorOpensANewDataWindow) {
    EmulatedReceiver receiver({"--config", "10"});
    ports_ = QStringList{QString::fromStdString(receiver.portPath())};
    TMainForm& form = start();

    ModalAnswerer answers;
    form.Action(QStringLiteral("FileReceive"))->trigger();
    // The port dialog was accepted with its defaults: the named port first, all kinds.
    EXPECT_EQ(answers.otherWindows().size(), 1);
    ASSERT_TRUE(form.Receiving());
    EXPECT_FALSE(receiveActionsEnabled(form));
    EXPECT_FALSE(form.Action(QStringLiteral("ActionDemo"))->isEnabled());
    auto* progressWindow = form.findChild<sonalyx::TFormRS232C*>();
    ASSERT_NE(progressWindow, nullptr);
    EXPECT_TRUE(progressWindow->isVisible());

    ASSERT_TRUE(waitFor([&form] { return !form.DocumentWindows().isEmpty(); }));
    EXPECT_TRUE(answers.messages().isEmpty()) << answers.messages().join('\n').toStdString();
    TMDIChild* child = form.DocumentWindows().first();
    EXPECT_EQ(child->windowTitle(), QStringLiteral("New Data"));
    const sonalyx::MeasurementDocument& document = child->Document();
    // The ten channels a configuration-10 receiver reports, in its order.
    const std::vector<std::string> channels{"L",   "C",    "R",    "SR A", "SBR",
                                            "SBL", "SL A", "SL B", "SR B", "TS"};
    EXPECT_EQ(document.channelNames, channels);
    EXPECT_EQ(document.channelCount, 10);
    EXPECT_EQ(document.date.size(), std::string("yyyy.mm.dd hh:mm").size()) << document.date;
    EXPECT_FALSE(document.groupDelayLines.empty());
    EXPECT_FALSE(document.parameterLines.empty());

    ASSERT_TRUE(waitFor([&form] { return !form.Receiving(); }));
    EXPECT_TRUE(receiveActionsEnabled(form));
    EXPECT_TRUE(form.Action(QStringLiteral("ActionDemo"))->isEnabled());
    EXPECT_EQ(answers.unexpected(), 0);
}

TEST_F(MainFormReceiveTest, OtherReceiveFetchesOnlyTheParameters) {
    EmulatedReceiver receiver(std::vector<std::string>{});
    ports_ = QStringList{QString::fromStdString(receiver.portPath())};
    TMainForm& form = start();

    ModalAnswerer answers;
    form.Action(QStringLiteral("FileOtherReceive"))->trigger();
    ASSERT_TRUE(waitFor([&form] { return !form.DocumentWindows().isEmpty(); }));
    const sonalyx::MeasurementDocument& document = form.DocumentWindows().first()->Document();
    EXPECT_FALSE(document.parameterLines.empty());
    EXPECT_TRUE(document.groupDelayLines.empty());
    ASSERT_TRUE(waitFor([&form] { return !form.Receiving(); }));
    EXPECT_TRUE(receiveActionsEnabled(form));
    EXPECT_TRUE(answers.messages().isEmpty()) << answers.messages().join('\n').toStdString();
}

TEST_F(MainFormReceiveTest, MissingPortSaysSoOpensNothingAndOffersTheReceiveAgain) {
    const QString missing = QStringLiteral("/dev/sonalyx-no-such-port");
    ports_ = QStringList{missing};
    TMainForm& form = start();

    for (const char* action : {"FileReceive", "FileOtherReceive"}) {
        ModalAnswerer answers;
        answers.press(QStringLiteral("OK"));
        form.Action(QLatin1String(action))->trigger();
        ASSERT_TRUE(waitFor([&answers] { return !answers.messages().isEmpty(); })) << action;
        EXPECT_EQ(answers.messages().first().section(QLatin1Char('|'), 0, 0),
                  QStringLiteral("Cannot open the serial port(%1).").arg(missing))
            << action;
        EXPECT_FALSE(form.Receiving()) << action;
        EXPECT_TRUE(form.DocumentWindows().isEmpty()) << action;
        EXPECT_TRUE(receiveActionsEnabled(form)) << action;
        EXPECT_EQ(form.findChild<sonalyx::TFormRS232C*>(), nullptr) << action;
    }
}

TEST_F(MainFormReceiveTest, ReceiveStopsTheDemonstrationAndOffersItAgainAfterwards) {
    ports_ = QStringList{QStringLiteral("/dev/sonalyx-no-such-port")};
    TMainForm& form = start(samples(1));
    QAction* demo = form.Action(QStringLiteral("ActionDemo"));
    demo->setChecked(true);
    ASSERT_EQ(form.TimerTag(), 11);

    ModalAnswerer answers;
    answers.press(QStringLiteral("OK"));
    form.Action(QStringLiteral("FileReceive"))->trigger();
    ASSERT_TRUE(waitFor([&answers] { return !answers.messages().isEmpty(); }));
    EXPECT_FALSE(demo->isChecked());
    EXPECT_NE(form.TimerTag(), 11);
    EXPECT_TRUE(demo->isEnabled());
    EXPECT_EQ(form.DocumentWindows().size(), 1);
}
