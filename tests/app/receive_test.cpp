// Receiving from the emulator through the main window: a full and a parameters-only receive,
// the port offered next time, a missing port and failed runs (their messages in front, after the
// run has ended), stopping a run from the "Receiving" window, the window's progress as a user
// sees it, and the exchange logs a run leaves in the user's data folder.
#include <QAction>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QUrl>

#include "app/receive_log_folder.h"
#include "document/measurement_document.h"
#include "link/form_port.h"
#include "link/form_rs232c.h"
#include "main_form_fixture.h"
#include "support/document_window.h"
#include "support/emulated_receiver.h"
#include "views/window/mdi_child.h"

namespace {

using sonalyx::emulator::ReceiverProfile;
using sonalyx::test::EmulatedReceiver;

ReceiverProfile configuration5() {
    ReceiverProfile profile;
    profile.parameters.configCode = 5;
    return profile;
}

bool receiveActionsEnabled(const TMainForm& form) {
    return form.Action(QStringLiteral("FileReceive"))->isEnabled() &&
           form.Action(QStringLiteral("FileOtherReceive"))->isEnabled();
}

QString windowText(const TMainForm& form, const char* label) {
    auto* window = form.findChild<sonalyx::TFormRS232C*>();
    auto* widget = window != nullptr ? window->findChild<QLabel*>(QLatin1String(label)) : nullptr;
    return widget != nullptr ? widget->text() : QString();
}

QStringList logFiles() {
    return QDir(sonalyx::ReceiveLogFolder::path())
        .entryList({QStringLiteral("receive-*.log")}, QDir::Files, QDir::Name);
}

QString newestLog() {
    QFile file(sonalyx::ReceiveLogFolder::path() + '/' + logFiles().last());
    file.open(QIODevice::ReadOnly);
    return QString::fromLatin1(file.readAll());
}

QString lastLine(const QString& log) {
    return log.trimmed().section(QLatin1Char('\n'), -1);
}

// Catches what Help > Receive Logs asks the desktop to open.
class UrlCatcher : public QObject {
    Q_OBJECT

  public slots:
    void open(const QUrl& url) { urls.append(url); }

  public:
    QList<QUrl> urls;
};

}  // namespace

class ReceiveTest : public MainFormTest {
  protected:
    void SetUp() override {
        MainFormTest::SetUp();
        // Long enough for a stalled reply to be cancelled well before it times out.
        receiveTickMs_ = 100;
        QDir(sonalyx::ReceiveLogFolder::path()).removeRecursively();
    }
};

enum class Means { CancelButton, EscapeKey, CloseWindow };

struct CancelCase {
    const char* name;
    std::function<void(ReceiverProfile&)> fault;
    QString kind;      // the window shows this when the user stops the run
    bool midTransfer;  // wait until part of the reply has been read
    Means means;
};

TEST_F(ReceiveTest, CancelEndsTheRunAtOnceAndLeavesThePortUsable) {
    const std::vector<CancelCase> cases = {
        // Before the first poll: the reply may still be on its way.
        {"probe", [](ReceiverProfile&) {}, QStringLiteral("Reverb, Left, measured"), false,
         Means::CancelButton},
        {"reverb, mid-transfer", [](ReceiverProfile& p) { p.stallCommand = "RVCT"; },
         QStringLiteral("Reverb, Center, measured"), true, Means::EscapeKey},
        {"group delay", [](ReceiverProfile& p) { p.stallCommand = "FBS"; },
         QStringLiteral("Group delay"), true, Means::CloseWindow},
        {"parameters", [](ReceiverProfile& p) { p.stallCommand = "DLALL"; },
         QStringLiteral("Parameters: distances"), true, Means::CancelButton},
        {"reopen pause", [](ReceiverProfile& p) { p.badProbe = ReceiverProfile::BadProbe::Once; },
         QStringLiteral("Waiting to reopen the port"), false, Means::EscapeKey},
    };
    for (const CancelCase& c : cases) {
        SCOPED_TRACE(c.name);
        ReceiverProfile profile = configuration5();
        c.fault(profile);
        EmulatedReceiver receiver(profile);
        ports_ = QStringList{QString::fromStdString(receiver.portPath())};
        TMainForm& form = start();
        ModalAnswerer answers;
        form.Action(QStringLiteral("FileReceive"))->trigger();
        ASSERT_TRUE(form.Receiving());
        ASSERT_TRUE(waitFor([&] { return windowText(form, "LabelKind") == c.kind; }));
        if (c.midTransfer) {
            QTest::qWait(150);
            ASSERT_TRUE(form.Receiving()) << "the stalled reply timed out before the cancel";
        }
        auto* window = form.findChild<sonalyx::TFormRS232C*>();
        switch (c.means) {
            case Means::CancelButton:
                QTest::mouseClick(window->findChild<QPushButton*>(QStringLiteral("ButtonCancel")),
                                  Qt::LeftButton);
                break;
            case Means::EscapeKey:
                QTest::keyClick(window, Qt::Key_Escape);
                break;
            case Means::CloseWindow:
                window->close();
                break;
        }
        // At once: no waiting for a tick.
        EXPECT_FALSE(form.Receiving());
        EXPECT_TRUE(receiveActionsEnabled(form));
        QTest::qWait(300);
        EXPECT_TRUE(form.DocumentWindows().isEmpty());
        EXPECT_TRUE(answers.messages().isEmpty()) << answers.messages().join('\n').toStdString();
        EXPECT_EQ(form.findChild<sonalyx::TFormRS232C*>(), nullptr);
        ASSERT_FALSE(logFiles().isEmpty());
        EXPECT_TRUE(lastLine(newestLog()).endsWith(QStringLiteral("end      cancelled")));

        // The same port, the same receiver: the next receive goes through.
        form.Action(QStringLiteral("FileReceive"))->trigger();
        ASSERT_TRUE(waitFor([&form] { return !form.DocumentWindows().isEmpty(); }))
            << newestLog().toStdString();
        ASSERT_TRUE(waitFor([&form] { return !form.Receiving(); }));
        EXPECT_TRUE(answers.messages().isEmpty()) << answers.messages().join('\n').toStdString();
        EXPECT_EQ(form.DocumentWindows().first()->Document().channelCount, 5);
    }
}

