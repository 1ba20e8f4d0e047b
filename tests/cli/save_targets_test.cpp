// Where a save lands, through the writer the window's Save and sonalyx-cli share: each kind of
// target, what must become of the file and of a link to it, and what the user is told.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <future>

#include "document/document_loader.h"
#include "document/document_saver.h"
#include "support/golden.h"
#include "support/recording_messenger.h"

namespace sonalyx::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kCantWrite = "Can't write the file. Please close, if it's opened.";
constexpr const char* kOldText = "old text\r\n";
constexpr fs::perms kOldPerms =
    fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read;

// A scene is built step by step in a fresh folder ("$/" in a link target is that folder):
//   old P: a file of old text, permissions 0640   dir P, fifo P, link P TARGET
//   locked P: an old file in a folder nobody may write to; the save goes to P (root ignores
//             permissions: a read-only mount stands in for root)
//   full P: a device that is always full; as root a node of our own at P, so that a writer
//           that renamed over a device would spoil nothing of the machine's
// The path saved to is the last step's P. What must hold afterwards, one word a path (@ is the
// path saved to): P=doc the saved document with the old permissions, P=new the saved document,
// P=old untouched, P->T a link to T, P:link, P:fifo, P:char, P:dir.
struct SaveTargetRow {
    const char* name;
    const char* scene;
    bool saved;
    const char* after;
};

const SaveTargetRow kRows[] = {
    {"regular file, permissions kept", "old doc.csv", true, "doc.csv=doc"},
    {"symlink: the target is replaced, the link kept", "old real/doc.csv link doc.csv real/doc.csv",
     true, "doc.csv->real/doc.csv real/doc.csv=doc"},
    {"symlink to a symlink: both links kept",
     "old real/doc.csv link middle.csv $/real/doc.csv link doc.csv middle.csv", true,
     "doc.csv->middle.csv middle.csv:link real/doc.csv=doc"},
    {"symlink to a file not yet there: created at the target", "dir real link doc.csv real/new.csv",
     true, "doc.csv->real/new.csv real/new.csv=new"},
    {"read-only folder: refused, the file untouched", "locked locked/doc.csv", false,
     "locked/doc.csv=old"},
    {"named pipe: written through, still a pipe", "fifo pipe", true, "@:fifo"},
    {"full device: refused, the device node kept", "full full", false, "@:char"},
    {"directory: refused", "dir folder", false, "@:dir"},
};

const char* kindOf(const fs::file_status& status) {
    switch (status.type()) {
        case fs::file_type::symlink:
            return "link";
        case fs::file_type::fifo:
            return "fifo";
        case fs::file_type::character:
            return "char";
        case fs::file_type::directory:
            return "dir";
        case fs::file_type::regular:
            return "regular";
        default:
            return "something else";
    }
}

class SaveTargetsTest : public ::testing::Test {
  protected:
    void TearDown() override { cleanUp(root_); }

    static void cleanUp(const fs::path& dir) {
        std::error_code ec;
        fs::permissions(dir / "locked", fs::perms::owner_all, ec);
        fs::remove_all(dir, ec);
    }

    // Builds the row's scene in a fresh folder; returns the path to save to.
    std::string prepare(const fs::path& dir, const SaveTargetRow& row) {
        cleanUp(dir);
        fs::create_directories(dir);
        const auto steps = words(row.scene);
        std::string target;
        for (size_t i = 0; i + 1 < steps.size(); i += 2) {
            const std::string& step = steps[i];
            const fs::path path = dir / steps[i + 1];
            target = path.string();
            if (step == "old" || step == "locked") {
                fs::create_directories(path.parent_path());
                std::ofstream(path, std::ios::binary) << kOldText;
                fs::permissions(path, kOldPerms);
            }
            if (step == "locked" && ::geteuid() == 0)
                target = "/proc/sonalyx-save-target.csv";
            else if (step == "locked")
                fs::permissions(path.parent_path(), fs::perms::owner_read | fs::perms::owner_exec);
            if (step == "dir")
                fs::create_directories(path);
            if (step == "fifo")
                ::mkfifo(path.c_str(), 0600);
            if (step == "full" &&
                (::geteuid() != 0 || ::mknod(path.c_str(), S_IFCHR | 0600, makedev(1, 7)) != 0))
                target = "/dev/full";  // nobody but root may rename over it
            if (step == "link") {
                const std::string to = steps[i + 2];
                fs::create_symlink(to.starts_with("$/") ? (dir / to.substr(2)).string() : to, path);
                ++i;
            }
        }
        return target;
    }

