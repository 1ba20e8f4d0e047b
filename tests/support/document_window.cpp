#include "support/document_window.h"

#include <gtest/gtest.h>
#include <QApplication>
#include <QDir>
#include <QFile>
#include <algorithm>

#include "document/document_file.h"
#include "support/golden.h"

namespace sonalyx::test {

std::vector<std::string> sampleLines(const std::string& layout,
                                     const std::vector<std::string>& dropBlocks) {
    std::vector<std::string> lines;
    bool dropping = false;
    for (const auto& line : readLinesOrFail(samplesPath("sample-layout-" + layout + ".csv"))) {
        if (std::find(dropBlocks.begin(), dropBlocks.end(), line) != dropBlocks.end())
            dropping = true;
        else if (dropping && line.empty())
            dropping = false;
        if (!dropping)
            lines.push_back(line);
    }
    return lines;
}

QString screenshotPath(const QString& name) {
    const QString folder = QStringLiteral(SONALYX_BINARY_DIR "/screenshots");
    QDir().mkpath(folder);
    return folder + QLatin1Char('/') + name;
}

DocumentWindow::DocumentWindow(const std::string& layout, QSize size) {
    path_ = folder_.filePath(QStringLiteral("layout-%1.csv").arg(QString::fromStdString(layout)));
    const QString source = QString::fromStdString(samplesPath("sample-layout-" + layout + ".csv"));
    EXPECT_TRUE(QFile::copy(source, path_)) << source.toStdString();
    QFile::setPermissions(path_, QFile::ReadOwner | QFile::WriteOwner);
    open(sampleLines(layout), path_, size);
}

DocumentWindow::DocumentWindow(const std::vector<std::string>& lines, const QString& caption,
                               QSize size) {
    if (caption != QStringLiteral("New Data"))
        path_ = caption;
    open(lines, caption, size);
}

DocumentWindow::~DocumentWindow() {
    // The test is over: closing must not ask about unsaved changes.
    window_->Document().modified = false;
    window_.reset();
    QApplication::processEvents();
}

void DocumentWindow::open(const std::vector<std::string>& lines, const QString& caption,
                          QSize size) {
    window_ = std::make_unique<TMDIChild>(caption, messenger, chooser);
    // The test owns the window: closing it must not delete it under the test.
    window_->setAttribute(Qt::WA_DeleteOnClose, false);
    loaded_ = window_->LoadDocument(lines, caption);
    window_->resize(size);
    window_->show();
    QApplication::processEvents();
}

}  // namespace sonalyx::test
