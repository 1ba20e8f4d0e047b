#include "app/main_form.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QDesktopServices>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileInfo>
#include <QLabel>
#include <QLineEdit>
#include <QMdiArea>
#include <QMenuBar>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSettings>
#include <QStatusBar>
#include <QTextEdit>
#include <QTimer>
#include <QToolBar>

#include "app/about_box.h"
#include "app/brand_art.h"
#include "app/compare_commands.h"
#include "app/form_openning.h"
#include "app/glossary.h"
#include "app/receive_log_folder.h"
#include "app/receive_session.h"
#include "app/tool_icons.h"
#include "document/document_file.h"
#include "link/form_port.h"
#include "link/port_list.h"
#include "print/print_command.h"
#include "print/print_environment.h"
#include "retrieval/date_stamp.h"
#include "views/chart/chart_widget.h"
#include "views/form_decay_times.h"
#include "views/mdi_child.h"

namespace {

constexpr int kLogoGap = 8;
const QString kNewData = QStringLiteral("New Data");

// "Open(&O)" -> "Open" for tool tips.
QString plainCaption(QString caption) {
    caption.remove(QRegularExpression(QStringLiteral("\\(&.\\)")));
    caption.remove(QStringLiteral("..."));
    caption.remove(QLatin1Char('&'));
    return caption.trimmed();
}

QString escapeMnemonics(QString text) {
    return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

}  // namespace

TMainForm::TMainForm(MainFormOptions options, QWidget* parent)
    : QMainWindow(parent),
      options_(std::move(options)),
      settings_(options_.settings),
      messenger_(this),
      fileDialogs_(this),
      export_(this, messenger_) {
    sonalyx::PrintEnvironment* printEnvironment = options_.printEnvironment;
    if (printEnvironment == nullptr) {
        ownPrintEnvironment_ = std::make_unique<sonalyx::PrintEnvironment>();
        printEnvironment = ownPrintEnvironment_.get();
    }
    print_ = std::make_unique<sonalyx::PrintCommand>(this, messenger_, *printEnvironment);
    // The frame is an ordinary application window with its own task bar entry.
    setWindowFlags(Qt::Window);
    setObjectName(QStringLiteral("MainForm"));
    setWindowTitle(tr("Veltrona Sonalyx"));
    setWindowIcon(BrandArt::ApplicationIcon());
    if (settings_ == nullptr) {
        ownSettings_ =
            std::make_unique<QSettings>(QStringLiteral("veltrona"), QStringLiteral("Sonalyx"));
        settings_ = ownSettings_.get();
    }

    mdiArea_ = new QMdiArea(this);
    mdiArea_->setObjectName(QStringLiteral("MdiArea"));
    mdiArea_->setBackground(QColor(86, 96, 110));
    mdiArea_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    mdiArea_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setCentralWidget(mdiArea_);
    connect(mdiArea_, &QMdiArea::subWindowActivated, this, [this] {
        UpdateDocumentActions();
        UpdateStatus();
    });

    CreateActions();
    compare_ = new sonalyx::CompareCommands(*this, messenger_, fileDialogs_);
    CreateMenus();
    CreateToolBar();
    CreateStatusBar();
    CreateHistoryItems();
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget*, QWidget* now) { TrackEditTarget(now); });

    history_.Load(*settings_);
    if (!history_.Entries().isEmpty()) {
        RebuildHistoryMenu();
    }

    timer1_ = new QTimer(this);
    timer1_->setObjectName(QStringLiteral("Timer1"));
    timer1_->setInterval(1);
    connect(timer1_, &QTimer::timeout, this, &TMainForm::Timer1Timer);
    timer1_->start();
    resize(1280, 820);
}

TMainForm::~TMainForm() {
    qApp->removeEventFilter(this);
    // A run still going closes its port now, while the messenger it reports to exists.
    delete receive_.data();
    // The document windows go with the frame's base classes; nothing of this class may be
    // reached from their signals by then.
    disconnect(mdiArea_, nullptr, this, nullptr);
    for (TMDIChild* child : findChildren<TMDIChild*>()) {
        disconnect(child, nullptr, this, nullptr);
    }
    disconnect(qApp, nullptr, this, nullptr);
    delete splash_.data();
}

QAction* TMainForm::MakeAction(const QString& name, const QString& caption, const char* shortcut,
                               bool enabled) {
    auto* action = new QAction(caption, this);
    action->setObjectName(name);
    if (shortcut != nullptr) {
        action->setShortcut(QKeySequence(QString::fromLatin1(shortcut)));
    }
    action->setToolTip(plainCaption(caption));
    action->setEnabled(enabled);
    return action;
}

QAction* TMainForm::Action(const QString& objectName) const {
    return findChild<QAction*>(objectName, Qt::FindDirectChildrenOnly);
}