// A failed run is over before its message comes up: the port closed, the log finished, the
// "Receiving" window gone, so the message stands in front with the run's log named under it.
TEST_F(ReceiveTest, AFailedReceiveEndsBeforeItsMessageAndNamesItsLog) {
    const struct {
        const char* name;
        const char* file;
        std::function<void(ReceiverProfile&)> fault;
        QString message;
        QString logEnd;
    } rows[] = {
        {"refused", "refused", [](ReceiverProfile& p) { p.refusals["SI"] = -1; },
         QStringLiteral("Command error occurred. Please try again."),
         QStringLiteral("failed at parameters, Parameters: system information (?SI): Command "
                        "error occurred. Please try again.")},
        {"line cut off", "failed", [](ReceiverProfile& p) { p.cutOffCommand = "RVCT"; },
         QStringLiteral("Receive failed."),
         QStringLiteral("failed at reverb, Reverb, Center, measured (?RVCT): the line failed")},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.name);
        QDir(sonalyx::ReceiveLogFolder::path()).removeRecursively();
        ReceiverProfile profile = configuration5();
        row.fault(profile);
        EmulatedReceiver receiver(profile);
        ports_ = QStringList{QString::fromStdString(receiver.portPath())};
        TMainForm& form = start();
        ModalAnswerer answers;
        QStringList logAtMessage;
        answers.press(QStringLiteral("OK")).onMessage([&](QWidget& message) {
            logAtMessage = newestLog().trimmed().split(QLatin1Char('\n'));
            message.grab().save(
                sonalyx::test::screenshotPath(QStringLiteral("receive-%1.png").arg(row.file)));
        });
        form.Action(QStringLiteral("FileReceive"))->trigger();
        ASSERT_TRUE(waitFor([&answers] { return !answers.messages().isEmpty(); }));
        ASSERT_EQ(logFiles().size(), 1);
        const QString log = sonalyx::ReceiveLogFolder::path() + '/' + logFiles().first();
        EXPECT_EQ(answers.messages(),
                  QStringList{row.message + "|Exchange log: " + QDir::toNativeSeparators(log)});
        EXPECT_EQ(answers.covered(), 0);
        ASSERT_GE(logAtMessage.size(), 2);
        EXPECT_TRUE(logAtMessage.at(logAtMessage.size() - 2).endsWith(QStringLiteral("close")));
        EXPECT_TRUE(logAtMessage.last().endsWith(row.logEnd)) << logAtMessage.last().toStdString();
        EXPECT_TRUE(form.DocumentWindows().isEmpty());
        EXPECT_FALSE(settings().contains(QStringLiteral("RECEIVE/LASTPORT")));
        EXPECT_TRUE(waitFor([&form] { return !form.Receiving(); }));
    }

    QDir(sonalyx::ReceiveLogFolder::path()).removeRecursively();
    UrlCatcher catcher;
    QDesktopServices::setUrlHandler(QStringLiteral("file"), &catcher, "open");
    form_->Action(QStringLiteral("HelpReceiveLogs"))->trigger();
    QDesktopServices::unsetUrlHandler(QStringLiteral("file"));
    ASSERT_EQ(catcher.urls.size(), 1);
    EXPECT_EQ(catcher.urls.first().toLocalFile(), sonalyx::ReceiveLogFolder::path());
    EXPECT_TRUE(QDir(sonalyx::ReceiveLogFolder::path()).exists());
}

