#pragma once

#include <gtest/gtest.h>
#include <QTemporaryDir>
#include <deque>
#include <memory>
#include <string>
#include <vector>

#include "document/document_saver.h"
#include "document/messenger.h"
#include "views/mdi_child.h"

namespace sonalyx::test {

class RecordingMessenger : public Messenger {
  public:
    Answer show(const std::string& text, const std::string& second, MessageMode) override;
    std::vector<std::string> said;
    std::deque<Answer> answers;
};

class FixedChooser : public FileChooser {
  public:
    std::optional<std::string> chooseSaveFile(const std::string&) override { return path; }
    std::optional<std::string> path;
};

// The lines of a shipped sample, optionally without some of its blocks (named by their
// marker, e.g. "[DATA3A]"), which is how a channel loses its data for one variant.
std::vector<std::string> sampleLines(int layout, const std::vector<std::string>& dropBlocks = {});

// Document windows on samples, shown offscreen at a given size.
class ViewFixture : public ::testing::Test {
  protected:
    std::unique_ptr<TMDIChild> open(int layout, const std::vector<std::string>& dropBlocks = {},
                                    QSize size = QSize(1000, 640));
    // A copy of the sample in a temporary folder, so saving leaves the shipped file alone.
    std::unique_ptr<TMDIChild> openCopy(int layout);

    QTemporaryDir folder_;
    QString path_;
    RecordingMessenger messenger_;
    FixedChooser chooser_;
};

}  // namespace sonalyx::test
