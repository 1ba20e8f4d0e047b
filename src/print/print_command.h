#pragma once

#include <QImage>
#include <QList>
#include <QPointer>
#include <memory>

class QWidget;
class TMDIChild;
class PreviewWindow;

namespace sonalyx {

class CaptureWindowSizer;
class Messenger;
class PrintEnvironment;

// File Print and File Preview of the main window: the checks in their order, then the
// current tab of the document window as a picture (graph tabs) or as sheet pages (Parameters),
// shown in a preview window or sent to the printer. The main window's size and the document
// window's maximised state are put back, and the busy cursor restored, on every path.
class PrintCommand {
  public:
    PrintCommand(QWidget* mainWindow, Messenger& messenger, PrintEnvironment& environment);
    ~PrintCommand();

    // The demonstration is the caller's to stop first.
    void Run(TMDIChild* window, bool preview);

    void ExecutePreview(TMDIChild& window);
    void ExecutePrint(TMDIChild& window);
    void ExecutePreviewTORVEPara(TMDIChild& window);
    void ExecutePrintTORVEPara(TMDIChild& window);

  private:
    // Puts the main window's size and the document window's state back (once).
    void RestoreWindows(TMDIChild& window);
    void Refuse(const char* text);
    // The hourglass for the rest of the command, given back before a window waits for the user.
    void SetBusy();
    void ReleaseBusy();
    // Shows a preview window modally over the main window, titled after the document.
    void ShowPreview(PreviewWindow& form, const TMDIChild& window);

    QPointer<QWidget> mainWindow_;
    Messenger& messenger_;
    PrintEnvironment& environment_;
    std::unique_ptr<CaptureWindowSizer> sizer_;
    bool restoreWindow_ = false;
    bool busy_ = false;
};

}  // namespace sonalyx
