#pragma once

#include <QMainWindow>
#include <QPointer>
#include <QStringList>
#include <memory>
#include <string>
#include <vector>

#include "app/dialog_messenger.h"
#include "app/document_file_dialogs.h"
#include "app/export_command.h"
#include "app/file_history.h"
#include "print/report_command.h"

class QAction;
class QActionGroup;
class QLabel;
class QMdiArea;
class QMdiSubWindow;
class QMenu;
class QSettings;
class QTimer;
class QToolBar;
class TFormOpenning;
class TGlossary;
class TMDIChild;

namespace sonalyx {
class PrintCommand;
class PrintEnvironment;
class CompareCommands;
class ReceiveSession;
struct ReceiveOptions;
struct ReceiveResult;
}  // namespace sonalyx

// What the program was started with.
struct MainFormOptions {
    // Where the file history lives; null means the user's own settings ("veltrona",
    // "Sonalyx"). Not owned.
    QSettings* settings = nullptr;
    QStringList files;  // documents named on the command line, opened at start-up
    bool showSplash = true;
    int splashMilliseconds = 1500;
    // Ports named with --port, offered first in the port dialog.
    QStringList ports;
    // The receive's reply poll interval; tests shorten it.
    int receiveTickMs = 1000;
    // What printing asks of the system; null means the real printers and screen. Not owned.
    sonalyx::PrintEnvironment* printEnvironment = nullptr;
};

// The frame: menus, tool bar, the document windows in an MDI area, the file history.
class TMainForm : public QMainWindow {
    Q_OBJECT

  public:
    static constexpr int kMaxDocuments = 9;

    explicit TMainForm(MainFormOptions options = {}, QWidget* parent = nullptr);
    ~TMainForm() override;

    // Opens a document file into a new window (the limit is the caller's check). True when
    // the document was loaded.
    bool OpenDocumentFile(const QString& path);
    // Opens several files as a drop or the command line does: stops at the ninth window with
    // one "No more window.".
    void OpenDocumentFiles(const QStringList& paths);
    // A new "New Data" window from received document text.
    TMDIChild* OpenReceivedLines(const std::vector<std::string>& lines);

    QList<TMDIChild*> DocumentWindows() const;
    TMDIChild* ActiveDocument() const;
    const FileHistory& History() const { return history_; }
    QMdiArea* MdiArea() const { return mdiArea_; }
    bool StartupFinished() const { return startStep_ >= kStepIdle; }
    bool IsGraph3D() const { return graph3D_; }
    QAction* Action(const QString& objectName) const;
    // The shared timer's current use: a start-up step, or 11 for the demonstration. A receive
    // paces itself on its own timer, so the two never compete.
    int TimerTag() const { return timerTag_; }
    bool Receiving() const { return !receive_.isNull(); }

  public slots:
    void FileOpen1Execute();
    void FileSave1Execute();
    void FileSaveAs1Execute();
    void FileReceiveExecute();
    void FileOtherReceiveExecute();
    void FilePrintExecute();
    void FilePreviewExecute();
    void FileExportExecute();
    void FileReportExecute();
    void FileExit1Execute();
    void WindowCascade1Execute();
    void WindowTileHorizontal1Execute();
    void WindowTileVertical1Execute();
    void WindowMinimizeAll1Execute();
    void WindowArrangeAll1Execute();
    void HelpAbout1Execute();
    void GlossaryG1Click();
    // Opens the folder of the receive runs' exchange logs.
    void HelpReceiveLogsExecute();
    void Graph2DExecute();
    void Graph3DExecute();
    void EachChExecute();
    void PairChExecute();
    void DemoExecute(bool on);
    void DecayTimesExecute();
    void FitToDataExecute();

  signals:
    void StartupCompleted();

  protected:
    void closeEvent(QCloseEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    enum StartStep { kStepSplash = 0, kStepSplashLast = 5, kStepOpen = 6, kStepIdle = 10 };
    static constexpr int kTagDemo = 11;

    void CreateActions();
    QAction* MakeAction(const QString& name, const QString& caption, const char* shortcut,
                        bool enabled);
    void CreateMenus();
    void CreateToolBar();
    void CreateStatusBar();
    void CreateHistoryItems();
    // Where the frame was left, else the design size within the screen's available area.
    void PlaceOnScreen();
    void RebuildHistoryMenu();
    void HistoryItemClick(int index);
    void AddToHistory(const QString& path);
    void Timer1Timer();
    void RunStartStep();
    void FinishStartup();
    void ShowMessage(const QString& text, const QString& secondLine, int mode);
    bool AtDocumentLimit() const;
    TMDIChild* CreateDocumentWindow(const QString& caption);
    void DiscardDocumentWindow(TMDIChild* child);
    void UpdateDocumentActions();
    void UpdateWindowMenu();
    void UpdateStatus();
    void ShowReadout(const QString& text);
    void TrackEditTarget(QWidget* focused);
    void UpdateEditActions();
    void RunOnEditTarget(const char* slot);
    void DeleteSelection();
    void StopDemo();
    bool AskReceiveOptions(sonalyx::ReceiveOptions& options);
    void StartReceive(const sonalyx::ReceiveOptions& options);
    void ReceiveEnded(const sonalyx::ReceiveResult& result, const QString& port);
    void SetReceiveActionsEnabled(bool enabled);
    bool DropCarriesFiles(const QEvent* event) const;
    void OpenDroppedFiles(const QEvent* event);

    MainFormOptions options_;
    std::unique_ptr<QSettings> ownSettings_;
    QSettings* settings_;
    DialogMessenger messenger_;
    DocumentFileDialogs fileDialogs_;
    ExportCommand export_;
    sonalyx::ReportCommand report_;
    FileHistory history_;
    std::vector<std::string> fileLines_;

    QMdiArea* mdiArea_ = nullptr;
    QTimer* timer1_ = nullptr;
    int timerTag_ = kStepSplash;
    int startStep_ = kStepSplash;
    bool graph3D_ = true;
    bool dropRegistered_ = false;
    QPointer<TFormOpenning> splash_;
    QPointer<TGlossary> glossary_;
    QPointer<QWidget> editTarget_;
    QPointer<sonalyx::ReceiveSession> receive_;
    std::unique_ptr<sonalyx::PrintEnvironment> ownPrintEnvironment_;
    std::unique_ptr<sonalyx::PrintCommand> print_;
    sonalyx::CompareCommands* compare_ = nullptr;

    QMenu* fileMenu_ = nullptr;
    QMenu* windowMenu_ = nullptr;
    QAction* historySeparator_ = nullptr;
    QList<QAction*> historyItems_;
    QAction* windowListSeparator_ = nullptr;
    QActionGroup* typeGroup_ = nullptr;
    QToolBar* toolBar_ = nullptr;
    QWidget* logoGap_ = nullptr;
    QLabel* statusDocuments_ = nullptr;
    QLabel* statusModified_ = nullptr;
};
