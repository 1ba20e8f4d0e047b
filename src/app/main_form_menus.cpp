#include "app/main_form.h"

#include <QAction>
#include <QActionGroup>
#include <QLabel>
#include <QMdiArea>
#include <QMenuBar>
#include <QRegularExpression>
#include <QStatusBar>
#include <QToolBar>

#include "app/brand_art.h"
#include "app/compare_commands.h"
#include "app/tool_icons.h"
#include "views/window/mdi_child.h"

// The frame's actions, menus, tool bar and status bar, and keeping their states current.

namespace {

constexpr int kLogoGap = 8;

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
    connect(MakeAction(QStringLiteral("FileClose1"), tr("Close(&C)"), "Ctrl+W", true),
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
    bind(MakeAction(QStringLiteral("FileReport"), tr("Report(&T)..."), nullptr, false),
         &TMainForm::FileReportExecute);
    bind(MakeAction(QStringLiteral("FileExit1"), tr("Exit(&X)"), "Ctrl+Q", true),
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
    bind(MakeAction(QStringLiteral("GlossaryG1"), tr("Glossary(&G)"), "F1", true),
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
    bind(MakeAction(QStringLiteral("DisplayFitToData"), tr("Fit to Data(&F)"), "F", false),
         &TMainForm::FitToDataExecute)
        ->setIcon(ToolIcons::Make(ToolIcons::Fit));
}

void TMainForm::CreateMenus() {
    fileMenu_ = menuBar()->addMenu(tr("File(&F)"));
    fileMenu_->setObjectName(QStringLiteral("File1"));
    fileMenu_->addAction(Action(QStringLiteral("FileOpen1")));
    fileMenu_->addAction(Action(QStringLiteral("FileClose1")));
    fileMenu_->addAction(Action(QStringLiteral("FileSave1")));
    QAction* saveAs = fileMenu_->addAction(tr("Save As(&A)..."));
    saveAs->setObjectName(QStringLiteral("FileSaveAsItem"));
    saveAs->setShortcut(QKeySequence(QStringLiteral("Ctrl+Shift+S")));
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
    print->setShortcut(QKeySequence(QStringLiteral("Ctrl+P")));
    follow(Action(QStringLiteral("FilePrint")), print);
    fileMenu_->addAction(Action(QStringLiteral("FilePreview")));
    fileMenu_->addAction(Action(QStringLiteral("FileExport")));
    fileMenu_->addAction(Action(QStringLiteral("FileReport")));
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
    display->addAction(Action(QStringLiteral("DisplayFitToData")));
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
    QAction* about = help->addAction(tr("Version Info(&A)..."));
    about->setObjectName(QStringLiteral("HelpAboutItem"));
    follow(Action(QStringLiteral("HelpAbout1")), about);
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
    add({"Graph2D", "Graph3D", "DisplayFitToData"});
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

void TMainForm::UpdateDocumentActions() {
    const bool any = !DocumentWindows().isEmpty();
    for (const char* name : {"FileSave1", "FileSaveAs1", "FileExport", "FileReport", "ActionEachCh",
                             "ActionPairCh", "DisplayDecayTimes", "DisplayFitToData"}) {
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
