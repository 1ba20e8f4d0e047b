// sonalyx-cli receive with --log, and stopped by a signal, against the emulator program.
#include <gtest/gtest.h>
#include <signal.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>

#include "support/golden.h"
#include "test_application.h"

namespace sonalyx {
namespace {

const QString kBinaryDir = QStringLiteral(SONALYX_BINARY_DIR);

class CliReceiveLogTest : public ::testing::Test {
  protected:
    void SetUp() override {
        test::ensureApplication();
        ASSERT_TRUE(folder.isValid());
    }
    void TearDown() override {
        if (emulator.state() != QProcess::NotRunning) {
            emulator.terminate();
            emulator.waitForFinished(5000);
        }
    }

    // Starts the emulator program behind a stable link in the test folder.
    void startEmulator(const QStringList& arguments) {
        emulator.start(kBinaryDir + "/tools/emulator/sonalyx-receiver-emulator",
                       arguments + QStringList{"--link", port()});
        ASSERT_TRUE(emulator.waitForReadyRead(5000));
    }

    void startCli(QProcess& cli, const QStringList& arguments) {
        cli.start(kBinaryDir + "/src/cli/sonalyx-cli", QStringList{"receive"} + arguments);
        ASSERT_TRUE(cli.waitForStarted(5000));
    }

    QString port() const { return folder.filePath("rx"); }
    QString output() const { return folder.filePath("out.csv"); }
    QString log() const { return folder.filePath("run.log"); }

    QStringList logLines() const {
        QFile file(log());
        if (!file.open(QIODevice::ReadOnly)) {
            return {};
        }
        return QString::fromLatin1(file.readAll()).split('\n', Qt::SkipEmptyParts);
    }

    QTemporaryDir folder;
    QProcess emulator;
};

// A short run's log as it is written, with the times, the start and the port masked and the
// empty polls (which depend on the machine's speed) left out.
TEST_F(CliReceiveLogTest, TheLogOfAShortRunMatchesItsGolden) {
    startEmulator({"--config", "5", "--memories", "1"});
    QProcess cli;
    startCli(cli, {"--port", port(), "--tick-ms", "20", "--parameters-only", "--log", log(), "-o",
                   output()});
    ASSERT_TRUE(cli.waitForFinished(30000));
    EXPECT_EQ(cli.exitCode(), 0) << cli.readAllStandardError().toStdString();

    std::vector<std::string> lines;
    // The time is the first eight columns of an entry; dump lines begin with spaces there.
    const QRegularExpression time(QStringLiteral("^(?= {0,7}\\d)[ \\d]{8}"));
    for (QString line : logLines()) {
        if (line.contains(QStringLiteral("  wait "))) {
            continue;
        }
        line.replace(port(), QStringLiteral("PORT"));
        line.replace(time, QStringLiteral("       #"));
        if (line.startsWith(QStringLiteral("Started: "))) {
            line = QStringLiteral("Started: #");
        }
        lines.push_back(line.toStdString());
    }
    test::expectMatchesGolden(test::testDataPath("receive_logs/parameters_only_config5.log"),
                              lines);
}

struct SignalCase {
    const char* name;
    int signal;
};

TEST_F(CliReceiveLogTest, ASignalCancelsTheReceiveAndLeavesThePortUsable) {
    for (const SignalCase& c : {SignalCase{"SIGINT", SIGINT}, SignalCase{"SIGTERM", SIGTERM}}) {
        SCOPED_TRACE(c.name);
        TearDown();
        QFile::remove(log());
        // The reply to "?RVCT" stops half-way; the run waits for the rest.
        startEmulator({"--config", "5", "--stall", "RVCT"});
        QProcess cli;
        startCli(cli, {"--port", port(), "--tick-ms", "200", "--log", log(), "-o", output()});
        QDeadlineTimer deadline(20000);
        while (
            !logLines().join('\n').contains(QStringLiteral("reverb: Reverb, Center, measured\n"))) {
            ASSERT_FALSE(deadline.hasExpired());
            QThread::msleep(20);
        }
        QThread::msleep(300);
        ::kill(static_cast<pid_t>(cli.processId()), c.signal);
        ASSERT_TRUE(cli.waitForFinished(10000));
        EXPECT_EQ(cli.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(cli.exitCode(), 1);
        EXPECT_EQ(QString::fromLocal8Bit(cli.readAllStandardError()),
                  QStringLiteral("Receive cancelled.\n"));
        EXPECT_FALSE(QFile::exists(output()));
        const QStringList lines = logLines();
        ASSERT_GE(lines.size(), 2);
        EXPECT_TRUE(lines.at(lines.size() - 2).endsWith(QStringLiteral("close")));
        EXPECT_TRUE(lines.last().endsWith(QStringLiteral("end      cancelled")));

        QProcess again;
        startCli(again, {"--port", port(), "--tick-ms", "20", "-o", output()});
        ASSERT_TRUE(again.waitForFinished(30000));
        EXPECT_EQ(again.exitCode(), 0) << again.readAllStandardError().toStdString();
        EXPECT_TRUE(QFile::exists(output()));
        QFile::remove(output());
    }
}

}  // namespace
}  // namespace sonalyx
