#pragma once

#include <QStringList>
#include <QWidget>

class QTextBrowser;

// The glossary window: "Glossary.rtf" in a read-only text view on a dark background.
class TGlossary : public QWidget {
    Q_OBJECT

  public:
    static constexpr int kDesignWidth = 469;
    static constexpr int kDesignHeight = 301;

    // folders: where to look for the file, in order; empty means the usual places.
    explicit TGlossary(QWidget* owner = nullptr, QStringList folders = {});

    // Beside the program, the installed data folder, then the current folder.
    static QStringList DefaultFolders();
    // The path of the glossary that was shown, empty when none was found.
    QString LoadedPath() const { return loadedPath_; }
    QTextBrowser* GlossaryText() const { return text_; }

  private:
    void Load(const QStringList& folders);

    QTextBrowser* text_;
    QString loadedPath_;
};
