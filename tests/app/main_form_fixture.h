#pragma once

#include <gtest/gtest.h>
#include <QSettings>
#include <QStringList>
#include <QTemporaryDir>
#include <functional>
#include <memory>

#include "app/main_form.h"
#include "modal_answerer.h"

// A main window with its own settings file and a folder of sample documents.
class MainFormTest : public ::testing::Test {
  protected:
    void SetUp() override;
    void TearDown() override;

    // Starts the frame (without splash) with these command-line files and waits for start-up.
    TMainForm& start(const QStringList& files = {});
    // A copy of a shipped sample ("5", "7", "9", "10", "11") under the given name.
    QString sample(const QString& layout, const QString& name = {});
    // Several distinct document files.
    QStringList samples(int count);
    QString writeFile(const QString& name, const QByteArray& bytes);
    QSettings& settings() { return *settings_; }
    QStringList storedHistory();
    // Runs the event loop until done() holds (or a generous limit passes).
    static bool waitFor(const std::function<bool()>& done);
    void dropFiles(const QStringList& paths);

    QTemporaryDir folder_;
    std::unique_ptr<QSettings> settings_;
    std::unique_ptr<TMainForm> form_;
};