TEST_F(ReceiveTest, OnlyTheLastTwentyRunsKeepTheirLogs) {
    ASSERT_TRUE(sonalyx::ReceiveLogFolder::make());
    const QDateTime start(QDate(2026, 1, 2), QTime(3, 4, 5));
    QStringList made;
    for (int i = 0; i < 25; ++i) {
        const QString path = sonalyx::ReceiveLogFolder::newLogFile(start.addSecs(i));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        made.append(QFileInfo(path).fileName());
    }
    EXPECT_EQ(logFiles(), made.mid(5));
}

TEST_F(ReceiveTest, FullAndOtherReceiveFromTheEmulatorOpenNewDataWindows) {
    receiveTickMs_ = 20;
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
    // A third of the way, drawn into build/screenshots/ for a person to look at.
    auto* bar = progressWindow->findChild<QProgressBar*>(QStringLiteral("ProgressBar1"));
    ASSERT_TRUE(waitFor([bar] { return bar->maximum() > 0 && bar->value() >= 12; }));
    EXPECT_EQ(bar->maximum(), 33);
    EXPECT_TRUE(windowText(form, "LabelTimeLeft").startsWith(QStringLiteral("About ")));
    EXPECT_TRUE(progressWindow->grab().save(
        sonalyx::test::screenshotPath(QStringLiteral("receiving.png"))));

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

    // Next time, named or not, the port that went through is offered first; the other receive
    // fetches the parameters alone.
    form_.reset();
    ports_.clear();
    TMainForm& again = start();
    QString offered;
    answers.inspect([&offered](QWidget& dialog) {
        offered = qobject_cast<sonalyx::TFormPort*>(&dialog)->PortName();
    });
    again.Action(QStringLiteral("FileOtherReceive"))->trigger();
    EXPECT_EQ(offered, QString::fromStdString(receiver.portPath()));
    ASSERT_TRUE(waitFor([&again] { return again.DocumentWindows().size() == 1; }));
    ASSERT_TRUE(waitFor([&again] { return !again.Receiving(); }));
    const sonalyx::MeasurementDocument& parameters = again.ActiveDocument()->Document();
    EXPECT_FALSE(parameters.parameterLines.empty());
    EXPECT_TRUE(parameters.groupDelayLines.empty());
    EXPECT_TRUE(answers.messages().isEmpty()) << answers.messages().join('\n').toStdString();
    EXPECT_EQ(answers.unexpected(), 0);
}

// A receive stops the demonstration, and offers it (and itself) again when it fails.
TEST_F(ReceiveTest, MissingPortSaysSoOpensNothingAndOffersTheReceiveAgain) {
    const QString missing = QStringLiteral("/dev/sonalyx-no-such-port");
    ports_ = QStringList{missing};
    TMainForm& form = start(samples(1));
    QAction* demo = form.Action(QStringLiteral("ActionDemo"));
    demo->setChecked(true);
    ASSERT_EQ(form.TimerTag(), 11);
    for (const char* action : {"FileReceive", "FileOtherReceive"}) {
        ModalAnswerer answers;
        answers.press(QStringLiteral("OK"));
        form.Action(QLatin1String(action))->trigger();
        ASSERT_TRUE(waitFor([&answers] { return !answers.messages().isEmpty(); })) << action;
        EXPECT_EQ(answers.messages().first().section(QLatin1Char('|'), 0, 0),
                  QStringLiteral("Cannot open the serial port(%1).").arg(missing))
            << action;
        EXPECT_FALSE(form.Receiving()) << action;
        // The "Receiving" window never came up over the message.
        EXPECT_EQ(answers.covered(), 0) << action;
        EXPECT_EQ(form.DocumentWindows().size(), 1) << action;
        EXPECT_TRUE(receiveActionsEnabled(form)) << action;
        EXPECT_EQ(form.findChild<sonalyx::TFormRS232C*>(), nullptr) << action;
        EXPECT_FALSE(demo->isChecked());
        EXPECT_NE(form.TimerTag(), 11);
        EXPECT_TRUE(demo->isEnabled());
    }
}

#include "receive_test.moc"