void TMainForm::CreateActions() {
    const auto bind = [this](QAction* action, void (TMainForm::*handler)()) {
        connect(action, &QAction::triggered, this, handler);
        return action;
    };
    bind(MakeAction(QStringLiteral("FileOpen1"), tr("Open(&O)"), "Ctrl+O", false),
         &TMainForm::FileOpen1Execute)
        ->setIcon(ToolIcons::Make(ToolIcons::Open));
    connect(MakeAction(QStringLiteral("FileClose1"), tr("Close(&C)"), nullptr, true),
            &QAction::triggered, mdiArea_, &QMdiArea::closeActiveSubWindow);
    bind(MakeAction(QStringLiteral("FileSave1"), tr("Save(&S)"), "Ctrl+S", false),
         &TMainForm::FileSave1Execute)
        ->setIcon(ToolIcons::Make(ToolIcons::Save));
    bind(MakeAction(QStringLiteral("FileSaveAs1"), tr("SaveAs(&A)..."), nullptr, false),
         &TMainForm::FileSaveAs1Execute);
    bind(MakeAction(QStringLiteral("FileReceive"), tr("FileReceive"), nullptr, false),
         &TMainForm::FileReceiveExecute)
        ->setIcon(ToolIcons::Make(ToolIcons::Receive));
    bind(MakeAction(QStringLiteral("FileOtherReceive"), tr("Receive Parameters(&M)"), nullptr,
                    false),
         &TMainForm::FileOtherReceiveExecute);
    bind(MakeAction(QStringLiteral("FilePrint"), tr("FilePrint"), nullptr, false),
         &TMainForm::FilePrintExecute)
        ->setIcon(ToolIcons::Make(ToolIcons::Print));
    bind(MakeAction(QStringLiteral("FilePreview"), tr("Preview(&V)"), nullptr, false),
         &TMainForm::FilePreviewExecute)
        ->setIcon(ToolIcons::Make(ToolIcons::Preview));
    bind(MakeAction(QStringLiteral("FileExport"), tr("Export(&E)..."), nullptr, false),
         &TMainForm::FileExportExecute)
        ->setIcon(ToolIcons::Make(ToolIcons::Export));
    bind(MakeAction(QStringLiteral("FileExit1"), tr("Exit(&X)"), nullptr, true),
         &TMainForm::FileExit1Execute);

    connect(MakeAction(QStringLiteral("EditUndo1"), tr("Undo(&U)"), "Ctrl+Z", false),
            &QAction::triggered, this, [this] { RunOnEditTarget("undo"); });
    auto* cut = MakeAction(QStringLiteral("EditCut1"), tr("Cut(&T)"), "Ctrl+X", false);
    cut->setIcon(ToolIcons::Make(ToolIcons::Cut));
    connect(cut, &QAction::triggered, this, [this] { RunOnEditTarget("cut"); });
    auto* copy = MakeAction(QStringLiteral("EditCopy1"), tr("Copy(&C)..."), "Ctrl+C", false);
    copy->setIcon(ToolIcons::Make(ToolIcons::Copy));
    connect(copy, &QAction::triggered, this, [this] { RunOnEditTarget("copy"); });
    auto* paste = MakeAction(QStringLiteral("EditPaste1"), tr("Paste(&P)"), "Ctrl+V", true);
    paste->setIcon(ToolIcons::Make(ToolIcons::Paste));
    connect(paste, &QAction::triggered, this, [this] { RunOnEditTarget("paste"); });
    connect(MakeAction(QStringLiteral("EditDelete1"), tr("Delete(&D)"), "Ctrl+Del", false),
            &QAction::triggered, this, &TMainForm::DeleteSelection);
    connect(MakeAction(QStringLiteral("EditSelectAll1"), tr("Select All(&L)"), "Ctrl+A", false),
            &QAction::triggered, this, [this] { RunOnEditTarget("selectAll"); });
    // The shortcuts of the edit actions belong to the focused editor itself.
    for (const char* name :
         {"EditUndo1", "EditCut1", "EditCopy1", "EditPaste1", "EditSelectAll1"}) {
        Action(QLatin1String(name))->setShortcutContext(Qt::WidgetShortcut);
    }

    bind(MakeAction(QStringLiteral("WindowCascade1"), tr("Cascade(&C)"), nullptr, true),
         &TMainForm::WindowCascade1Execute)
        ->setIcon(ToolIcons::Make(ToolIcons::Cascade));
    bind(MakeAction(QStringLiteral("WindowTileHorizontal1"), tr("Tile(&T)"), nullptr, true),
         &TMainForm::WindowTileHorizontal1Execute)
        ->setIcon(ToolIcons::Make(ToolIcons::Tile));
    bind(MakeAction(QStringLiteral("WindowTileVertical1"), tr("TileVertical(&V)"), nullptr, true),
         &TMainForm::WindowTileVertical1Execute)
        ->setIcon(ToolIcons::Make(ToolIcons::TileVertical));
    bind(MakeAction(QStringLiteral("WindowMinimizeAll1"), tr("Minimize(&M)"), nullptr, true),
         &TMainForm::WindowMinimizeAll1Execute);
    bind(MakeAction(QStringLiteral("WindowArrangeAll1"), tr("Arrange(&A)"), nullptr, true),
         &TMainForm::WindowArrangeAll1Execute)
        ->setIcon(ToolIcons::Make(ToolIcons::Arrange));

    bind(MakeAction(QStringLiteral("HelpAbout1"), tr("VersionInfo(&A)..."), nullptr, false),
         &TMainForm::HelpAbout1Execute);
    bind(MakeAction(QStringLiteral("GlossaryG1"), tr("Glossary(&G)"), nullptr, true),
         &TMainForm::GlossaryG1Click);
    bind(MakeAction(QStringLiteral("HelpReceiveLogs"), tr("Receive Logs(&L)"), nullptr, true),
         &TMainForm::HelpReceiveLogsExecute);

    bind(MakeAction(QStringLiteral("Graph2D"), tr("Graph2D(&2)"), nullptr, false),
         &TMainForm::Graph2DExecute)
        ->setIcon(ToolIcons::Make(ToolIcons::Graph2D));
    bind(MakeAction(QStringLiteral("Graph3D"), tr("Graph3D(&3)"), nullptr, false),
         &TMainForm::Graph3DExecute)
        ->setIcon(ToolIcons::Make(ToolIcons::Graph3D));

    typeGroup_ = new QActionGroup(this);
    auto* each =
        bind(MakeAction(QStringLiteral("ActionEachCh"), tr("Each Channel(&E)"), nullptr, false),
             &TMainForm::EachChExecute);
    auto* pair =
        bind(MakeAction(QStringLiteral("ActionPairCh"), tr("Pair Channel(&P)"), nullptr, false),
             &TMainForm::PairChExecute);
    for (QAction* action : {each, pair}) {
        action->setCheckable(true);
        typeGroup_->addAction(action);
    }
    each->setChecked(true);
    auto* demo = MakeAction(QStringLiteral("ActionDemo"), tr("Demo(&D)"), nullptr, false);
    demo->setCheckable(true);
    demo->setIcon(ToolIcons::Make(ToolIcons::Demo));
    connect(demo, &QAction::toggled, this, &TMainForm::DemoExecute);
    bind(MakeAction(QStringLiteral("DisplayDecayTimes"), tr("Decay Times(&R)..."), nullptr, false),
         &TMainForm::DecayTimesExecute);
}

