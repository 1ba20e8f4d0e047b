#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>
#include <fstream>
#include <random>
#ifndef _WIN32
#include <sys/resource.h>
#endif

#include "document/document_file.h"
#include "document/document_saver.h"
#include "platform/path_text.h"
#include "support/golden.h"
#include "test_documents.h"

namespace sonalyx::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kCantWrite = "Can't write the file. Please close, if it's opened.";

class DocumentSaverTest : public ::testing::Test {
  protected:
    void SetUp() override {
        dir_ = fs::temp_directory_path() /
               ("sonalyx-saver-" + std::to_string(std::random_device{}()) + "-" +
                ::testing::UnitTest::GetInstance()->current_test_info()->name());
        fs::remove_all(dir_);
        fs::create_directories(dir_);
        ASSERT_TRUE(DocumentLoader::load(doc_, smallDocumentLines(), "New Data", nullptr));
    }
    void TearDown() override {
        std::error_code ec;
        fs::permissions(dir_, fs::perms::owner_all, ec);
        fs::remove_all(dir_, ec);
    }
    std::string path(const std::string& name) const { return (dir_ / name).string(); }
    size_t filesInDir() const {
        return static_cast<size_t>(std::distance(fs::directory_iterator(dir_), {}));
    }

    fs::path dir_;
    MeasurementDocument doc_;
    RecordingMessenger messenger_;
    ScriptedChooser chooser_;
    DocumentSaver saver_{messenger_, chooser_};
};

TEST_F(DocumentSaverTest, SaveAsWritesTheDocumentAndRenamesIt) {
    // A cancelled dialog saves nothing.
    EXPECT_FALSE(saver_.saveAs(doc_));
    EXPECT_EQ(doc_.fileName, "New Data");
    EXPECT_TRUE(doc_.modified);
    EXPECT_EQ(filesInDir(), 0u);
    chooser_.picks = {path("run1.csv")};
    ASSERT_TRUE(saver_.saveAs(doc_));
    EXPECT_EQ(doc_.fileName, path("run1.csv"));
    EXPECT_FALSE(doc_.modified);
    EXPECT_EQ(chooser_.presets, (std::vector<std::string>{"New Data", "New Data"}));
    std::ifstream in(path("run1.csv"), std::ios::binary);
    std::string text((std::istreambuf_iterator<char>(in)), {});
    EXPECT_EQ(text.substr(0, 26), "[DATE]\r\n2009.05.17 14:03\r\n");
    EXPECT_EQ(filesInDir(), 1u);  // no temporary file left behind
}

TEST_F(DocumentSaverTest, OverwriteQuestionAnswers) {
    std::ofstream(path("old.csv")) << "old";
    // NO reopens the dialog, then a fresh name goes through without asking.
    chooser_.picks = {path("old.csv"), path("new.csv")};
    messenger_.answers = {Answer::No};
    ASSERT_TRUE(saver_.saveAs(doc_));
    ASSERT_EQ(messenger_.messages.size(), 1u);
    EXPECT_EQ(messenger_.messages[0].text, "Overwrite , OK ?");
    EXPECT_EQ(messenger_.messages[0].mode, MessageMode::YesNoCancel);
    EXPECT_EQ(doc_.fileName, path("new.csv"));

    // CANCEL stops without writing.
    doc_.modified = true;
    chooser_.picks = {path("old.csv")};
    messenger_.answers = {Answer::Cancel};
    EXPECT_FALSE(saver_.saveAs(doc_));
    EXPECT_EQ(doc_.fileName, path("new.csv"));
    EXPECT_TRUE(doc_.modified);

    // YES replaces the old file.
    chooser_.picks = {path("old.csv")};
    messenger_.answers = {Answer::Yes};
    ASSERT_TRUE(saver_.saveAs(doc_));
    EXPECT_EQ(readDocumentLines(path("old.csv"))->at(0), "[DATE]");
}

// The file already there as each system lets it be replaced: Windows refuses while another
// program holds it open (a spreadsheet does) and leaves a read-only file alone, Linux replaces
// the name in both cases; a name beyond ASCII is the same name on disk. A refused save leaves the
// old file whole and no temporary file, and goes through once the obstacle is gone.
struct ExistingFileRow {
    const char* name;  // the file's, in UTF-8
    bool exists, heldOpen, readOnly, savedOnWindows, savedElsewhere;
};

const ExistingFileRow kExistingFiles[] = {
    {"held-open.csv", true, true, false, false, true},
    {"read-only.csv", true, false, true, false, true},
    {"Wohnzimmer Äß 測定.csv", false, false, false, true, true},
    {"été — зал.csv", true, false, false, true, true},
};

