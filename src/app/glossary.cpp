#include "app/glossary.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTextBrowser>
#include <QVBoxLayout>

#include "app/rtf_reader.h"

namespace {

const QString kFileName = QStringLiteral("Glossary.rtf");

}  // namespace

TGlossary::TGlossary(QWidget* owner, QStringList folders)
    : QWidget(owner, Qt::Window), text_(new QTextBrowser(this)) {
    setObjectName(QStringLiteral("Glossary"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Veltrona Sonalyx - Glossary"));
    text_->setObjectName(QStringLiteral("GlossaryText"));
    text_->setReadOnly(true);
    text_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    text_->setStyleSheet(
        QStringLiteral("QTextBrowser{background:rgb(50,50,50);color:rgb(232,232,232);border:none;"
                       "padding:8px;}"));
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(text_);
    resize(kDesignWidth + 50, kDesignHeight + 50);
    Load(folders.isEmpty() ? DefaultFolders() : folders);
    if (owner != nullptr) {
        const QRect frame = owner->window()->frameGeometry();
        move(frame.center() - rect().center());
    }
}

QStringList TGlossary::DefaultFolders() {
    const QString programFolder = QCoreApplication::applicationDirPath();
    QStringList folders = {programFolder, programFolder + QStringLiteral("/../share/sonalyx")};
#ifdef SONALYX_INSTALLED_DATA_DIR
    folders.append(QStringLiteral(SONALYX_INSTALLED_DATA_DIR));
#endif
    folders.append(QDir::currentPath());
    return folders;
}

void TGlossary::Load(const QStringList& folders) {
    for (const QString& folder : folders) {
        QFile file(QDir(folder).filePath(kFileName));
        if (!file.open(QIODevice::ReadOnly)) {
            continue;
        }
        const auto html = RtfReader::toHtml(file.readAll());
        if (!html) {
            text_->setPlainText(tr("%1 is not a rich-text file.").arg(file.fileName()));
            return;
        }
        text_->setHtml(*html);
        loadedPath_ = QDir::cleanPath(file.fileName());
        return;
    }
    text_->setPlainText(tr("The glossary file %1 was not found. Looked in:\n%2")
                            .arg(kFileName, folders.join(QLatin1Char('\n'))));
}