void TMainForm::CreateMenus() {
    fileMenu_ = menuBar()->addMenu(tr("File(&F)"));
    fileMenu_->setObjectName(QStringLiteral("File1"));
    fileMenu_->addAction(Action(QStringLiteral("FileOpen1")));
    fileMenu_->addAction(Action(QStringLiteral("FileClose1")));
    fileMenu_->addAction(Action(QStringLiteral("FileSave1")));
    QAction* saveAs = fileMenu_->addAction(tr("Save As(&A)..."));
    saveAs->setObjectName(QStringLiteral("FileSaveAsItem"));
    // Menu items whose captions differ from their action's follow its enabled state.
    const auto follow = [](QAction* source, QAction* item) {
        item->setEnabled(source->isEnabled());
        QObject::connect(source, &QAction::changed, item,
                         [source, item] { item->setEnabled(source->isEnabled()); });
        QObject::connect(item, &QAction::triggered, source, &QAction::trigger);
    };
    follow(Action(QStringLiteral("FileSaveAs1")), saveAs);
    QAction* receive = fileMenu_->addAction(ToolIcons::Make(ToolIcons::Receive), tr("Receive(&R)"));
    receive->setObjectName(QStringLiteral("FileReceiveItem"));
    follow(Action(QStringLiteral("FileReceive")), receive);
    fileMenu_->addAction(Action(QStringLiteral("FileOtherReceive")));
    QAction* print = fileMenu_->addAction(ToolIcons::Make(ToolIcons::Print), tr("Print(&P)"));
    print->setObjectName(QStringLiteral("FilePrintItem"));
    follow(Action(QStringLiteral("FilePrint")), print);
    fileMenu_->addAction(Action(QStringLiteral("FilePreview")));
    fileMenu_->addAction(Action(QStringLiteral("FileExport")));
    fileMenu_->addSeparator();
    fileMenu_->addAction(Action(QStringLiteral("FileExit1")));

    QMenu* edit = menuBar()->addMenu(tr("Edit(&E)"));
    edit->addAction(Action(QStringLiteral("EditUndo1")));
    edit->addSeparator();
    edit->addAction(Action(QStringLiteral("EditCut1")));
    edit->addAction(Action(QStringLiteral("EditCopy1")));
    edit->addAction(Action(QStringLiteral("EditPaste1")));
    edit->addAction(Action(QStringLiteral("EditDelete1")));
    edit->addSeparator();
    edit->addAction(Action(QStringLiteral("EditSelectAll1")));
    connect(edit, &QMenu::aboutToShow, this, &TMainForm::UpdateEditActions);

    QMenu* display = menuBar()->addMenu(tr("Display(&D)"));
    QMenu* graph = display->addMenu(tr("Graph(&G)"));
    graph->addAction(Action(QStringLiteral("Graph2D")));
    graph->addAction(Action(QStringLiteral("Graph3D")));
    QMenu* type = display->addMenu(tr("Type(&T)"));
    type->addAction(Action(QStringLiteral("ActionEachCh")));
    type->addAction(Action(QStringLiteral("ActionPairCh")));
    display->addAction(Action(QStringLiteral("ActionDemo")));
    display->addSeparator();
    display->addAction(Action(QStringLiteral("DisplayDecayTimes")));
    display->addSeparator();
    for (const char* name : {"DisplayCompareWith", "DisplayCompareOff", "DisplayDifference",
                             "DisplayAfterMinusBefore"}) {
        display->addAction(Action(QLatin1String(name)));
    }

    windowMenu_ = menuBar()->addMenu(tr("Window(&W)"));
    windowMenu_->addAction(Action(QStringLiteral("WindowCascade1")));
    windowMenu_->addAction(Action(QStringLiteral("WindowTileHorizontal1")));
    windowMenu_->addAction(Action(QStringLiteral("WindowTileVertical1")));
    windowMenu_->addAction(Action(QStringLiteral("WindowMinimizeAll1")));
    windowMenu_->addAction(Action(QStringLiteral("WindowArrangeAll1")));
    windowListSeparator_ = windowMenu_->addSeparator();
    connect(windowMenu_, &QMenu::aboutToShow, this, &TMainForm::UpdateWindowMenu);

    QMenu* help = menuBar()->addMenu(tr("Help(&H)"));
    help->addAction(Action(QStringLiteral("GlossaryG1")));
    help->addAction(Action(QStringLiteral("HelpReceiveLogs")));
    help->addAction(Action(QStringLiteral("HelpAbout1")));
}

