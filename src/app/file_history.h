#pragma once

#include <QSettings>
#include <QStringList>

// The recently opened or saved documents, most recent first, at most eight, kept in the
// settings under "FILEHISTORY" as "COUNT" and "PATH0", "PATH1", ...
class FileHistory {
  public:
    static constexpr int kMaxEntries = 8;

    // Reads the stored list; the history counts as unchanged afterwards.
    void Load(QSettings& settings);
    // Puts path at the front. Returns false when nothing changed (it was already first).
    bool Add(const QString& path);
    // Writes the list when it differs from what was read; returns whether it wrote.
    bool SaveIfChanged(QSettings& settings);

    const QStringList& Entries() const { return entries_; }
    bool Changed() const { return changed_; }

  private:
    QStringList entries_;
    bool changed_ = false;
};
