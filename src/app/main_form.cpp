#include "app/main_form.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QDateTime>
#include <QDesktopServices>
#include <QFileInfo>
#include <QLabel>
#include <QMdiArea>
#include <QScreen>
#include <QSettings>
#include <QStatusBar>
#include <QTimer>

#include "app/about_box.h"
#include "app/brand_art.h"
#include "app/compare_commands.h"
#include "app/form_openning.h"
#include "app/glossary.h"
#include "app/receive_log_folder.h"
#include "app/receive_session.h"
#include "document/document_file.h"
#include "link/form_port.h"
#include "link/port_list.h"
#include "platform/path_text.h"
#include "print/print_command.h"
#include "print/print_environment.h"
#include "retrieval/date_stamp.h"
#include "views/chart/chart_widget.h"
#include "views/decay/form_decay_times.h"
#include "views/window/mdi_child.h"

namespace {

const QString kNewData = QStringLiteral("New Data");
// Beside the file history: the port of the last receive that went through, offered first,
// and where the frame was left.
const QString kLastPortKey = QStringLiteral("RECEIVE/LASTPORT");
const QString kGeometryKey = QStringLiteral("MAINFORM/GEOMETRY");
const QSize kDesignSize(1280, 820);

}  // namespace

TMainForm::TMainForm(MainFormOptions options, QWidget* parent)
    : QMainWindow(parent),
      options_(std::move(options)),
      settings_(options_.settings),
      messenger_(this),
      fileDialogs_(this),
      export_(this, messenger_),
      report_(this, messenger_) {
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
    PlaceOnScreen();
}

void TMainForm::PlaceOnScreen() {
    if (restoreGeometry(settings_->value(kGeometryKey).toByteArray())) {
        return;
    }
    // The design size where the screen has room for it, with the frame and a margin around.
    const QScreen* shownOn = screen();
    if (shownOn == nullptr) {
        resize(kDesignSize);
        return;
    }
    const QRect area = shownOn->availableGeometry();
    resize(kDesignSize.boundedTo(area.size() * 0.9));
    move(area.center() - rect().center());
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
    auto lines = sonalyx::readDocumentLines(sonalyx::platform::pathFromUtf8(path.toStdString()));
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
    sonalyx::ReceiveOptions options;
    if (AskReceiveOptions(options)) {
        StartReceive(options);
    }
}

void TMainForm::FileOtherReceiveExecute() {
    // Parameters only: the dialog's kind selections do not apply.
    sonalyx::ReceiveOptions options;
    if (AskReceiveOptions(options)) {
        options.parametersOnly = true;
        StartReceive(options);
    }
}

bool TMainForm::AskReceiveOptions(sonalyx::ReceiveOptions& options) {
    // Checked before anything is fetched: a result with no window to go to would be lost.
    if (AtDocumentLimit()) {
        ShowMessage(tr("No more window."), QString(), 2);
        return false;
    }
    StopDemo();
    sonalyx::TFormPort dialog(
        sonalyx::offeredPorts(options_.ports, settings_->value(kLastPortKey).toString(),
                              sonalyx::systemPorts()),
        this);
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
    session->setEndHandler(
        [this, port = QString::fromStdString(options.portName)](
            const sonalyx::ReceiveResult& result) { ReceiveEnded(result, port); });
    if (!session->start(options)) {
        // The port did not open; the link has already said so.
        receive_ = nullptr;
        delete session;
        SetReceiveActionsEnabled(true);
    }
}

void TMainForm::ReceiveEnded(const sonalyx::ReceiveResult& result, const QString& port) {
    // Called from inside the engine: the session may only go once control is back.
    if (receive_ != nullptr) {
        receive_->deleteLater();
        receive_ = nullptr;
    }
    SetReceiveActionsEnabled(true);
    if (!result.success || result.lines.empty()) {
        return;
    }
    settings_->setValue(kLastPortKey, port);
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

void TMainForm::FileReportExecute() {
    StopDemo();
    if (TMDIChild* child = ActiveDocument()) {
        report_.Run(*child, *settings_);
    }
}

void TMainForm::FileExit1Execute() {
    close();
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

void TMainForm::FitToDataExecute() {
    if (TMDIChild* child = ActiveDocument()) {
        child->FitToData();
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
    settings_->setValue(kGeometryKey, saveGeometry());
    event->accept();
}