void TMainForm::CreateToolBar() {
    toolBar_ = addToolBar(tr("Tools"));
    toolBar_->setObjectName(QStringLiteral("ToolBar1"));
    toolBar_->setMovable(false);
    toolBar_->setIconSize(QSize(24, 24));
    const auto add = [this](std::initializer_list<const char*> names) {
        for (const char* name : names) {
            toolBar_->addAction(Action(QLatin1String(name)));
        }
        toolBar_->addSeparator();
    };
    add({"FileOpen1", "FileSave1", "FileReceive", "FilePrint", "FilePreview", "FileExport"});
    add({"EditCut1", "EditCopy1", "EditPaste1"});
    add({"Graph2D", "Graph3D"});
    for (const char* name : {"WindowCascade1", "WindowTileHorizontal1", "WindowArrangeAll1"}) {
        toolBar_->addAction(Action(QLatin1String(name)));
    }
    auto* spacer = new QWidget(toolBar_);
    spacer->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
    toolBar_->addWidget(spacer);
    auto* logo = new QLabel(toolBar_);
    logo->setObjectName(QStringLiteral("LogoPanel1"));
    logo->setPixmap(BrandArt::Logo(28));
    logo->setToolTip(tr("Veltrona Sonalyx"));
    toolBar_->addWidget(logo);
    logoGap_ = new QWidget(toolBar_);
    logoGap_->setObjectName(QStringLiteral("LogoPanel2"));
    logoGap_->setFixedWidth(kLogoGap);
    toolBar_->addWidget(logoGap_);
}

void TMainForm::CreateStatusBar() {
    statusModified_ = new QLabel(this);
    statusModified_->setObjectName(QStringLiteral("StatusModified"));
    statusModified_->setMinimumWidth(70);
    statusDocuments_ = new QLabel(this);
    statusDocuments_->setObjectName(QStringLiteral("StatusDocuments"));
    statusBar()->addPermanentWidget(statusModified_);
    statusBar()->addPermanentWidget(statusDocuments_);
    UpdateStatus();
}

void TMainForm::CreateHistoryItems() {
    historySeparator_ = fileMenu_->addSeparator();
    historySeparator_->setVisible(false);
    for (int i = 0; i < FileHistory::kMaxEntries; ++i) {
        auto* item = new QAction(this);
        item->setObjectName(QStringLiteral("HistoryItem%1").arg(i));
        item->setVisible(false);
        connect(item, &QAction::triggered, this, [this, i] { HistoryItemClick(i); });
        fileMenu_->addAction(item);
        historyItems_.append(item);
    }
}

void TMainForm::RebuildHistoryMenu() {
    const QStringList& entries = history_.Entries();
    historySeparator_->setVisible(!entries.isEmpty());
    for (int i = 0; i < historyItems_.size(); ++i) {
        QAction* item = historyItems_.at(i);
        const bool used = i < entries.size();
        item->setVisible(used);
        item->setText(used ? escapeMnemonics(entries.at(i)) : QString());
        item->setData(used ? entries.at(i) : QString());
        item->setStatusTip(used ? tr("Open %1").arg(entries.at(i)) : QString());
    }
}

void TMainForm::AddToHistory(const QString& path) {
    if (history_.Add(path)) {
        RebuildHistoryMenu();
    }
}

void TMainForm::ShowMessage(const QString& text, const QString& secondLine, int mode) {
    messenger_.show(text.toStdString(), secondLine.toStdString(),
                    static_cast<sonalyx::MessageMode>(mode));
}

bool TMainForm::AtDocumentLimit() const {
    return DocumentWindows().size() >= kMaxDocuments;
}

QList<TMDIChild*> TMainForm::DocumentWindows() const {
    QList<TMDIChild*> windows;
    // Front-most first: the order in which the frame asks its documents.
    const auto list = mdiArea_->subWindowList(QMdiArea::StackingOrder);
    for (auto it = list.rbegin(); it != list.rend(); ++it) {
        auto* child = qobject_cast<TMDIChild*>(*it);
        if (child != nullptr && !child->isHidden()) {
            windows.append(child);
        }
    }
    return windows;
}

