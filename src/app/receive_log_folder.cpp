#include "app/receive_log_folder.h"

#include <QDir>
#include <QFile>
#include <QStandardPaths>

namespace sonalyx {

namespace {

const QString kPattern = QStringLiteral("receive-*.log");

}  // namespace

QString ReceiveLogFolder::path() {
    return QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation) +
           QStringLiteral("/receive-logs");
}

bool ReceiveLogFolder::make() {
    return QDir().mkpath(path());
}

QString ReceiveLogFolder::newLogFile(const QDateTime& now) {
    if (!make()) {
        return {};
    }
    const QDir folder(path());
    // The names sort by time, so the oldest come first.
    QStringList older = folder.entryList({kPattern}, QDir::Files, QDir::Name);
    while (older.size() >= kKeptRuns) {
        QFile::remove(folder.filePath(older.takeFirst()));
    }
    const QString stem =
        QStringLiteral("receive-") + now.toString(QStringLiteral("yyyyMMdd-HHmmss-zzz"));
    QString name = stem + QStringLiteral(".log");
    for (int n = 2; folder.exists(name); ++n) {
        name = stem + QStringLiteral("-%1.log").arg(n);
    }
    return folder.filePath(name);
}

}  // namespace sonalyx
