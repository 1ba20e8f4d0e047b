// Where a save lands, through the writer the window's Save and sonalyx-cli share: each kind of
// target, what must become of the file and of a link to it, and what the user is told.
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <future>
#include <optional>

#include "document/document_loader.h"
#include "document/document_saver.h"
#include "support/golden.h"

namespace sonalyx::test {
namespace {

namespace fs = std::filesystem;

constexpr const char* kCantWrite = "Can't write the file. Please close, if it's opened.";
constexpr const char* kOldText = "old text\r\n";

std::string readAll(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

class ScriptedMessenger : public Messenger {
  public:
    Answer show(const std::string& text, const std::string&, MessageMode) override {
        texts.push_back(text);
        return Answer::Ok;
    }
    std::vector<std::string> texts;
};

class NoChooser : public FileChooser {
  public:
    std::optional<std::string> chooseSaveFile(const std::string&) override { return {}; }
};

// Kinds of file by name, so that a failure reads plainly.
using Kind = std::string_view;
constexpr Kind kRegular = "regular file", kSymlink = "symlink", kFifo = "named pipe",
               kCharDevice = "character device", kDirectory = "directory";

// What one path must be after the save.
struct PathExpectation {
    std::string path;  // relative to the test folder unless absolute
    Kind kind;
    std::string linkTarget;  // for a link: what it still points at
    // For a regular file: "doc" for the saved document over a file with permissions 0640,
    // "new doc" for the saved document in a new file.
    std::string content;
};

struct SaveTargetRow {
    const char* name;
    // Builds the scene in the folder and returns the path to save to.
    std::function<std::string(const fs::path& dir)> prepare;
    bool saved;
    std::vector<PathExpectation> after;
};

void writeOld(const fs::path& path, fs::perms perms = fs::perms::owner_read |
                                                      fs::perms::owner_write |
                                                      fs::perms::group_read) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << kOldText;
    fs::permissions(path, perms);
}

// A folder nobody may create files in: a read-only mount for root, who ignores permissions.
std::string readOnlyFolderTarget(const fs::path& dir) {
    if (::geteuid() == 0)
        return "/proc/sonalyx-save-target.csv";
    writeOld(dir / "locked" / "doc.csv");
    fs::permissions(dir / "locked", fs::perms::owner_read | fs::perms::owner_exec);
    return (dir / "locked" / "doc.csv").string();
}

const std::vector<SaveTargetRow>& rows() {
    static const std::vector<SaveTargetRow> table = {
        {"regular file, permissions kept",
         [](const fs::path& dir) {
             writeOld(dir / "doc.csv");
             return (dir / "doc.csv").string();
         },
         true,
         {{"doc.csv", kRegular, "", "doc"}}},
        {"symlink: the target is replaced, the link kept",
         [](const fs::path& dir) {
             writeOld(dir / "real" / "doc.csv");
             fs::create_symlink("real/doc.csv", dir / "doc.csv");
             return (dir / "doc.csv").string();
         },
         true,
         {{"doc.csv", kSymlink, "real/doc.csv", ""}, {"real/doc.csv", kRegular, "", "doc"}}},
        {"symlink to a symlink: both links kept",
         [](const fs::path& dir) {
             writeOld(dir / "real" / "doc.csv");
             fs::create_symlink(dir / "real" / "doc.csv", dir / "middle.csv");
             fs::create_symlink("middle.csv", dir / "doc.csv");
             return (dir / "doc.csv").string();
         },
         true,
         {{"doc.csv", kSymlink, "middle.csv", ""},
          {"middle.csv", kSymlink, "", ""},
          {"real/doc.csv", kRegular, "", "doc"}}},
        {"symlink to a file not yet there: created at the target",
         [](const fs::path& dir) {
             fs::create_directories(dir / "real");
             fs::create_symlink("real/new.csv", dir / "doc.csv");
             return (dir / "doc.csv").string();
         },
         true,
         {{"doc.csv", kSymlink, "real/new.csv", ""}, {"real/new.csv", kRegular, "", "new doc"}}},
        {"read-only folder: refused, the file untouched", readOnlyFolderTarget, false, {}},
        {"named pipe: written through, still a pipe",
         [](const fs::path& dir) {
             ::mkfifo((dir / "pipe").c_str(), 0600);
             return (dir / "pipe").string();
         },
         true,
         {{"pipe", kFifo, "", ""}}},
        {"full device: refused, the device node kept",
         [](const fs::path&) { return std::string("/dev/full"); },
         false,
         {{"/dev/full", kCharDevice, "", ""}}},
        {"directory: refused",
         [](const fs::path& dir) {
             fs::create_directories(dir / "folder");
             return (dir / "folder").string();
         },
         false,
         {{"folder", kDirectory, "", ""}}},
    };
    return table;
}

Kind kindOf(const fs::file_status& status) {
    switch (status.type()) {
        case fs::file_type::symlink:
            return kSymlink;
        case fs::file_type::fifo:
            return kFifo;
        case fs::file_type::character:
            return kCharDevice;
        case fs::file_type::directory:
            return kDirectory;
        case fs::file_type::regular:
            return kRegular;
        default:
            return "something else";
    }
}

class SaveTargetsTest : public ::testing::Test {
  protected:
    void SetUp() override {
        sample_ = samplesPath("sample-layout-5.csv");
        document_ = readAll(sample_);
    }