TMDIChild* TMainForm::ActiveDocument() const {
    auto* active = qobject_cast<TMDIChild*>(mdiArea_->activeSubWindow());
    if (active == nullptr) {
        const auto windows = DocumentWindows();
        return windows.isEmpty() ? nullptr : windows.constFirst();
    }
    return active;
}

TMDIChild* TMainForm::CreateDocumentWindow(const QString& caption) {
    auto* child = new TMDIChild(caption, messenger_, fileDialogs_);
    child->setWindowIcon(windowIcon());
    mdiArea_->addSubWindow(child);
    connect(child, &TMDIChild::SavedAs, this, &TMainForm::AddToHistory);
    connect(child, &TMDIChild::ModifiedChanged, this, &TMainForm::UpdateStatus);
    // What the cursor reads off a chart goes to the status bar; leaving the plot restores it.
    for (auto* chart : child->findChildren<sonalyx::chart::ChartWidget*>()) {
        connect(chart, &sonalyx::chart::ChartWidget::readoutChanged, this, &TMainForm::ShowReadout);
    }
    connect(child, &QObject::destroyed, this, [this] {
        UpdateDocumentActions();
        UpdateStatus();
    });
    child->show();
    UpdateDocumentActions();
    return child;
}

void TMainForm::DiscardDocumentWindow(TMDIChild* child) {
    child->hide();
    mdiArea_->removeSubWindow(child);
    child->deleteLater();
    UpdateDocumentActions();
    UpdateStatus();
}

bool TMainForm::OpenDocumentFile(const QString& path) {
    TMDIChild* child = CreateDocumentWindow(path);
    auto lines = sonalyx::readDocumentLines(path.toStdString());
    if (!lines) {
        DiscardDocumentWindow(child);
        ShowMessage(tr("Can't read the file. Please close, if it's opened."), path, 0);
        return false;
    }
    fileLines_ = std::move(*lines);
    if (!child->LoadDocument(fileLines_, path)) {
        DiscardDocumentWindow(child);
        return false;
    }
    if (!graph3D_) {
        child->SetGraph3D(false);
    }
    AddToHistory(path);
    UpdateStatus();
    return true;
}

void TMainForm::OpenDocumentFiles(const QStringList& paths) {
    for (const QString& given : paths) {
        if (AtDocumentLimit()) {
            ShowMessage(tr("No more window."), QString(), 2);
            return;
        }
        const QFileInfo info(given);
        if (!info.exists()) {
            ShowMessage(tr("The file is not exist."), info.absoluteFilePath(), 0);
            continue;
        }
        OpenDocumentFile(info.absoluteFilePath());
    }
}

TMDIChild* TMainForm::OpenReceivedLines(const std::vector<std::string>& lines) {
    if (AtDocumentLimit()) {
        ShowMessage(tr("No more window."), QString(), 2);
        return nullptr;
    }
    TMDIChild* child = CreateDocumentWindow(kNewData);
    if (!child->LoadDocument(lines, kNewData)) {
        DiscardDocumentWindow(child);
        return nullptr;
    }
    if (!graph3D_) {
        child->SetGraph3D(false);
    }
    UpdateStatus();
    return child;
}

void TMainForm::FileOpen1Execute() {
    if (AtDocumentLimit()) {
        ShowMessage(tr("No more window."), QString(), 2);
        return;
    }
    const QString path = fileDialogs_.chooseOpenFile();
    if (path.isEmpty() || !QFileInfo::exists(path)) {
        return;
    }
    OpenDocumentFile(path);
}

void TMainForm::HistoryItemClick(int index) {
    if (index >= history_.Entries().size()) {
        return;
    }
    const QString path = history_.Entries().at(index);
    if (AtDocumentLimit()) {
        ShowMessage(tr("No more window."), QString(), 2);
        return;
    }
    if (!QFileInfo::exists(path)) {
        ShowMessage(tr("The file is not exist."), path, 0);
        return;
    }
    OpenDocumentFile(path);
}

void TMainForm::FileSave1Execute() {
    TMDIChild* child = ActiveDocument();
    if (child == nullptr) {
        return;
    }
    if (child->windowTitle() == kNewData) {
        if (child->SaveAs()) {
            AddToHistory(child->FileName());
        }
        return;
    }
    child->Save();
}

void TMainForm::FileSaveAs1Execute() {
    TMDIChild* child = ActiveDocument();
    if (child != nullptr && child->SaveAs()) {
        AddToHistory(child->FileName());
    }
}

void TMainForm::FileReceiveExecute() {
    if (AtDocumentLimit()) {
        ShowMessage(tr("No more window."), QString(), 2);
        return;
    }
    sonalyx::ReceiveOptions options;
    if (AskReceiveOptions(options)) {
        StartReceive(options);
    }
}

void TMainForm::FileOtherReceiveExecute() {
    // Parameters only: the dialog's kind selections do not apply, nor the window limit.
    sonalyx::ReceiveOptions options;
    if (AskReceiveOptions(options)) {
        options.parametersOnly = true;
        StartReceive(options);
    }
}

