// sonalyx-cli receive as a script would run it, against the emulator program: the document
// written, the log, what a failure and a signal leave behind.
#include <gtest/gtest.h>
#include <signal.h>

#include <QDeadlineTimer>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QThread>
#include <algorithm>

#include "document/document_file.h"
#include "support/golden.h"

namespace sonalyx {
namespace {

const QString kBinaryDir = QStringLiteral(SONALYX_BINARY_DIR);

class CliReceiveTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(folder.isValid()); }
    void TearDown() override { stopEmulator(); }

    // Starts the emulator program behind a stable link in the test folder: port().
    void startEmulator(const QStringList& arguments) {
        stopEmulator();
        emulator.start(kBinaryDir + "/tools/emulator/sonalyx-receiver-emulator",
                       arguments + QStringList{"--link", port()});
        ASSERT_TRUE(emulator.waitForReadyRead(5000));
    }
    void stopEmulator() {
        if (emulator.state() != QProcess::NotRunning) {
            emulator.terminate();
            emulator.waitForFinished(5000);
        }
    }
    void startCli(QProcess& cli, const QStringList& arguments) {
        cli.start(kBinaryDir + "/src/cli/sonalyx-cli", QStringList{"receive"} + arguments);
        ASSERT_TRUE(cli.waitForStarted(5000));
    }
    // Runs a receive to its end; returns the exit code, stderr in errors.
    int receive(const QStringList& arguments) {
        QProcess cli;
        startCli(cli, arguments);
        EXPECT_TRUE(cli.waitForFinished(60000));
        errors = QString::fromLocal8Bit(cli.readAllStandardError());
        return cli.exitCode();
    }

    QString port() const { return folder.filePath("rx"); }
    QString output() const { return folder.filePath("out.csv"); }
    QString log() const { return folder.filePath("run.log"); }
    QStringList logLines() const {
        QFile file(log());
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromLatin1(file.readAll()).split('\n', Qt::SkipEmptyParts);
    }
    std::vector<std::string> outputLines() const {
        const auto lines = readDocumentLines(output().toStdString());
        EXPECT_TRUE(lines.has_value());
        return lines.value_or(std::vector<std::string>{});
    }

    QTemporaryDir folder;
    QProcess emulator;
    QString errors;
};

TEST_F(CliReceiveTest, WritesTheDocumentWithItsDateOrTheRawText) {
    startEmulator({"--config", "5"});
    EXPECT_EQ(receive({"--port", port(), "--tick-ms", "20", "--data", "reverb,parameters", "-o",
                       output()}),
              0)
        << errors.toStdString();
    auto lines = outputLines();
    ASSERT_GT(lines.size(), 2u);
    EXPECT_EQ(lines[0], "[DATE]");
    EXPECT_EQ(lines[1].size(), std::string("yyyy.mm.dd hh:mm").size());
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "  \"TORVE Parameters\""), 1);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[DATA5A]"), 1);

    startEmulator({"--config", "9", "--old"});
    EXPECT_EQ(receive({"--port", port(), "--tick-ms", "20", "--raw", "-o", output()}), 0)
        << errors.toStdString();
    lines = outputLines();
    // An old receiver's text has no channel header: the saved document would have one.
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[CHANNEL]"), 0);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[DATA9A]"), 1);
}

TEST_F(CliReceiveTest, AFailedRunOrBadArgumentsSayWhyAndWriteNothing) {
    startEmulator({"--silent"});
    EXPECT_EQ(receive({"--port", port(), "--tick-ms", "20", "-o", output()}), 1);
    EXPECT_EQ(errors.trimmed(), "Timeout occurred.");
    for (const QStringList& arguments :
         {QStringList{"-o", output()}, QStringList{"--port", "/dev/null"},
          QStringList{"--port", "p", "-o", output(), "--data", "reverb,colour"},
          QStringList{"--port", "p", "-o", output(), "--tick-ms", "0"},
          QStringList{"--port", "p", "-o", output(), "--loud"}}) {
        EXPECT_EQ(receive(arguments), 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(errors.contains("usage:")) << errors.toStdString();
    }
    EXPECT_FALSE(QFile::exists(output()));
}

// A short run's log as it is written, with the times, the start and the port masked and the
// empty polls (which depend on the machine's speed) left out.
TEST_F(CliReceiveTest, TheLogOfAShortRunMatchesItsGolden) {
    startEmulator({"--config", "5", "--memories", "1"});
    EXPECT_EQ(receive({"--port", port(), "--tick-ms", "20", "--parameters-only", "--log", log(),
                       "-o", output()}),
              0)
        << errors.toStdString();
    std::vector<std::string> lines;
    // The time is the first eight columns of an entry; dump lines begin with spaces there.
    const QRegularExpression time(QStringLiteral("^(?= {0,7}\\d)[ \\d]{8}"));
    for (QString line : logLines()) {
        if (line.contains(QStringLiteral("  wait ")))
            continue;
        line.replace(port(), QStringLiteral("PORT"));
        line.replace(time, QStringLiteral("       #"));
        if (line.startsWith(QStringLiteral("Started: ")))
            line = QStringLiteral("Started: #");
        lines.push_back(line.toStdString());
    }
    test::expectMatchesGolden(test::testDataPath("receive_logs/parameters_only_config5.log"),
                              lines);
}

TEST_F(CliReceiveTest, ASignalCancelsTheReceiveAndLeavesThePortUsable) {
    for (const int signal : {SIGINT, SIGTERM}) {
        SCOPED_TRACE(signal == SIGINT ? "SIGINT" : "SIGTERM");
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
        ::kill(static_cast<pid_t>(cli.processId()), signal);
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

        EXPECT_EQ(receive({"--port", port(), "--tick-ms", "20", "-o", output()}), 0)
            << errors.toStdString();
        EXPECT_TRUE(QFile::exists(output()));
        QFile::remove(output());
    }
}

}  // namespace
}  // namespace sonalyx
