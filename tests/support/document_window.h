#pragma once

#include <QSize>
#include <QString>
#include <QTemporaryDir>
#include <memory>
#include <string>
#include <vector>

#include "support/recording_messenger.h"
#include "views/window/mdi_child.h"

namespace sonalyx::test {

// The lines of a shipped sample document ("5", "6", "7", "9", "10", "11"), optionally without
// some of its blocks (named by their marker, e.g. "[DATA3A]"): how a channel loses its data.
std::vector<std::string> sampleLines(const std::string& layout,
                                     const std::vector<std::string>& dropBlocks = {});

// build/screenshots/<name>, the folder made if need be: pictures a person looks at.
QString screenshotPath(const QString& name);

// A shown document window with its own recording messenger, scripted save dialog and
// temporary folder. Build it from a shipped sample (the window works on a copy, so saving
// never touches the sample) or from document lines:
//
//     DocumentWindow doc("10");
//     doc->SetPairMode(1);
//     EXPECT_EQ(doc.messenger.texts(), ...);
class DocumentWindow {
  public:
    // A copy of sample-layout-<layout>.csv, loaded under its path in the folder.
    explicit DocumentWindow(const std::string& layout, QSize size = {1000, 640});
    // These lines loaded under the caption ("New Data" is a received, never-saved document).
    DocumentWindow(const std::vector<std::string>& lines, const QString& caption,
                   QSize size = {1000, 640});
    ~DocumentWindow();
    DocumentWindow(const DocumentWindow&) = delete;
    DocumentWindow& operator=(const DocumentWindow&) = delete;

    TMDIChild& window() { return *window_; }
    TMDIChild* operator->() { return window_.get(); }
    TMDIChild& operator*() { return *window_; }
    // Whether LoadDocument accepted the lines.
    bool loaded() const { return loaded_; }
    // The file the window shows (empty for lines loaded under "New Data").
    const QString& path() const { return path_; }
    // A path in the window's own folder, for Save As and the like.
    QString filePath(const QString& name) const { return folder_.filePath(name); }

    RecordingMessenger messenger;
    ScriptedChooser chooser;

  private:
    void open(const std::vector<std::string>& lines, const QString& caption, QSize size);

    QTemporaryDir folder_;
    QString path_;
    bool loaded_ = false;
    std::unique_ptr<TMDIChild> window_;
};

}  // namespace sonalyx::test