bool TMainForm::AskReceiveOptions(sonalyx::ReceiveOptions& options) {
    StopDemo();
    sonalyx::TFormPort dialog(sonalyx::offeredPorts(options_.ports), this);
    if (dialog.exec() != QDialog::Accepted) {
        return false;
    }
    options.portName = dialog.PortName().toStdString();
    options.reverb = dialog.ReceiveReverb();
    options.groupDelay = dialog.ReceiveGroupDelay();
    options.parameters = dialog.ReceiveTORVEPara();
    options.tickMs = options_.receiveTickMs;
    return options.reverb || options.groupDelay || options.parameters;
}

void TMainForm::StartReceive(const sonalyx::ReceiveOptions& options) {
    auto* session = new sonalyx::ReceiveSession(messenger_, this);
    receive_ = session;
    SetReceiveActionsEnabled(false);
    session->setEndHandler([this](const sonalyx::ReceiveResult& result) { ReceiveEnded(result); });
    if (!session->start(options)) {
        // The port did not open; the link has already said so.
        receive_ = nullptr;
        delete session;
        SetReceiveActionsEnabled(true);
    }
}

void TMainForm::ReceiveEnded(const sonalyx::ReceiveResult& result) {
    // Called from inside the engine: the session may only go once control is back.
    if (receive_ != nullptr) {
        receive_->deleteLater();
        receive_ = nullptr;
    }
    SetReceiveActionsEnabled(true);
    if (!result.success || result.lines.empty()) {
        return;
    }
    std::vector<std::string> lines = result.lines;
    const QDateTime now = QDateTime::currentDateTime();
    sonalyx::stampDate(
        lines, sonalyx::formatDateStamp(now.date().year(), now.date().month(), now.date().day(),
                                        now.time().hour(), now.time().minute()));
    OpenReceivedLines(lines);
}

void TMainForm::SetReceiveActionsEnabled(bool enabled) {
    Action(QStringLiteral("ActionDemo"))->setEnabled(enabled && !DocumentWindows().isEmpty());
    Action(QStringLiteral("FileReceive"))->setEnabled(enabled);
    Action(QStringLiteral("FileOtherReceive"))->setEnabled(enabled);
}

void TMainForm::FilePrintExecute() {
    StopDemo();
    print_->Run(ActiveDocument(), false);
}

void TMainForm::FilePreviewExecute() {
    StopDemo();
    print_->Run(ActiveDocument(), true);
}

void TMainForm::FileExportExecute() {
    // The picture is the view the user saw when asking, not a later step of the demonstration.
    StopDemo();
    if (TMDIChild* child = ActiveDocument()) {
        export_.Run(*child, *settings_);
    }
}

void TMainForm::FileExit1Execute() {
    close();
}

void TMainForm::WindowCascade1Execute() {
    mdiArea_->cascadeSubWindows();
}

void TMainForm::WindowTileHorizontal1Execute() {
    const auto windows = DocumentWindows();
    if (windows.isEmpty()) {
        return;
    }
    const QRect area = mdiArea_->viewport()->rect();
    const int height = area.height() / windows.size();
    int top = 0;
    // Creation order reads top to bottom, as the documents were opened.
    for (QMdiSubWindow* window : mdiArea_->subWindowList(QMdiArea::CreationOrder)) {
        if (!windows.contains(qobject_cast<TMDIChild*>(window))) {
            continue;
        }
        window->showNormal();
        window->setGeometry(0, top, area.width(), height);
        top += height;
    }
}

void TMainForm::WindowTileVertical1Execute() {
    const auto windows = DocumentWindows();
    if (windows.isEmpty()) {
        return;
    }
    const QRect area = mdiArea_->viewport()->rect();
    const int width = area.width() / windows.size();
    int left = 0;
    for (QMdiSubWindow* window : mdiArea_->subWindowList(QMdiArea::CreationOrder)) {
        if (!windows.contains(qobject_cast<TMDIChild*>(window))) {
            continue;
        }
        window->showNormal();
        window->setGeometry(left, 0, width, area.height());
        left += width;
    }
}

void TMainForm::WindowMinimizeAll1Execute() {
    for (TMDIChild* child : DocumentWindows()) {
        child->showMinimized();
    }
}

void TMainForm::WindowArrangeAll1Execute() {
    // Minimised windows line up along the bottom edge, left to right, row above row.
    const QRect area = mdiArea_->viewport()->rect();
    int left = 0;
    int bottom = area.height();
    for (QMdiSubWindow* window : mdiArea_->subWindowList(QMdiArea::CreationOrder)) {
        if (!window->isMinimized() || window->isHidden()) {
            continue;
        }
        const QSize size = window->size();
        if (left > 0 && left + size.width() > area.width()) {
            left = 0;
            bottom -= size.height();
        }
        window->move(left, bottom - size.height());
        left += size.width();
    }
}

void TMainForm::HelpAbout1Execute() {
    TAboutBox box(this);
    box.exec();
}

void TMainForm::HelpReceiveLogsExecute() {
    // The folder exists before the first receive, so the file manager never shows an error.
    sonalyx::ReceiveLogFolder::make();
    QDesktopServices::openUrl(QUrl::fromLocalFile(sonalyx::ReceiveLogFolder::path()));
}

