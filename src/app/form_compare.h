#pragma once

#include <QDialog>
#include <QStringList>

class QListWidget;

// "Compare With": picks the reference for the active document among the other open
// documents, or "Other file…" to open one from disk.
class TFormCompare : public QDialog {
    Q_OBJECT

  public:
    // titles are shown, paths become their tool tips.
    TFormCompare(const QString& documentTitle, const QStringList& titles, const QStringList& paths,
                 QWidget* parent = nullptr);

    // The chosen open document's index; -1 for "Other file…" or nothing.
    int ChosenDocument() const;
    bool OtherFileChosen() const;
    QListWidget* ListDocuments() const { return list_; }

  private:
    QListWidget* list_ = nullptr;
    int documents_ = 0;
};