    void expectScene(const fs::path& dir, const std::string& target, const SaveTargetRow& row,
                     const std::string& how) const {
        const std::string context = std::string(row.name) + " (" + how + ")";
        for (const std::string& want : words(row.after)) {
            const size_t split = want.find_first_of("=-:");
            const std::string name = want.substr(0, split);
            const std::string what = want.substr(split + (want[split] == '-' ? 2 : 1));
            const fs::path path = name == "@" ? fs::path(target) : dir / name;
            SCOPED_TRACE(context + ": " + want);
            std::error_code ec;
            const fs::file_status status = fs::symlink_status(path, ec);
            ASSERT_FALSE(ec) << path << " is gone";
            if (want[split] == ':') {
                EXPECT_STREQ(kindOf(status), what.c_str());
            }
            if (want[split] == '-') {
                EXPECT_STREQ(kindOf(status), "link");
                EXPECT_EQ(fs::read_symlink(path, ec), what);
            }
            if (want[split] == '=') {
                EXPECT_STREQ(kindOf(status), "regular");
                EXPECT_TRUE(fileBytes(path) == (what == "old" ? kOldText : document_))
                    << path << " does not hold the " << (what == "old" ? "old text" : "document");
            }
            if (what == "doc") {
                EXPECT_EQ(status.permissions() & fs::perms::all, kOldPerms);
            }
        }
        // No temporary file is left anywhere in the scene.
        for (const auto& entry :
             fs::recursive_directory_iterator(dir, fs::directory_options::skip_permission_denied)) {
            EXPECT_EQ(entry.path().filename().string().find(".saving-"), std::string::npos)
                << context << ": left behind " << entry.path();
        }
    }

    // Saves through the window's saver or sonalyx-cli convert; returns what the user was told.
    std::vector<std::string> save(const std::string& target, bool cli, bool& saved) const {
        if (cli) {
            const fs::path errFile = root_ / "cli-stderr.txt";
            const std::string command = std::string(SONALYX_CLI) + " convert '" + sample_ +
                                        "' -o '" + target + "' 2>'" + errFile.string() + "'";
            const int raw = std::system(command.c_str());
            const int status = WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
            saved = status == 0;
            const std::string err = fileBytes(errFile);
            EXPECT_TRUE(status == 0 || status == 1) << status;
            return err.empty() ? std::vector<std::string>{} : std::vector<std::string>{err};
        }
        MeasurementDocument doc;
        EXPECT_TRUE(DocumentLoader::load(doc, readLinesOrFail(sample_), sample_, nullptr));
        doc.fileName = target;
        doc.modified = true;
        RecordingMessenger messenger;
        ScriptedChooser chooser;
        saved = DocumentSaver(messenger, chooser).save(doc);
        EXPECT_EQ(doc.modified, !saved);
        return messenger.texts();
    }

    const fs::path root_ =
        fs::temp_directory_path() / ("sonalyx-save-targets-" + std::to_string(::getpid()));
    const std::string sample_ = samplesPath("sample-layout-5.csv");
    const std::string document_ = fileBytes(sample_);
};

TEST_F(SaveTargetsTest, EachKindOfTargetInTheWindowAndTheCommandLine) {
    for (const SaveTargetRow& row : kRows) {
        for (const bool cli : {false, true}) {
            const std::string how = cli ? "sonalyx-cli" : "window";
            const fs::path dir = root_ / how;
            const std::string target = prepare(dir, row);
            // A pipe is read by someone else while the save writes it.
            std::future<std::string> reader;
            if (kindOf(fs::symlink_status(target)) == std::string("fifo"))
                reader = std::async(std::launch::async, [target] { return fileBytes(target); });
            bool saved = false;
            const auto told = save(target, cli, saved);
            EXPECT_EQ(saved, row.saved) << row.name << " (" << how << ")";
            const std::string refusal =
                cli ? std::string(kCantWrite) + "\n  " + target + "\n" : kCantWrite;
            EXPECT_EQ(told,
                      row.saved ? std::vector<std::string>{} : std::vector<std::string>{refusal})
                << row.name << " (" << how << ")";
            if (reader.valid()) {
                EXPECT_EQ(reader.get(), document_) << row.name << " (" << how << ")";
            }
            expectScene(dir, target, row, how);
        }
    }
}

}  // namespace
}  // namespace sonalyx::test