void TMainForm::GlossaryG1Click() {
    if (glossary_ == nullptr) {
        glossary_ = new TGlossary(this);
    }
    glossary_->show();
    glossary_->raise();
    glossary_->activateWindow();
}

void TMainForm::Graph2DExecute() {
    graph3D_ = false;
    for (TMDIChild* child : DocumentWindows()) {
        child->SetGraph3D(false);
    }
    UpdateDocumentActions();
}

void TMainForm::Graph3DExecute() {
    graph3D_ = true;
    for (TMDIChild* child : DocumentWindows()) {
        child->SetGraph3D(true);
    }
    UpdateDocumentActions();
}

void TMainForm::EachChExecute() {
    if (TMDIChild* child = ActiveDocument()) {
        child->SetPairMode(0);
    }
}

void TMainForm::PairChExecute() {
    if (TMDIChild* child = ActiveDocument()) {
        child->SetPairMode(1);
    }
}

void TMainForm::DecayTimesExecute() {
    TMDIChild* child = ActiveDocument();
    if (child == nullptr) {
        return;
    }
    TFormDecayTimes form(child->Document(), child->PairMode(), messenger_, this);
    if (child->Reference() != nullptr) {
        form.SetReference(child->Reference(), child->ReferenceTitle());
    }
    form.exec();
}

void TMainForm::DemoExecute(bool on) {
    if (on) {
        timerTag_ = kTagDemo;
        timer1_->start(100);
    } else if (timerTag_ == kTagDemo) {
        timer1_->stop();
        timerTag_ = kStepIdle;
    }
}

void TMainForm::StopDemo() {
    QAction* demo = Action(QStringLiteral("ActionDemo"));
    if (demo->isChecked()) {
        demo->setChecked(false);
    }
}

void TMainForm::Timer1Timer() {
    if (timerTag_ == kTagDemo) {
        if (TMDIChild* child = ActiveDocument()) {
            child->DemoRotateStep();
        }
        return;
    }
    if (startStep_ < kStepIdle) {
        RunStartStep();
    }
}

void TMainForm::RunStartStep() {
    const int splashStep = std::max(1, options_.splashMilliseconds / kStepSplashLast);
    if (startStep_ == kStepSplash) {
        if (options_.showSplash) {
            splash_ = new TFormOpenning;
            splash_->show();
            timer1_->setInterval(splashStep);
        }
        startStep_ = 1;
    } else if (startStep_ < kStepSplashLast) {
        ++startStep_;
    } else if (startStep_ == kStepSplashLast) {
        if (splash_ != nullptr) {
            splash_->close();
            delete splash_.data();
        }
        startStep_ = kStepOpen;
        timer1_->setInterval(1);
    } else if (startStep_ == kStepOpen) {
        timer1_->stop();
        FinishStartup();
    }
    timerTag_ = startStep_;
}

void TMainForm::FinishStartup() {
    startStep_ = kStepIdle;
    Action(QStringLiteral("FileOpen1"))->setEnabled(true);
    Action(QStringLiteral("HelpAbout1"))->setEnabled(true);
    SetReceiveActionsEnabled(true);
    // From here on files dropped anywhere on the frame or its windows open as documents.
    qApp->installEventFilter(this);
    dropRegistered_ = true;
    setAcceptDrops(true);
    OpenDocumentFiles(options_.files);
    emit StartupCompleted();
}

void TMainForm::UpdateDocumentActions() {
    const bool any = !DocumentWindows().isEmpty();
    for (const char* name : {"FileSave1", "FileSaveAs1", "FileExport", "ActionEachCh",
                             "ActionPairCh", "DisplayDecayTimes"}) {
        Action(QLatin1String(name))->setEnabled(any);
    }
    // The demonstration shares the window's timer and stays off while a receive runs.
    Action(QStringLiteral("ActionDemo"))->setEnabled(any && !Receiving());
    Action(QStringLiteral("FilePrint"))->setEnabled(any);
    Action(QStringLiteral("FilePreview"))->setEnabled(any);
    // The action of the mode in force is the disabled one.
    Action(QStringLiteral("Graph2D"))->setEnabled(any && graph3D_);
    Action(QStringLiteral("Graph3D"))->setEnabled(any && !graph3D_);
    if (!any) {
        StopDemo();
    }
    if (TMDIChild* child = ActiveDocument()) {
        Action(child->PairMode() == 0 ? QStringLiteral("ActionEachCh")
                                      : QStringLiteral("ActionPairCh"))
            ->setChecked(true);
    }
    if (compare_ != nullptr) {
        compare_->UpdateActions();
    }
}

void TMainForm::UpdateWindowMenu() {
    const auto actions = windowMenu_->actions();
    for (qsizetype i = actions.indexOf(windowListSeparator_) + 1; i < actions.size(); ++i) {
        windowMenu_->removeAction(actions.at(i));
        actions.at(i)->deleteLater();
    }
    const auto windows = mdiArea_->subWindowList(QMdiArea::CreationOrder);
    windowListSeparator_->setVisible(!windows.isEmpty());
    int number = 1;
    for (QMdiSubWindow* window : windows) {
        if (window->isHidden()) {
            continue;
        }
        QAction* item = windowMenu_->addAction(
            QStringLiteral("&%1 %2").arg(number++).arg(escapeMnemonics(window->windowTitle())));
        item->setCheckable(true);
        item->setChecked(window == mdiArea_->activeSubWindow());
        connect(item, &QAction::triggered, this,
                [this, window] { mdiArea_->setActiveSubWindow(window); });
    }
}

