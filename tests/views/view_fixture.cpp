#include "view_fixture.h"

#include <QApplication>
#include <QFile>
#include <algorithm>

#include "document/document_file.h"

namespace sonalyx::test {

Answer RecordingMessenger::show(const std::string& text, const std::string& second, MessageMode) {
    said.push_back(text + "|" + second);
    if (answers.empty()) {
        return Answer::Ok;
    }
    const Answer answer = answers.front();
    answers.pop_front();
    return answer;
}

std::vector<std::string> sampleLines(int layout, const std::vector<std::string>& dropBlocks) {
    const auto read = readDocumentLines(std::string(SONALYX_SAMPLES_DIR "/sample-layout-") +
                                        std::to_string(layout) + ".csv");
    EXPECT_TRUE(read.has_value());
    std::vector<std::string> lines;
    bool dropping = false;
    for (const auto& line : read.value_or(std::vector<std::string>{})) {
        if (std::find(dropBlocks.begin(), dropBlocks.end(), line) != dropBlocks.end()) {
            dropping = true;
        } else if (dropping && line.empty()) {
            dropping = false;
        }
        if (!dropping) {
            lines.push_back(line);
        }
    }
    return lines;
}

std::unique_ptr<TMDIChild> ViewFixture::open(int layout, const std::vector<std::string>& dropBlocks,
                                             QSize size) {
    const QString name = QStringLiteral("/samples/sample-layout-%1.csv").arg(layout);
    auto child = std::make_unique<TMDIChild>(name, messenger_, chooser_);
    child->setAttribute(Qt::WA_DeleteOnClose, false);
    child->resize(size);
    child->show();
    EXPECT_TRUE(child->LoadDocument(sampleLines(layout, dropBlocks), name));
    QApplication::processEvents();
    return child;
}

std::unique_ptr<TMDIChild> ViewFixture::openCopy(int layout) {
    path_ = folder_.filePath(QStringLiteral("doc.csv"));
    QFile::remove(path_);
    QFile::copy(QStringLiteral(SONALYX_SAMPLES_DIR "/sample-layout-%1.csv").arg(layout), path_);
    QFile::setPermissions(path_, QFile::ReadOwner | QFile::WriteOwner);
    auto child = std::make_unique<TMDIChild>(path_, messenger_, chooser_);
    child->setAttribute(Qt::WA_DeleteOnClose, false);
    EXPECT_TRUE(child->LoadDocument(sampleLines(layout), path_));
    child->resize(1000, 640);
    child->show();
    QApplication::processEvents();
    return child;
}

}  // namespace sonalyx::test
