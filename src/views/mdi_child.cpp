#include "views/mdi_child.h"

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
#include "document/parameter_rows.h"
#include "document/speaker_layout.h"
#include "views/chart/chart_widget.h"
#include "views/curve_preview.h"
#include "views/memo_codec.h"
#include "views/panel_button.h"
#include "views/reverb_view.h"
#include "views/step_button.h"

using sonalyx::CurvePreview;
using sonalyx::MemoCodec;
using sonalyx::Step;
using sonalyx::Track;

namespace {

// Group delay curves, one colour per channel group.
constexpr std::array<QRgb, 7> kGroupColours = {
    qRgb(248, 160, 40),  qRgb(0, 216, 112),  qRgb(80, 144, 248), qRgb(232, 72, 8),
    qRgb(204, 102, 255), qRgb(192, 216, 56), qRgb(0, 200, 220)};

// Upper edges of the 64 group delay bands, in Hz.
constexpr std::array<int, sonalyx::kGroupDelayBands> kGroupDelayFrequencies = {
    200,  215,  231,   249,   268,   288,   310,   334,   359,   386,   415,   447,  481,
    517,  557,  599,   644,   693,   746,   802,   863,   928,   999,   1074,  1156, 1244,
    1338, 1439, 1549,  1666,  1792,  1928,  2074,  2232,  2401,  2583,  2779,  2990, 3216,
    3460, 3723, 4005,  4309,  4636,  4987,  5365,  5772,  6210,  6681,  7188,  7733, 8319,
    8950, 9629, 10359, 11145, 11990, 12899, 13877, 14930, 16062, 17280, 18590, 20000};

const char* const kSectionMemoNames[3] = {"MemoFile1", "MemoFile2", "MemoFile3"};

QString fromBytes(const std::string& bytes) {
    return MemoCodec::decodeLine(bytes);
}

QLabel* caption(const QString& text, QWidget* parent) {
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

QString groupNameAt(const sonalyx::MeasurementDocument& doc, int g) {
    return QString::fromUtf8(sonalyx::groupName(doc.groupIdAt(g)));
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

    auto* page = new QWidget(tab);
    auto* pageLayout = new QVBoxLayout(page);
    pageLayout->setContentsMargins(0, 0, 0, 0);
    auto* plots = new QHBoxLayout;
    const char* titles[2] = {"Before calibration", "After calibration"};
    for (int v = 0; v < sonalyx::kVariants; ++v) {
        auto* box = new QVBoxLayout;
        box->addWidget(caption(tr(titles[v]), page));
        auto* preview = new CurvePreview(page);
        preview->setObjectName(v == 0 ? QStringLiteral("GroupDelayBefore")
                                      : QStringLiteral("GroupDelayAfter"));
        preview->setLogarithmicX(true);
        preview->setAxisTitles(tr("Freq[Hz] 200 - 20k"), tr("Delay[ms]"));
        preview->setGridSteps(10, 6);
        preview->setMinimumHeight(170);
        box->addWidget(preview, 1);
        groupDelayPreviews_[v] = preview;
        plots->addLayout(box, 1);
    }
    pageLayout->addLayout(plots, 3);
    groupDelayLegend_ = new QLabel(page);
    groupDelayLegend_->setTextFormat(Qt::RichText);
    pageLayout->addWidget(groupDelayLegend_);

    groupDelayTable_ = new QTableWidget(page);
    groupDelayTable_->setObjectName(QStringLiteral("GroupDelayTable"));
    groupDelayTable_->setColumnCount(7);
    groupDelayTable_->setHorizontalHeaderLabels({tr("Group"), tr("Before min"), tr("Before max"),
                                                 tr("Before mean"), tr("After min"),
                                                 tr("After max"), tr("After mean")});
    groupDelayTable_->verticalHeader()->hide();
    groupDelayTable_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    groupDelayTable_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    groupDelayTable_->setAlternatingRowColors(true);
    pageLayout->addWidget(groupDelayTable_, 2);

    auto* pages = new QStackedWidget(tab);
    pages->setObjectName(QStringLiteral("SectionPages"));
    pages->addWidget(page);
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

    parameterTable_ = new QTableWidget(tab);
    parameterTable_->setObjectName(QStringLiteral("ParameterTable"));
    parameterTable_->verticalHeader()->hide();
    parameterTable_->horizontalHeader()->hide();
    parameterTable_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    parameterTable_->setShowGrid(true);
    parameterTable_->setWordWrap(false);

    auto* pages = new QStackedWidget(tab);
    pages->setObjectName(QStringLiteral("SectionPages"));
    pages->addWidget(parameterTable_);
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
    FillGroupDelay();
    FillParameters();
    panel1_->PanelTimeSlice()->show();
    RefreshSelectors();
    UpdateSummary();
    content_->show();
    RebuildCharts(false);
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
    const auto& gd = document_.groupDelay;
    QStringList legend;
    float low = 0;
    float high = 0;
    bool first = true;
    for (int v = 0; v < sonalyx::kVariants; ++v) {
        QVector<CurvePreview::Series> series;
        for (int g = 0; g < sonalyx::kMaxGroups; ++g) {
            if (!gd.hasData[v][g]) {
                continue;
            }
            CurvePreview::Series s;
            s.colour = QColor(kGroupColours[document_.groupIdAt(g) % kGroupColours.size()]);
            for (int b = 0; b < sonalyx::kGroupDelayBands; ++b) {
                const float value = gd.values[v][g][b];
                s.points.append(QPointF(kGroupDelayFrequencies[b], value));
                low = first ? value : std::min(low, value);
                high = first ? value : std::max(high, value);
                first = false;
            }
            series.append(s);
        }
        groupDelayPreviews_[v]->setSeries(series);
    }
    const double top = std::ceil(std::max<double>(high, gd.span + 1.0));
    const double bottom = std::floor(std::min<double>(low, -1.0));
    for (auto* preview : groupDelayPreviews_) {
        preview->setRanges({kGroupDelayFrequencies.front(), kGroupDelayFrequencies.back()},
                           {bottom, top});
    }

    groupDelayTable_->setRowCount(0);
    for (int g = 0; g < sonalyx::kMaxGroups; ++g) {
        if (!gd.hasData[0][g] && !gd.hasData[1][g]) {
            continue;
        }
        const QColor colour(kGroupColours[document_.groupIdAt(g) % kGroupColours.size()]);
        legend.append(QStringLiteral("<span style=\"color:%1\">&#9632;</span> %2")
                          .arg(colour.name(), groupNameAt(document_, g).toHtmlEscaped()));
        const int row = groupDelayTable_->rowCount();
        groupDelayTable_->insertRow(row);
        groupDelayTable_->setItem(row, 0, new QTableWidgetItem(groupNameAt(document_, g)));
        for (int v = 0; v < sonalyx::kVariants; ++v) {
            if (!gd.hasData[v][g]) {
                for (int c = 0; c < 3; ++c) {
                    groupDelayTable_->setItem(row, 1 + v * 3 + c, new QTableWidgetItem(tr("-")));
                }
                continue;
            }
            const auto& values = gd.values[v][g];
            const auto [mn, mx] = std::minmax_element(values.begin(), values.end());
            double sum = 0;
            for (const float value : values) {
                sum += value;
            }
            const double cells[3] = {*mn, *mx, sum / values.size()};
            for (int c = 0; c < 3; ++c) {
                auto* item = new QTableWidgetItem(QStringLiteral("%1 ms").arg(cells[c], 0, 'f', 2));
                item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
                groupDelayTable_->setItem(row, 1 + v * 3 + c, item);
            }
        }
    }
    groupDelayLegend_->setText(legend.join(QStringLiteral("&nbsp;&nbsp;&nbsp;")) +
                               tr("&nbsp;&nbsp;&nbsp;Offset +%1 ms").arg(gd.span, 0, 'f', 1));
    if (groupDelayTable_->rowCount() == 0 && document_.sectionLoaded[sonalyx::kGroupDelaySection]) {
        sectionPages_[sonalyx::kGroupDelaySection]->setCurrentIndex(1);
    }
}

void TMDIChild::FillParameters() {
    std::vector<std::string> lines = document_.parameterLines;
    sonalyx::ParameterGrid grid;
    const bool parsed = sonalyx::ParseParameterRows(lines, grid);
    // The sheet starts at its first block heading; blank rows and columns carry nothing.
    std::vector<int> rows;
    std::vector<bool> usedColumn(sonalyx::kParameterColumns, false);
    bool started = false;
    for (int r = 0; parsed && r < grid.rowCount(); ++r) {
        started = started || grid.cell(r, 0).rfind("* ", 0) == 0;
        bool empty = true;
        for (int c = 0; c < sonalyx::kParameterColumns; ++c) {
            empty = empty && grid.cell(r, c).empty();
        }
        if (!started || empty) {
            continue;
        }
        rows.push_back(r);
        for (int c = 0; c < sonalyx::kParameterColumns; ++c) {
            usedColumn[c] = usedColumn[c] || !grid.cell(r, c).empty();
        }
    }
    std::vector<int> columns;
    for (int c = 0; c < sonalyx::kParameterColumns; ++c) {
        if (usedColumn[c]) {
            columns.push_back(c);
        }
    }
    parameterTable_->clear();
    parameterTable_->clearSpans();
    parameterTable_->setRowCount(static_cast<int>(rows.size()));
    parameterTable_->setColumnCount(static_cast<int>(columns.size()));
    parameterTable_->verticalHeader()->setDefaultSectionSize(
        parameterTable_->fontMetrics().height() + 8);
    for (int i = 0; i < static_cast<int>(rows.size()); ++i) {
        const int r = rows[i];
        const bool heading = grid.cell(r, 0).rfind("* ", 0) == 0;
        for (int j = 0; j < static_cast<int>(columns.size()); ++j) {
            auto* item = new QTableWidgetItem(fromBytes(grid.cell(r, columns[j])));
            if (heading) {
                QFont font = item->font();
                font.setBold(true);
                item->setFont(font);
                item->setBackground(QColor(0xdd, 0xe6, 0xf2));
            }
            item->setTextAlignment(j == 0 ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter);
            parameterTable_->setItem(i, j, item);
        }
        if (heading && !columns.empty()) {
            parameterTable_->setSpan(i, 0, 1, static_cast<int>(columns.size()));
        }
    }
    parameterTable_->resizeColumnsToContents();
    for (int j = 1; j < parameterTable_->columnCount(); ++j) {
        parameterTable_->setColumnWidth(j, std::max(parameterTable_->columnWidth(j), 64));
    }
    sectionPages_[sonalyx::kParametersSection]->setCurrentIndex(rows.empty() ? 1 : 0);
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
    }
}

void TMDIChild::MemoEdited(std::vector<std::string>& memo, const QString& text) {
    memo = MemoCodec::encode(text, sonalyx::kMaxMemoLines);
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
        const auto lines = MemoCodec::encode(fileMemos_[s]->toPlainText(), sonalyx::kMaxMemoLines);
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