    fs::path freshFolder(const std::string& how) const {
        const fs::path dir = fs::temp_directory_path() /
                             ("sonalyx-save-targets-" + std::to_string(::getpid())) / how;
        cleanUp(dir);
        fs::create_directories(dir);
        return dir;
    }
    static void cleanUp(const fs::path& dir) {
        std::error_code ec;
        if (fs::exists(dir / "locked", ec))
            fs::permissions(dir / "locked", fs::perms::owner_all, ec);
        fs::remove_all(dir, ec);
    }

    // Saves through the window's saver; returns the messages shown.
    std::vector<std::string> saveInWindow(const std::string& target, bool& saved) const {
        MeasurementDocument doc;
        EXPECT_TRUE(DocumentLoader::load(doc, readLinesOrFail(sample_), sample_, nullptr));
        doc.fileName = target;
        doc.modified = true;
        ScriptedMessenger messenger;
        NoChooser chooser;
        saved = DocumentSaver(messenger, chooser).save(doc);
        EXPECT_EQ(doc.modified, !saved);
        return messenger.texts;
    }

    // Runs sonalyx-cli convert; returns its exit status and fills err with its stderr.
    int convertWithCli(const fs::path& dir, const std::string& target, std::string& err) const {
        const fs::path errFile = dir.parent_path() / "cli-stderr.txt";
        const std::string command = std::string(SONALYX_CLI) + " convert '" + sample_ + "' -o '" +
                                    target + "' 2>'" + errFile.string() + "'";
        const int raw = std::system(command.c_str());
        err = readAll(errFile);
        return WIFEXITED(raw) ? WEXITSTATUS(raw) : -1;
    }

    void expectScene(const fs::path& dir, const SaveTargetRow& row, const std::string& how) const {
        const std::string context = std::string(row.name) + " (" + how + ")";
        for (const PathExpectation& want : row.after) {
            const fs::path path =
                fs::path(want.path).is_absolute() ? fs::path(want.path) : dir / want.path;
            std::error_code ec;
            const fs::file_status status = fs::symlink_status(path, ec);
            ASSERT_FALSE(ec) << context << ": " << want.path << " is gone";
            EXPECT_EQ(kindOf(status), want.kind) << context << ": kind of " << want.path;
            if (!want.linkTarget.empty()) {
                EXPECT_EQ(fs::read_symlink(path, ec), want.linkTarget) << context;
            }
            if (!want.content.empty()) {
                EXPECT_TRUE(readAll(path) == document_)
                    << context << ": " << want.path << " does not hold the saved document";
            }
            if (want.content == "doc") {
                EXPECT_EQ(status.permissions() & fs::perms::all,
                          fs::perms::owner_read | fs::perms::owner_write | fs::perms::group_read)
                    << context << ": permissions of " << want.path;
            }
        }
        if (std::string(row.name).find("read-only") != std::string::npos && ::geteuid() != 0) {
            EXPECT_EQ(readAll(dir / "locked" / "doc.csv"), kOldText) << context;
        }
        // No temporary file is left anywhere in the scene.
        for (const auto& entry :
             fs::recursive_directory_iterator(dir, fs::directory_options::skip_permission_denied)) {
            EXPECT_EQ(entry.path().filename().string().find(".saving-"), std::string::npos)
                << context << ": left behind " << entry.path();
        }
    }

    std::string sample_;
    std::string document_;
};

TEST_F(SaveTargetsTest, EachKindOfTargetInTheWindowAndTheCommandLine) {
    for (const SaveTargetRow& row : rows()) {
        const bool isPipe = std::string(row.name).find("pipe") != std::string::npos;
        // A pipe is read by someone else while the save writes it.
        const auto readPipe = [](const std::string& path) {
            return std::async(std::launch::async, [path] { return readAll(path); });
        };

        const fs::path windowDir = freshFolder("window");
        const std::string windowTarget = row.prepare(windowDir);
        std::future<std::string> windowReader;
        if (isPipe)
            windowReader = readPipe(windowTarget);
        bool saved = false;
        const std::vector<std::string> shown = saveInWindow(windowTarget, saved);
        EXPECT_EQ(saved, row.saved) << row.name;
        EXPECT_EQ(shown,
                  row.saved ? std::vector<std::string>{} : std::vector<std::string>{kCantWrite})
            << row.name;
        if (isPipe) {
            EXPECT_EQ(windowReader.get(), document_) << row.name;
        }
        expectScene(windowDir, row, "window");
        cleanUp(windowDir);

        const fs::path cliDir = freshFolder("cli");
        const std::string cliTarget = row.prepare(cliDir);
        std::future<std::string> cliReader;
        if (isPipe)
            cliReader = readPipe(cliTarget);
        std::string err;
        EXPECT_EQ(convertWithCli(cliDir, cliTarget, err), row.saved ? 0 : 1) << row.name;
        EXPECT_EQ(err, row.saved ? "" : std::string(kCantWrite) + "\n  " + cliTarget + "\n")
            << row.name;
        if (isPipe) {
            EXPECT_EQ(cliReader.get(), document_) << row.name;
        }
        expectScene(cliDir, row, "sonalyx-cli");
        cleanUp(cliDir);
    }
    cleanUp(fs::temp_directory_path() / ("sonalyx-save-targets-" + std::to_string(::getpid())));
}

}  // namespace
}  // namespace sonalyx::test
