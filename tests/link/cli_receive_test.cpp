// sonalyx-cli receive as a script would run it, against the emulator program.
#include <gtest/gtest.h>
#include <QProcess>
#include <QTemporaryDir>
#include <algorithm>

#include "document/document_file.h"
#include "test_application.h"

namespace sonalyx {
namespace {

const QString kBinaryDir = QStringLiteral(SONALYX_BINARY_DIR);

class CliReceiveTest : public ::testing::Test {
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

    // Starts the emulator program and returns its port.
    QString startEmulator(const QStringList& arguments) {
        emulator.start(kBinaryDir + "/tools/emulator/sonalyx-receiver-emulator", arguments);
        EXPECT_TRUE(emulator.waitForReadyRead(5000));
        return QString::fromLocal8Bit(emulator.readLine()).trimmed();
    }

    struct Run {
        int exitCode = -1;
        QString errors;
    };
    Run receive(const QStringList& arguments) {
        QProcess cli;
        cli.start(kBinaryDir + "/src/cli/sonalyx-cli", QStringList{"receive"} + arguments);
        EXPECT_TRUE(cli.waitForFinished(60000));
        return {cli.exitCode(), QString::fromLocal8Bit(cli.readAllStandardError())};
    }

    QString output() const { return folder.filePath("out.csv"); }

    QTemporaryDir folder;
    QProcess emulator;
};

TEST_F(CliReceiveTest, WritesTheDocumentWithItsDate) {
    const QString port = startEmulator({"--config", "5", "--link", folder.filePath("rx")});
    ASSERT_FALSE(port.isEmpty());
    const Run run = receive({"--port", folder.filePath("rx"), "--tick-ms", "20", "--data",
                             "reverb,parameters", "-o", output()});
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
    const auto lines = readDocumentLines(output().toStdString());
    ASSERT_TRUE(lines.has_value());
    ASSERT_GT(lines->size(), 2u);
    EXPECT_EQ(lines->at(0), "[DATE]");
    EXPECT_EQ(lines->at(1).size(), std::string("yyyy.mm.dd hh:mm").size());
    EXPECT_EQ(std::count(lines->begin(), lines->end(), "  \"TORVE Parameters\""), 1);
    EXPECT_EQ(std::count(lines->begin(), lines->end(), "[DATA5A]"), 1);
}

TEST_F(CliReceiveTest, RawWritesTheReceivedText) {
    const QString port = startEmulator({"--config", "9", "--old"});
    const Run run = receive({"--port", port, "--tick-ms", "20", "--raw", "-o", output()});
    EXPECT_EQ(run.exitCode, 0) << run.errors.toStdString();
    const auto lines = readDocumentLines(output().toStdString());
    ASSERT_TRUE(lines.has_value());
    // An old receiver's text has no channel header: the saved document would have one.
    EXPECT_EQ(std::count(lines->begin(), lines->end(), "[CHANNEL]"), 0);
    EXPECT_EQ(std::count(lines->begin(), lines->end(), "[DATA9A]"), 1);
}

TEST_F(CliReceiveTest, AFailedRunSaysWhyAndWritesNothing) {
    const QString port = startEmulator({"--silent"});
    const Run run = receive({"--port", port, "--tick-ms", "20", "-o", output()});
    EXPECT_EQ(run.exitCode, 1);
    EXPECT_EQ(run.errors.trimmed(), "Timeout occurred.");
    EXPECT_FALSE(QFile::exists(output()));
}

TEST_F(CliReceiveTest, BadArgumentsShowTheUsage) {
    for (const QStringList& arguments :
         {QStringList{"-o", output()}, QStringList{"--port", "/dev/null"},
          QStringList{"--port", "p", "-o", output(), "--data", "reverb,colour"},
          QStringList{"--port", "p", "-o", output(), "--tick-ms", "0"},
          QStringList{"--port", "p", "-o", output(), "--loud"}}) {
        const Run run = receive(arguments);
        EXPECT_EQ(run.exitCode, 2) << arguments.join(' ').toStdString();
        EXPECT_TRUE(run.errors.contains("usage:")) << run.errors.toStdString();
    }
    EXPECT_FALSE(QFile::exists(output()));
}

}  // namespace
}  // namespace sonalyx
