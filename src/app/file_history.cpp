#include "app/file_history.h"

namespace {

const QString kGroup = QStringLiteral("FILEHISTORY");
const QString kCount = QStringLiteral("COUNT");

QString pathKey(int index) {
    return QStringLiteral("PATH%1").arg(index);
}

}  // namespace

void FileHistory::Load(QSettings& settings) {
    entries_.clear();
    changed_ = false;
    settings.beginGroup(kGroup);
    const int count = settings.value(kCount, 0).toInt();
    for (int i = 0; i < count; ++i) {
        const QString path = settings.value(pathKey(i)).toString();
        // A hand-edited store may hold gaps or repeats; the list itself never does.
        if (!path.isEmpty() && !entries_.contains(path) && entries_.size() < kMaxEntries) {
            entries_.append(path);
        }
    }
    settings.endGroup();
}

bool FileHistory::Add(const QString& path) {
    if (!entries_.isEmpty() && entries_.constFirst() == path) {
        return false;
    }
    if (!entries_.removeOne(path) && entries_.size() >= kMaxEntries) {
        entries_.removeLast();
    }
    entries_.prepend(path);
    changed_ = true;
    return true;
}

bool FileHistory::SaveIfChanged(QSettings& settings) {
    if (!changed_) {
        return false;
    }
    settings.remove(kGroup);
    settings.beginGroup(kGroup);
    settings.setValue(kCount, static_cast<int>(entries_.size()));
    for (int i = 0; i < entries_.size(); ++i) {
        settings.setValue(pathKey(i), entries_.at(i));
    }
    settings.endGroup();
    settings.sync();
    changed_ = false;
    return true;
}