TEST_F(DocumentSaverTest, TheFileAlreadyThereAsEachSystemLetsItBeReplaced) {
#ifdef _WIN32
    constexpr bool kWindows = true;
#else
    constexpr bool kWindows = false;
#endif
    for (const auto& row : kExistingFiles) {
        SCOPED_TRACE(row.name);
        const fs::path target = dir_ / platform::pathFromUtf8(row.name);
        if (row.exists)
            std::ofstream(target, std::ios::binary) << "old text";
        if (row.readOnly)
            fs::permissions(target, fs::perms::owner_read);
        std::ifstream holder;
        if (row.heldOpen)
            holder.open(target, std::ios::binary);
        doc_.fileName = platform::utf8FromPath(target);
        doc_.modified = true;
        messenger_.messages.clear();
        const bool saved = saver_.save(doc_);
        EXPECT_EQ(saved, kWindows ? row.savedOnWindows : row.savedElsewhere);
        ASSERT_EQ(filesInDir(), 1u);
        EXPECT_EQ(platform::utf8FromPath(fs::directory_iterator(dir_)->path().filename()),
                  row.name);
        if (!saved) {
            EXPECT_EQ(fileBytes(target), "old text");
            EXPECT_EQ(messenger_.texts(), (std::vector<std::string>{kCantWrite}));
            holder.close();
            fs::permissions(target, fs::perms::owner_all);
            EXPECT_TRUE(saver_.save(doc_));
        }
        EXPECT_EQ(readDocumentLines(target)->at(0), "[DATE]");
        if (row.readOnly && !kWindows) {
            EXPECT_EQ(fs::status(target).permissions(), fs::perms::owner_read);
        }
        holder.close();
        fs::permissions(target, fs::perms::owner_all);
        fs::remove(target);
    }
}

#ifndef _WIN32
// A disk that fills up half-way through the write (a file size limit stands in for it, also
// for root): the old file stays whole and the document as it was. Other refused targets:
// save_targets_test. Windows has no such limit for one process.
TEST_F(DocumentSaverTest, ADiskFullMidWriteKeepsTheOldFileAndTheDocument) {
    std::ofstream(path("keep.csv")) << "old text";
    chooser_.picks = {path("keep.csv")};
    messenger_.answers = {Answer::Yes};  // overwrite
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &before), 0);
    rlimit small = before;
    small.rlim_cur = 64;
    const auto previous = std::signal(SIGXFSZ, SIG_IGN);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &small), 0);
    const bool saved = saver_.saveAs(doc_);
    ::setrlimit(RLIMIT_FSIZE, &before);
    std::signal(SIGXFSZ, previous);
    EXPECT_FALSE(saved);
    EXPECT_EQ(doc_.fileName, "New Data");
    EXPECT_TRUE(doc_.modified);
    EXPECT_EQ(fileBytes(path("keep.csv")), "old text");
    EXPECT_EQ(filesInDir(), 1u);
    EXPECT_EQ(messenger_.texts().back(), kCantWrite);
}
#endif

// YES (with and without a name chosen) and the frame's questions: main_form_test.
TEST_F(DocumentSaverTest, CloseQueryOfNewDataCancelKeepsNoDiscards) {
    messenger_.answers = {Answer::Cancel};
    EXPECT_FALSE(saver_.closeQuery(doc_).mayClose);
    EXPECT_EQ(messenger_.messages.back().text, "Save New Data ?");
    messenger_.answers = {Answer::No};
    EXPECT_TRUE(saver_.closeQuery(doc_).mayClose);
    EXPECT_EQ(filesInDir(), 0u);
}

TEST(FileNames, FolderIsStripped) {
    EXPECT_EQ(fileNameWithoutFolder("/home/me/run1.csv"), "run1.csv");
    EXPECT_EQ(fileNameWithoutFolder("C:\\data\\run2.csv"), "run2.csv");
    EXPECT_EQ(fileNameWithoutFolder("plain.csv"), "plain.csv");
}

TEST(DocumentFile, LinesSplitAtCrLfLfOrCr) {
    EXPECT_EQ(splitLines("a\r\nb\nc"), (std::vector<std::string>{"a", "b", "c"}));
    EXPECT_EQ(splitLines("a\r\n\r\n"), (std::vector<std::string>{"a", ""}));
    EXPECT_EQ(splitLines("lone\rcr\r\r\n"), (std::vector<std::string>{"lone", "cr", ""}));
    EXPECT_EQ(splitLines(std::string("nul\0byte\n", 9)),
              (std::vector<std::string>{std::string("nul\0byte", 8)}));
    EXPECT_TRUE(splitLines("").empty());
    EXPECT_EQ(joinLines({"a", ""}), "a\r\n\r\n");
}

TEST(DocumentFile, UnreadablePathsGiveNothing) {
    EXPECT_FALSE(readDocumentLines("/nonexistent/sonalyx/file.csv"));
    EXPECT_FALSE(readDocumentLines(fs::temp_directory_path().string()));
}

}  // namespace
}  // namespace sonalyx::test
