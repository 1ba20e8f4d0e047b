#include "views/window/mdi_child.h"

#include <QButtonGroup>
#include <QCloseEvent>
#include <QComboBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>
#include <algorithm>
#include <array>
#include <cmath>

#include "document/document_loader.h"
#include "document/speaker_layout.h"
#include "views/chart/chart_widget.h"
#include "views/group_delay/group_delay_view.h"
#include "views/parameters/parameters_view.h"
#include "views/reverb/reverb_view.h"
#include "views/window/memo_codec.h"
#include "views/window/panel_button.h"
#include "views/window/step_button.h"

using sonalyx::MemoCodec;
using sonalyx::Step;
using sonalyx::Track;

namespace {

const char* const kSectionMemoNames[3] = {"MemoFile1", "MemoFile2", "MemoFile3"};

QString fromBytes(const std::string& bytes) {
    return MemoCodec::decodeLine(bytes);
}

}  // namespace

TMDIChild::TMDIChild(const QString& caption, sonalyx::Messenger& messenger,
                     sonalyx::FileChooser& chooser, QWidget* parent)
    : QMdiSubWindow(parent), messenger_(messenger), saver_(messenger, chooser) {
    setObjectName(QStringLiteral("MDIChild"));
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(caption);
    document_.fileName = caption.toStdString();

    content_ = new QWidget(this);
    pageControl_ = new QTabWidget(content_);
    pageControl_->setObjectName(QStringLiteral("PageControl1"));
    pageControl_->addTab(BuildReverbTab(), tr("Reverb"));
    pageControl_->addTab(BuildGroupDelayTab(), tr("Group Delay"));
    pageControl_->addTab(BuildParametersTab(), tr("Parameters"));
    pageControl_->widget(kReverbTab)->setObjectName(QStringLiteral("TabSheet1"));
    pageControl_->widget(kGroupDelayTab)->setObjectName(QStringLiteral("TabSheet2"));
    pageControl_->widget(kParametersTab)->setObjectName(QStringLiteral("TabSheet3"));
    auto* layout = new QHBoxLayout(content_);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(pageControl_, 1);
    BuildPanel1();
    layout->addWidget(panel1_);
    setWidget(content_);
    content_->hide();
    content_->setFocusPolicy(Qt::StrongFocus);

    timer1_ = new QTimer(this);
    timer1_->setObjectName(QStringLiteral("Timer1"));
    connect(timer1_, &QTimer::timeout, this, &TMDIChild::Timer1Timer);
    ConnectControls();
    connect(pageControl_, &QTabWidget::currentChanged, this, &TMDIChild::OnChangeTab);
    resize(980, 620);
    // The charts start from the trackbars' design positions.
    S_Elevation();
    S_Rotation();
    S_Zoom();
    S_Move();
    OnChangeTab();
}

TMDIChild::~TMDIChild() = default;

QPlainTextEdit* TMDIChild::BuildFileMemo(sonalyx::Section section, QWidget* parent) {
    auto* memo = new QPlainTextEdit(parent);
    memo->setObjectName(QLatin1String(kSectionMemoNames[section]));
    memo->setPlaceholderText(tr("File memo: notes about this measurement (up to 20 lines)"));
    memo->setToolTip(tr("File memo of this section, saved with the document"));
    memo->setTabChangesFocus(true);
    memo->setFixedHeight(52);
    connect(memo, &QPlainTextEdit::textChanged, this, [this, memo, section] {
        if (memo->property("filling").toBool()) {
            return;
        }
        MemoEdited(document_.fileMemos[section], memo->toPlainText());
    });
    fileMemos_[section] = memo;
    return memo;
}

QLabel* TMDIChild::BuildNoDataLabel(QWidget* parent) {
    auto* label = new QLabel(tr("No Data"), parent);
    label->setObjectName(QStringLiteral("LabelNoData"));
    label->setAlignment(Qt::AlignCenter);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * 1.8);
    font.setBold(true);
    label->setFont(font);
    label->setStyleSheet(QStringLiteral("color:#7d838e;"));
    return label;
}

