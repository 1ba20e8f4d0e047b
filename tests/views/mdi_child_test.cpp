#include <gtest/gtest.h>
#include <QFile>
#include <QLabel>
#include <QPlainTextEdit>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QTemporaryDir>
#include <deque>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "views/channel_card.h"
#include "views/mdi_child.h"

namespace {

using sonalyx::Answer;
using sonalyx::MessageMode;

class RecordingMessenger : public sonalyx::Messenger {
  public:
    Answer show(const std::string& text, const std::string& second, MessageMode) override {
        said.push_back(text + "|" + second);
        if (answers.empty()) {
            return Answer::Ok;
        }
        const Answer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    std::vector<std::string> said;
    std::deque<Answer> answers;
};

class FixedChooser : public sonalyx::FileChooser {
  public:
    std::optional<std::string> chooseSaveFile(const std::string&) override { return path; }
    std::optional<std::string> path;
};

class MDIChildTest : public ::testing::Test {
  protected:
    std::vector<std::string> sampleLines(const char* layout) {
        const auto lines = sonalyx::readDocumentLines(
            std::string(SONALYX_SAMPLES_DIR "/sample-layout-") + layout + ".csv");
        EXPECT_TRUE(lines.has_value());
        return lines.value_or(std::vector<std::string>{});
    }
    // A loaded window for a copy of a sample, so saving does not touch the shipped file.
    std::unique_ptr<TMDIChild> open(const char* layout) {
        path_ = folder_.filePath(QStringLiteral("doc.csv"));
        QFile::remove(path_);
        QFile::copy(QStringLiteral(SONALYX_SAMPLES_DIR "/sample-layout-%1.csv").arg(layout), path_);
        QFile::setPermissions(path_, QFile::ReadOwner | QFile::WriteOwner);
        auto child = std::make_unique<TMDIChild>(path_, messenger_, chooser_);
        EXPECT_TRUE(child->LoadDocument(sampleLines(layout), path_));
        child->resize(1000, 640);
        child->show();
        return child;
    }
    static QPlainTextEdit* fileMemo(TMDIChild& child, int section) {
        return child.findChild<QPlainTextEdit*>(QStringLiteral("MemoFile%1").arg(section + 1));
    }
    static QList<sonalyx::ChannelCard*> cards(TMDIChild& child) {
        return child.findChildren<sonalyx::ChannelCard*>();
    }

