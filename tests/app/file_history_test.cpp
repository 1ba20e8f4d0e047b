#include <gtest/gtest.h>
#include <QSettings>
#include <QTemporaryDir>

#include "app/file_history.h"

namespace {

QStringList paths(int from, int to) {
    QStringList list;
    for (int i = from; i <= to; ++i) {
        list.append(QStringLiteral("/data/run%1.csv").arg(i));
    }
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

TEST_F(FileHistoryTest, NewestFirstWithoutDuplicatesAtMostEight) {
    FileHistory history;
    for (const QString& path : paths(1, 3)) {
        EXPECT_TRUE(history.Add(path));
    }
    EXPECT_EQ(history.Entries(),
              (QStringList{"/data/run3.csv", "/data/run2.csv", "/data/run1.csv"}));

    EXPECT_TRUE(history.Add(QStringLiteral("/data/run1.csv")));
    EXPECT_EQ(history.Entries(),
              (QStringList{"/data/run1.csv", "/data/run3.csv", "/data/run2.csv"}));

    for (const QString& path : paths(4, 9)) {
        history.Add(path);
    }
    ASSERT_EQ(history.Entries().size(), 8);
    EXPECT_EQ(history.Entries().front(), QStringLiteral("/data/run9.csv"));
    // run2 was the oldest of the eight when the ninth came.
    EXPECT_FALSE(history.Entries().contains(QStringLiteral("/data/run2.csv")));
    EXPECT_TRUE(history.Entries().contains(QStringLiteral("/data/run3.csv")));
}

TEST_F(FileHistoryTest, ReaddingAnEntryAlreadyInAFullListDropsNothing) {
    FileHistory history;
    for (const QString& path : paths(1, 8)) {
        history.Add(path);
    }
    history.Add(QStringLiteral("/data/run1.csv"));
    EXPECT_EQ(history.Entries().size(), 8);
    EXPECT_EQ(history.Entries().front(), QStringLiteral("/data/run1.csv"));
    EXPECT_EQ(history.Entries().back(), QStringLiteral("/data/run2.csv"));
}

TEST_F(FileHistoryTest, ReopeningTheFirstEntryChangesNothingAndWritesNothing) {
    {
        auto stored = settings();
        stored.setValue(QStringLiteral("FILEHISTORY/COUNT"), 2);
        stored.setValue(QStringLiteral("FILEHISTORY/PATH0"), QStringLiteral("/a.csv"));
        stored.setValue(QStringLiteral("FILEHISTORY/PATH1"), QStringLiteral("/b.csv"));
        stored.setValue(QStringLiteral("FILEHISTORY/MARK"), 1);
    }
    auto stored = settings();
    FileHistory history;
    history.Load(stored);
    EXPECT_FALSE(history.Add(QStringLiteral("/a.csv")));
    EXPECT_FALSE(history.Changed());
    EXPECT_FALSE(history.SaveIfChanged(stored));
    // A rewrite erases the section first; the mark shows it was left alone.
    EXPECT_TRUE(settings().contains(QStringLiteral("FILEHISTORY/MARK")));
}

TEST_F(FileHistoryTest, SavesUnderFileHistoryAndReadsBack) {
    FileHistory history;
    {
        auto stored = settings();
        stored.setValue(QStringLiteral("FILEHISTORY/PATH5"), QStringLiteral("/stale.csv"));
    }
    for (const QString& path : paths(1, 3)) {
        history.Add(path);
    }
    auto stored = settings();
    EXPECT_TRUE(history.SaveIfChanged(stored));
    EXPECT_FALSE(history.Changed());

    const auto readBack = settings();
    EXPECT_EQ(readBack.value(QStringLiteral("FILEHISTORY/COUNT")).toInt(), 3);
    EXPECT_EQ(readBack.value(QStringLiteral("FILEHISTORY/PATH0")).toString(),
              QStringLiteral("/data/run3.csv"));
    EXPECT_EQ(readBack.value(QStringLiteral("FILEHISTORY/PATH2")).toString(),
              QStringLiteral("/data/run1.csv"));
    EXPECT_FALSE(readBack.contains(QStringLiteral("FILEHISTORY/PATH5")));

    auto again = settings();
    FileHistory loaded;
    loaded.Load(again);
    EXPECT_EQ(loaded.Entries(), history.Entries());
    EXPECT_FALSE(loaded.Changed());
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
