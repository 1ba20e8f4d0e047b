#pragma once

#include <QPointer>
#include <QString>
#include <QWidget>

#include "document/document_saver.h"

// The open and save dialogs for documents: filters "All Files" and "Text Files (*.csv *.txt)",
// the second chosen; saving adds ".csv" when no extension is typed. The overwrite question is
// the document core's own, so the dialog does not ask it twice.
class DocumentFileDialogs : public sonalyx::FileChooser {
  public:
    explicit DocumentFileDialogs(QWidget* parent = nullptr) : parent_(parent) {}
    void setParent(QWidget* parent) { parent_ = parent; }

    // The chosen file, or an empty string when the user cancelled.
    QString chooseOpenFile();
    std::optional<std::string> chooseSaveFile(const std::string& presetPath) override;

  private:
    QString lastFolder() const;

    QPointer<QWidget> parent_;
    QString lastFolder_;
};
