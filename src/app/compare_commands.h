#pragma once

#include <QObject>
#include <QString>

class DocumentFileDialogs;
class QAction;
class TMDIChild;
class TMainForm;

namespace sonalyx {

class Messenger;

// The Display menu's comparison commands: Compare With…, Compare Off, Difference and After
// minus Before, acting on the active document window. Their actions are the main window's
// children ("DisplayCompareWith", "DisplayCompareOff", "DisplayDifference",
// "DisplayAfterMinusBefore"), so the frame lists them like its own.
class CompareCommands : public QObject {
    Q_OBJECT

  public:
    CompareCommands(TMainForm& form, Messenger& messenger, DocumentFileDialogs& dialogs);

    void CompareWithExecute();
    void CompareOffExecute();
    void DifferenceExecute(bool on);
    void AfterMinusBeforeExecute(bool on);
    // Makes the document in this file the window's reference; false (the user told why)
    // when it can't be read or is not a document.
    bool CompareWithFile(TMDIChild& child, const QString& path);
    // Enabled and checked states from the active window; the frame calls it whenever its
    // document actions change, and a window's ReferenceChanged does.
    void UpdateActions();

  private:
    QAction* Make(const QString& name, const QString& caption, bool checkable);
    void Watch(TMDIChild* child);

    TMainForm& form_;
    Messenger& messenger_;
    DocumentFileDialogs& dialogs_;
    QAction* compareWith_ = nullptr;
    QAction* compareOff_ = nullptr;
    QAction* difference_ = nullptr;
    QAction* afterMinusBefore_ = nullptr;
};

}  // namespace sonalyx