QWidget* TMDIChild::BuildReverbTab() {
    auto* tab = new QWidget;
    auto* layout = new QVBoxLayout(tab);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(BuildFileMemo(sonalyx::kReverbSection, tab));
    reverbView_ = new sonalyx::ReverbView(document_, tab);
    connect(reverbView_, &sonalyx::ReverbView::MemoEdited, this, &TMDIChild::MarkModified);
    layout->addWidget(reverbView_, 1);
    return tab;
}

QWidget* TMDIChild::BuildGroupDelayTab() {
    auto* tab = new QWidget;
    auto* layout = new QVBoxLayout(tab);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(BuildFileMemo(sonalyx::kGroupDelaySection, tab));

    groupDelayView_ = new sonalyx::GroupDelayView(document_, tab);
    connect(groupDelayView_, &sonalyx::GroupDelayView::Resized, this, [this] {
        // The frequency labels depend on the window's width.
        if (pageControl_->currentIndex() == kGroupDelayTab) {
            RebuildCharts(false);
        }
    });

    auto* pages = new QStackedWidget(tab);
    pages->setObjectName(QStringLiteral("SectionPages"));
    pages->addWidget(groupDelayView_);
    pages->addWidget(BuildNoDataLabel(tab));
    sectionPages_[sonalyx::kGroupDelaySection] = pages;
    layout->addWidget(pages, 1);
    return tab;
}

QWidget* TMDIChild::BuildParametersTab() {
    auto* tab = new QWidget;
    auto* layout = new QVBoxLayout(tab);
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(BuildFileMemo(sonalyx::kParametersSection, tab));

    parametersView_ = new ParametersView(tab);
    parametersView_->SetDocument(&document_);

    auto* pages = new QStackedWidget(tab);
    pages->setObjectName(QStringLiteral("SectionPages"));
    pages->addWidget(parametersView_);
    pages->addWidget(BuildNoDataLabel(tab));
    sectionPages_[sonalyx::kParametersSection] = pages;
    layout->addWidget(pages, 1);
    return tab;
}

void TMDIChild::BuildPanel1() {
    panel1_ = new sonalyx::ViewControls(content_);
}

QString TMDIChild::FileName() const {
    return QString::fromStdString(document_.fileName);
}

bool TMDIChild::LoadDocument(const std::vector<std::string>& lines, const QString& fileName) {
    content_->hide();
    if (!sonalyx::DocumentLoader::load(document_, lines, fileName.toStdString(), &messenger_)) {
        return false;
    }
    setWindowTitle(fileName);
    ShowDocument();
    return true;
}

void TMDIChild::ShowDocument() {
    FillFileMemos();
    // The Reverb tab says "No Data" itself, from the reverb values.
    for (int s = sonalyx::kGroupDelaySection; s < 3; ++s) {
        sectionPages_[s]->setCurrentIndex(document_.sectionLoaded[s] ? 0 : 1);
    }
    groupDelayAxis_ =
        sonalyx::GroupDelayAxis::FromSpan(static_cast<float>(document_.groupDelay.span));
    tabPositions_[kGroupDelayTab][static_cast<int>(Track::Move)] = -1;
    groupDelayChannel_ = 0;
    FillGroupDelay();
    FillParameters();
    panel1_->PanelTimeSlice()->show();
    RefreshSelectors();
    UpdateSummary();
    content_->show();
    ApplyTabPositions();
    RebuildCharts(false);
    if (pageControl_->currentIndex() == kGroupDelayTab) {
        S_Zoom();
        S_Move();
    }
    emit ModifiedChanged(document_.modified);
}

void TMDIChild::FillFileMemos() {
    for (int s = 0; s < 3; ++s) {
        fileMemos_[s]->setProperty("filling", true);
        fileMemos_[s]->setPlainText(MemoCodec::decode(document_.fileMemos[s]));
        fileMemos_[s]->setProperty("filling", false);
    }
}