    QTemporaryDir folder_;
    QString path_;
    RecordingMessenger messenger_;
    FixedChooser chooser_;
};

TEST_F(MDIChildTest, FrameHasItsCaptionTabsAndPanel) {
    TMDIChild child(QStringLiteral("New Data"), messenger_, chooser_);
    EXPECT_EQ(child.windowTitle(), QStringLiteral("New Data"));
    QTabWidget* tabs = child.PageControl();
    ASSERT_EQ(tabs->count(), 3);
    EXPECT_EQ(tabs->tabText(0), QStringLiteral("Reverb"));
    EXPECT_EQ(tabs->tabText(1), QStringLiteral("Group Delay"));
    EXPECT_EQ(tabs->tabText(2), QStringLiteral("Parameters"));
    EXPECT_EQ(child.Panel1()->objectName(), QStringLiteral("Panel1"));
    EXPECT_TRUE(child.IsGraph3D());
    EXPECT_EQ(child.PairMode(), 0);
}

TEST_F(MDIChildTest, ShowsOneCardPerChannelOrGroupWithData) {
    auto child = open("10");
    const auto& doc = child->Document();
    EXPECT_EQ(cards(*child).size(), doc.positionsWithData[0].count);
    child->SetPairMode(1);
    EXPECT_EQ(cards(*child).size(), doc.groupsWithData.count);
    child->SetPairMode(0);
    EXPECT_EQ(cards(*child).size(), doc.positionsWithData[0].count);
}

TEST_F(MDIChildTest, ShowsTheMemosOfTheDocument) {
    auto child = open("5");
    const auto& doc = child->Document();
    ASSERT_FALSE(doc.fileMemos[0].empty());
    EXPECT_EQ(fileMemo(*child, 0)->toPlainText().split(QLatin1Char('\n')).front().toStdString(),
              doc.fileMemos[0].front());
    const auto* first = cards(*child).front()->memoEditor();
    EXPECT_EQ(first->toPlainText().toStdString(), doc.channelMemos[0].front());
    EXPECT_FALSE(child->IsModified());
}

TEST_F(MDIChildTest, EditingMemosStoresThemAndMarksTheDocumentModified) {
    auto child = open("5");
    fileMemo(*child, 2)->setPlainText(QStringLiteral("Firmware 1.50\nafter update"));
    EXPECT_TRUE(child->IsModified());
    EXPECT_EQ(child->Document().fileMemos[2],
              (std::vector<std::string>{"Firmware 1.50", "after update"}));
    cards(*child).at(1)->memoEditor()->setPlainText(QStringLiteral("moved 20 cm left"));
    EXPECT_EQ(child->Document().channelMemos[1], std::vector<std::string>{"moved 20 cm left"});

    ASSERT_TRUE(child->Save());
    EXPECT_FALSE(child->IsModified());
    const auto written = sonalyx::readDocumentLines(path_.toStdString());
    ASSERT_TRUE(written.has_value());
    sonalyx::MeasurementDocument reread;
    ASSERT_TRUE(sonalyx::DocumentLoader::load(reread, *written, path_.toStdString(), nullptr));
    EXPECT_EQ(reread.fileMemos[2], child->Document().fileMemos[2]);
    EXPECT_EQ(reread.channelMemos[1], std::vector<std::string>{"moved 20 cm left"});
}

TEST_F(MDIChildTest, GroupMemosAreEditedInPairMode) {
    auto child = open("7");
    child->SetPairMode(1);
    cards(*child).front()->memoEditor()->setPlainText(QStringLiteral("fronts as a pair"));
    EXPECT_EQ(child->Document().groupMemos[0], std::vector<std::string>{"fronts as a pair"});
    EXPECT_TRUE(child->IsModified());
}

TEST_F(MDIChildTest, EmptySectionsSayNoData) {
    TMDIChild child(QStringLiteral("/x/empty.csv"), messenger_, chooser_);
    ASSERT_TRUE(child.LoadDocument({"[DATE]", "2026.01.02 03:04"}, QStringLiteral("/x/empty.csv")));
    const auto sections = child.findChildren<QStackedWidget*>(QStringLiteral("SectionPages"));
    for (auto* pages : sections) {
        EXPECT_EQ(pages->currentWidget()->objectName(), QStringLiteral("LabelNoData"));
    }
    EXPECT_EQ(sections.size(), 3);
    EXPECT_EQ(child.findChild<QLabel*>(QStringLiteral("LabelNoData"))->text(),
              QStringLiteral("No Data"));
}

TEST_F(MDIChildTest, AFileThatIsNotADocumentIsReportedAndShowsNothing) {
    TMDIChild child(QStringLiteral("/x/notes.txt"), messenger_, chooser_);
    child.show();
    EXPECT_FALSE(child.LoadDocument({"hello"}, QStringLiteral("/x/notes.txt")));
    EXPECT_EQ(messenger_.said, std::vector<std::string>{"Illegal file format.|/x/notes.txt"});
    EXPECT_FALSE(child.widget()->isVisible());
}

TEST_F(MDIChildTest, GroupDelayGroupsAreListed) {
    auto child = open("10");
    auto* table = child->findChild<QTableWidget*>(QStringLiteral("GroupDelayTable"));
    int groups = 0;
    for (int g = 0; g < sonalyx::kMaxGroups; ++g) {
        groups += child->Document().groupDelay.hasData[0][g] ||
                  child->Document().groupDelay.hasData[1][g];
    }
    ASSERT_GT(groups, 0);
    EXPECT_EQ(table->rowCount(), groups);
    EXPECT_EQ(table->item(0, 0)->text(), QStringLiteral("Front"));
    EXPECT_TRUE(table->item(0, 1)->text().endsWith(QStringLiteral(" ms")));
}

TEST_F(MDIChildTest, CloseQueryFollowsTheAnswer) {
    auto child = open("5");
    fileMemo(*child, 0)->appendPlainText(QStringLiteral("x"));
    messenger_.answers = {Answer::Cancel, Answer::No};
    EXPECT_FALSE(child->CloseQuery());
    EXPECT_TRUE(child->CloseQuery());
    EXPECT_EQ(messenger_.said, (std::vector<std::string>{"Save changes to doc.csv ?|",
                                                         "Save changes to doc.csv ?|"}));
}

TEST_F(MDIChildTest, SavingNewDataUnderANameRenamesTheWindowAndReportsThePath) {
    TMDIChild child(QStringLiteral("New Data"), messenger_, chooser_);
    ASSERT_TRUE(child.LoadDocument(sampleLines("11"), QStringLiteral("New Data")));
    EXPECT_TRUE(child.IsModified());
    const QString target = folder_.filePath(QStringLiteral("saved.csv"));
    chooser_.path = target.toStdString();
    QStringList reported;
    QObject::connect(&child, &TMDIChild::SavedAs, [&](const QString& p) { reported.append(p); });
    messenger_.answers = {Answer::Yes};
    EXPECT_TRUE(child.CloseQuery());
    EXPECT_EQ(messenger_.said, std::vector<std::string>{"Save New Data ?|"});
    EXPECT_EQ(reported, QStringList{target});
    EXPECT_EQ(child.windowTitle(), target);
    EXPECT_TRUE(QFile::exists(target));
}

TEST_F(MDIChildTest, DemoRotationSwingsAndPausesAtTheEnds) {
    TMDIChild child(QStringLiteral("New Data"), messenger_, chooser_);
    for (int i = 0; i < 40; ++i) {
        child.DemoRotateStep();
    }
    EXPECT_EQ(child.RotationPosition(), 90);
    EXPECT_FALSE(child.RotateBackward());
    child.DemoRotateStep();  // the pause at the end turns it round
    EXPECT_EQ(child.RotationPosition(), 90);
    EXPECT_TRUE(child.RotateBackward());
    child.DemoRotateStep();
    EXPECT_EQ(child.RotationPosition(), 89);
    child.SetGraph3D(false);
    child.DemoRotateStep();
    EXPECT_EQ(child.RotationPosition(), 89);
}

}  // namespace
