#include <gtest/gtest.h>
#include <QSettings>
#include <QTemporaryDir>

#include "app/file_history.h"

namespace {

QStringList runs(std::initializer_list<int> numbers) {
    QStringList list;
    for (int i : numbers)
        list.append(QStringLiteral("/data/run%1.csv").arg(i));
    return list;
}

class FileHistoryTest : public ::testing::Test {
  protected:
    void SetUp() override { ASSERT_TRUE(folder_.isValid()); }
    QSettings settings() const {
        return QSettings(folder_.filePath(QStringLiteral("h.ini")), QSettings::IniFormat);
    }
    QTemporaryDir folder_;
};

// Newest first, no duplicates, at most eight: the oldest goes, and re-adding an entry of a
// full list only moves it to the front.
TEST_F(FileHistoryTest, NewestFirstWithoutDuplicatesAtMostEight) {
    FileHistory history;
    for (const QString& path : runs({1, 2, 3, 1}))
        EXPECT_TRUE(history.Add(path));
    EXPECT_EQ(history.Entries(), runs({1, 3, 2}));
    for (const QString& path : runs({4, 5, 6, 7, 8, 9}))
        history.Add(path);
    EXPECT_EQ(history.Entries(), runs({9, 8, 7, 6, 5, 4, 1, 3}));
    history.Add(runs({3}).front());
    EXPECT_EQ(history.Entries(), runs({3, 9, 8, 7, 6, 5, 4, 1}));
}

// Stored under FILEHISTORY, replacing what was there, and read back; reopening the first entry
// changes nothing and writes nothing (a rewrite would erase the mark).
TEST_F(FileHistoryTest, SavesReadsBackAndLeavesTheStoreAloneWhenNothingChanged) {
    settings().setValue(QStringLiteral("FILEHISTORY/PATH5"), QStringLiteral("/stale.csv"));
    FileHistory history;
    for (const QString& path : runs({1, 2, 3}))
        history.Add(path);
    auto stored = settings();
    EXPECT_TRUE(history.SaveIfChanged(stored));
    EXPECT_FALSE(history.Changed());
    const auto readBack = settings();
    EXPECT_EQ(readBack.value(QStringLiteral("FILEHISTORY/COUNT")).toInt(), 3);
    EXPECT_EQ(readBack.value(QStringLiteral("FILEHISTORY/PATH0")).toString(), runs({3}).front());
    EXPECT_EQ(readBack.value(QStringLiteral("FILEHISTORY/PATH2")).toString(), runs({1}).front());
    EXPECT_FALSE(readBack.contains(QStringLiteral("FILEHISTORY/PATH5")));

    settings().setValue(QStringLiteral("FILEHISTORY/MARK"), 1);
    auto again = settings();
    FileHistory loaded;
    loaded.Load(again);
    EXPECT_EQ(loaded.Entries(), history.Entries());
    EXPECT_FALSE(loaded.Changed());
    EXPECT_FALSE(loaded.Add(runs({3}).front()));
    EXPECT_FALSE(loaded.SaveIfChanged(again));
    EXPECT_TRUE(settings().contains(QStringLiteral("FILEHISTORY/MARK")));
}

TEST_F(FileHistoryTest, LoadingADamagedStoreKeepsTheListClean) {
    {
        auto stored = settings();
        stored.setValue(QStringLiteral("FILEHISTORY/COUNT"), 12);
        for (int i = 0; i < 12; ++i) {
            stored.setValue(QStringLiteral("FILEHISTORY/PATH%1").arg(i),
                            i == 3 ? QStringLiteral("/r0.csv") : QStringLiteral("/r%1.csv").arg(i));
        }
        stored.remove(QStringLiteral("FILEHISTORY/PATH5"));
    }
    auto stored = settings();
    FileHistory history;
    history.Load(stored);
    EXPECT_EQ(history.Entries(), (QStringList{"/r0.csv", "/r1.csv", "/r2.csv", "/r4.csv", "/r6.csv",
                                              "/r7.csv", "/r8.csv", "/r9.csv"}));
}

}  // namespace