void TMDIChild::FillGroupDelay() {
    if (!groupDelayView_->FillTable() && document_.sectionLoaded[sonalyx::kGroupDelaySection]) {
        sectionPages_[sonalyx::kGroupDelaySection]->setCurrentIndex(1);
    }
}

void TMDIChild::FillParameters() {
    const bool any = sonalyx::hasParameterRows(document_.parameterLines);
    sectionPages_[sonalyx::kParametersSection]->setCurrentIndex(any ? 0 : 1);
}

void TMDIChild::UpdateSummary() {
    QString eq = QString::fromStdString(document_.reverbTypeLabel);
    eq.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    panel1_->Summary()->setText(tr("%1\n%2 channels, %3 bands, %4")
                                    .arg(fromBytes(document_.date))
                                    .arg(document_.channelCount)
                                    .arg(document_.bandCount)
                                    .arg(eq));
}

void TMDIChild::RebuildCharts(bool maximise) {
    if (maximise && selectedChannel_ == 0) {
        showMaximized();
    }
    if (pageControl_->currentIndex() == kReverbTab) {
        reverbView_->RebuildCharts(Selection(), selectedChannel_);
        const sonalyx::ReverbFiller filler(document_, Selection());
        panel1_->SetLegend(filler.LegendCaptions(), reverbView_->LegendSwatches());
    } else if (pageControl_->currentIndex() == kGroupDelayTab) {
        const auto selection = GroupDelaySelectionNow();
        groupDelayView_->RebuildCharts(selection);
        panel1_->SetLegend(sonalyx::GroupDelayFiller(document_, selection).LegendCaptions(),
                           groupDelayView_->LegendSwatches());
    }
    if (pageControl_->currentIndex() == kParametersTab) {
        parametersView_->SetMemory(selectedMemory_);
    }
}

void TMDIChild::MemoEdited(std::vector<std::string>& memo, const QString& text) {
    memo = MemoCodec::store(text, sonalyx::kMaxMemoLines, memo);
    MarkModified();
}

void TMDIChild::MarkModified() {
    if (!document_.modified) {
        document_.modified = true;
        emit ModifiedChanged(true);
    }
}

void TMDIChild::StoreMemos() {
    for (int s = 0; s < 3; ++s) {
        const auto lines = MemoCodec::store(fileMemos_[s]->toPlainText(), sonalyx::kMaxMemoLines,
                                            document_.fileMemos[s]);
        if (lines != document_.fileMemos[s]) {
            document_.fileMemos[s] = lines;
            MarkModified();
        }
    }
}

bool TMDIChild::Save() {
    StoreMemos();
    if (!saver_.save(document_)) {
        return false;
    }
    emit ModifiedChanged(false);
    return true;
}

bool TMDIChild::SaveAs() {
    StoreMemos();
    if (!saver_.saveAs(document_)) {
        return false;
    }
    setWindowTitle(FileName());
    emit ModifiedChanged(false);
    return true;
}

bool TMDIChild::CloseQuery() {
    StoreMemos();
    const auto decision = saver_.closeQuery(document_);
    if (decision.savedAsPath) {
        setWindowTitle(FileName());
        emit SavedAs(QString::fromStdString(*decision.savedAsPath));
    }
    return decision.mayClose;
}

void TMDIChild::closeEvent(QCloseEvent* event) {
    if (!CloseQuery()) {
        event->ignore();
        return;
    }
    QMdiSubWindow::closeEvent(event);
}

void TMDIChild::SetPrintAppearance(bool on) {
    printAppearance_ = on;
    reverbView_->SetPaperLook(on);
    panel1_->SetPaperLook(on);
    for (int i = 0; i < sonalyx::ReverbView::kCharts; ++i) {
        reverbView_->Chart(i)->setAppearance({on});
    }
    groupDelayView_->Chart101()->setAppearance({on});
}