void TMainForm::UpdateStatus() {
    const auto windows = DocumentWindows();
    statusDocuments_->setText(tr("Documents: %1 of %2").arg(windows.size()).arg(kMaxDocuments));
    const TMDIChild* child = ActiveDocument();
    statusModified_->setText(child != nullptr && child->IsModified() ? tr("Modified") : QString());
    statusBar()->showMessage(child != nullptr ? child->FileName() : tr("Ready"));
}

void TMainForm::ShowReadout(const QString& text) {
    if (text.isEmpty()) {
        UpdateStatus();
    } else {
        statusBar()->showMessage(text);
    }
}

void TMainForm::TrackEditTarget(QWidget* focused) {
    const bool editor = qobject_cast<QPlainTextEdit*>(focused) != nullptr ||
                        qobject_cast<QLineEdit*>(focused) != nullptr ||
                        qobject_cast<QTextEdit*>(focused) != nullptr;
    if (editor && focused->window() == this) {
        editTarget_ = focused;
    } else if (focused != nullptr && focused->window() == this) {
        editTarget_ = nullptr;
    }
    UpdateEditActions();
}

void TMainForm::UpdateEditActions() {
    bool undo = false;
    bool selection = false;
    bool writable = false;
    if (auto* plain = qobject_cast<QPlainTextEdit*>(editTarget_.data())) {
        undo = plain->document()->isUndoAvailable();
        selection = plain->textCursor().hasSelection();
        writable = !plain->isReadOnly();
    } else if (auto* rich = qobject_cast<QTextEdit*>(editTarget_.data())) {
        undo = rich->document()->isUndoAvailable();
        selection = rich->textCursor().hasSelection();
        writable = !rich->isReadOnly();
    } else if (auto* line = qobject_cast<QLineEdit*>(editTarget_.data())) {
        undo = line->isUndoAvailable();
        selection = line->hasSelectedText();
        writable = !line->isReadOnly();
    }
    Action(QStringLiteral("EditUndo1"))->setEnabled(undo && writable);
    Action(QStringLiteral("EditCut1"))->setEnabled(selection && writable);
    Action(QStringLiteral("EditCopy1"))->setEnabled(selection);
    Action(QStringLiteral("EditDelete1"))->setEnabled(selection && writable);
    Action(QStringLiteral("EditSelectAll1"))->setEnabled(editTarget_ != nullptr);
}

void TMainForm::RunOnEditTarget(const char* slot) {
    if (editTarget_ != nullptr) {
        QMetaObject::invokeMethod(editTarget_.data(), slot);
        UpdateEditActions();
    }
}

void TMainForm::DeleteSelection() {
    if (auto* plain = qobject_cast<QPlainTextEdit*>(editTarget_.data())) {
        plain->textCursor().removeSelectedText();
    } else if (auto* line = qobject_cast<QLineEdit*>(editTarget_.data())) {
        line->del();
    }
    UpdateEditActions();
}

bool TMainForm::DropCarriesFiles(const QEvent* event) const {
    const auto* drop = static_cast<const QDropEvent*>(event);
    const QMimeData* data = drop->mimeData();
    if (data == nullptr || !data->hasUrls()) {
        return false;
    }
    const auto urls = data->urls();
    return std::any_of(urls.begin(), urls.end(), [](const QUrl& url) { return url.isLocalFile(); });
}

void TMainForm::OpenDroppedFiles(const QEvent* event) {
    const auto* drop = static_cast<const QDropEvent*>(event);
    QStringList paths;
    for (const QUrl& url : drop->mimeData()->urls()) {
        if (url.isLocalFile()) {
            paths.append(url.toLocalFile());
        }
    }
    // Let the drop finish before any message box comes up.
    QTimer::singleShot(0, this, [this, paths] { OpenDocumentFiles(paths); });
}

bool TMainForm::eventFilter(QObject* watched, QEvent* event) {
    const QEvent::Type type = event->type();
    if (dropRegistered_ &&
        (type == QEvent::DragEnter || type == QEvent::DragMove || type == QEvent::Drop)) {
        auto* widget = qobject_cast<QWidget*>(watched);
        if (widget != nullptr && widget->window() == this && DropCarriesFiles(event)) {
            auto* drop = static_cast<QDropEvent*>(event);
            drop->setDropAction(Qt::CopyAction);
            drop->accept();
            if (type == QEvent::Drop) {
                OpenDroppedFiles(event);
            }
            return true;
        }
    }
    return QMainWindow::eventFilter(watched, event);
}

void TMainForm::closeEvent(QCloseEvent* event) {
    bool mayClose = true;
    for (TMDIChild* child : DocumentWindows()) {
        if (!child->close()) {
            mayClose = false;
            break;
        }
    }
    history_.SaveIfChanged(*settings_);
    if (!mayClose) {
        event->ignore();
        return;
    }
    StopDemo();
    if (glossary_ != nullptr) {
        glossary_->close();
    }
    event->accept();
}
