#include "app/document_file_dialogs.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace {

const QStringList& documentFilters() {
    static const QStringList filters = {QObject::tr("All Files (*)"),
                                        QObject::tr("Text Files (*.csv *.txt)")};
    return filters;
}

}  // namespace

QString DocumentFileDialogs::lastFolder() const {
    return lastFolder_.isEmpty() ? QDir::homePath() : lastFolder_;
}

QString DocumentFileDialogs::chooseOpenFile() {
    QFileDialog dialog(parent_.data(), QObject::tr("Open"), lastFolder());
    dialog.setObjectName(QStringLiteral("OpenDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.setNameFilters(documentFilters());
    dialog.selectNameFilter(documentFilters().at(1));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return {};
    }
    const QString path = QFileInfo(dialog.selectedFiles().constFirst()).absoluteFilePath();
    lastFolder_ = QFileInfo(path).absolutePath();
    return path;
}

std::optional<std::string> DocumentFileDialogs::chooseSaveFile(const std::string& presetPath) {
    const QString preset = QString::fromStdString(presetPath);
    const QFileInfo presetInfo(preset);
    const QString folder = presetInfo.isAbsolute() ? presetInfo.absolutePath() : lastFolder();
    QFileDialog dialog(parent_.data(), QObject::tr("Save As"), folder);
    dialog.setObjectName(QStringLiteral("SaveFileDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setOption(QFileDialog::DontConfirmOverwrite);
    dialog.setDefaultSuffix(QStringLiteral("csv"));
    dialog.setNameFilters(documentFilters());
    dialog.selectNameFilter(documentFilters().at(1));
    dialog.selectFile(presetInfo.fileName());
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return std::nullopt;
    }
    const QString path = QFileInfo(dialog.selectedFiles().constFirst()).absoluteFilePath();
    lastFolder_ = QFileInfo(path).absolutePath();
    return path.toStdString();
}
