#include "views/mdi_child.h"

#include <QCloseEvent>
#include <QComboBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QStackedWidget>
#include <QTabWidget>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <array>
#include <cmath>

#include "document/document_loader.h"
#include "document/speaker_layout.h"
#include "views/channel_card.h"
#include "views/curve_preview.h"
#include "views/memo_codec.h"
#include "views/parameters_view.h"

using sonalyx::ChannelCard;
using sonalyx::CurvePreview;
using sonalyx::MemoCodec;

namespace {

constexpr int kPanel1Width = 210;
constexpr int kCardColumns = 3;

// Curve colours of the bands, the same table the reverb charts use.
constexpr std::array<QRgb, 15> kBandColours = {
    qRgb(248, 0, 0),    qRgb(232, 72, 8),    qRgb(248, 160, 40), qRgb(192, 216, 56),
    qRgb(0, 216, 112),  qRgb(0, 104, 224),   qRgb(80, 144, 248), qRgb(144, 88, 208),
    qRgb(160, 16, 124), qRgb(255, 0, 0),     qRgb(245, 162, 37), qRgb(0, 217, 108),
    qRgb(0, 101, 222),  qRgb(200, 200, 200), qRgb(200, 200, 200)};

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
    connect(pageControl_, &QTabWidget::currentChanged, this, [this] { RebuildCharts(false); });

    auto* layout = new QHBoxLayout(content_);
    layout->setContentsMargins(4, 4, 4, 4);
    layout->setSpacing(4);
    layout->addWidget(pageControl_, 1);
    layout->addWidget(BuildPanel1());
    setWidget(content_);
    content_->hide();
    resize(980, 620);
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
    layout->setContentsMargins(6, 6, 6, 6);
    layout->addWidget(BuildFileMemo(sonalyx::kReverbSection, tab));

    scrollBox1_ = new QScrollArea(tab);
    scrollBox1_->setObjectName(QStringLiteral("ScrollBox1"));
    scrollBox1_->setWidgetResizable(true);
    scrollBox1_->setFrameShape(QFrame::NoFrame);
    cardHost_ = new QWidget(scrollBox1_);
    cardHost_->setObjectName(QStringLiteral("CardHost"));
    cardHost_->setStyleSheet(QStringLiteral("#CardHost{background:#1a1c20;}"));
    cardGrid_ = new QGridLayout(cardHost_);
    cardGrid_->setContentsMargins(6, 6, 6, 6);
    cardGrid_->setSpacing(6);
    scrollBox1_->setWidget(cardHost_);

    auto* pages = new QStackedWidget(tab);
    pages->setObjectName(QStringLiteral("SectionPages"));
    pages->addWidget(scrollBox1_);
    pages->addWidget(BuildNoDataLabel(tab));
    sectionPages_[sonalyx::kReverbSection] = pages;
    layout->addWidget(pages, 1);
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

QWidget* TMDIChild::BuildPanel1() {
    auto* panel = new QFrame(content_);
    panel->setObjectName(QStringLiteral("Panel1"));
    panel->setFrameShape(QFrame::StyledPanel);
    panel->setFixedWidth(kPanel1Width);
    auto* layout = new QVBoxLayout(panel);
    layout->setContentsMargins(8, 8, 8, 8);

    // On the Parameters tab the channel box selects the sheet's memory.
    comboChannel_ = new QComboBox(panel);
    comboChannel_->setObjectName(QStringLiteral("ComboChannel"));
    comboChannel_->addItems(ParametersView::MemoryItems());
    comboChannel_->setVisible(false);
    connect(comboChannel_, &QComboBox::currentIndexChanged, this,
            &TMDIChild::TMDIChild_ComboChannelChange);
    layout->addWidget(comboChannel_);

    auto* documentBox = new QGroupBox(tr("Measurement"), panel);
    auto* documentLayout = new QVBoxLayout(documentBox);
    summary_ = new QLabel(documentBox);
    summary_->setObjectName(QStringLiteral("LabelSummary"));
    summary_->setTextFormat(Qt::RichText);
    summary_->setWordWrap(true);
    summary_->setAlignment(Qt::AlignTop | Qt::AlignLeft);
    documentLayout->addWidget(summary_);
    layout->addWidget(documentBox);

    auto* viewBox = new QGroupBox(tr("View"), panel);
    auto* viewLayout = new QVBoxLayout(viewBox);
    viewState_ = new QLabel(viewBox);
    viewState_->setObjectName(QStringLiteral("LabelViewState"));
    viewState_->setTextFormat(Qt::RichText);
    viewState_->setWordWrap(true);
    viewLayout->addWidget(viewState_);
    layout->addWidget(viewBox);
    layout->addStretch(1);
    panel1_ = panel;
    return panel;
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
    for (int s = 0; s < 3; ++s) {
        sectionPages_[s]->setCurrentIndex(document_.sectionLoaded[s] ? 0 : 1);
    }
    const bool anyReverb = document_.anyVariantData[0] || document_.anyVariantData[1];
    sectionPages_[sonalyx::kReverbSection]->setCurrentIndex(anyReverb ? 0 : 1);
    UpdateReverbRange();
    FillGroupDelay();
    FillParameters();
    RebuildCharts(false);
    content_->show();
    emit ModifiedChanged(document_.modified);
}

void TMDIChild::FillFileMemos() {
    for (int s = 0; s < 3; ++s) {
        fileMemos_[s]->setProperty("filling", true);
        fileMemos_[s]->setPlainText(MemoCodec::decode(document_.fileMemos[s]));
        fileMemos_[s]->setProperty("filling", false);
    }
}

void TMDIChild::UpdateReverbRange() {
    float low = 0;
    float high = 0;
    bool first = true;
    for (int v = 0; v < sonalyx::kVariants; ++v) {
        for (int p = 0; p < document_.channelCount && p < sonalyx::kMaxPositions; ++p) {
            if (!document_.positionHasData[v][p]) {
                continue;
            }
            for (int b = 0; b < document_.bandCount && b < sonalyx::kMaxBands; ++b) {
                const auto& curve = document_.reverbValues[v][p][b];
                const auto [mn, mx] = std::minmax_element(curve.begin(), curve.end());
                low = first ? *mn : std::min(low, *mn);
                high = first ? *mx : std::max(high, *mx);
                first = false;
            }
        }
    }
    // Whole 5 dB steps around the data, never tighter than the charts' usual 10 dB window.
    reverbMin_ = std::min(53.0, std::floor((sonalyx::kLevelBase + low) / 5.0) * 5.0);
    reverbMax_ = std::max(63.0, std::ceil((sonalyx::kLevelBase + high) / 5.0) * 5.0);
}

bool TMDIChild::ItemHasData(int item, int variant) const {
    return pairMode_ == 0 ? document_.positionHasData[variant][item]
                          : document_.groupHasData[variant][item];
}

QVector<CurvePreview::Series> TMDIChild::ReverbSeries(int item) const {
    QVector<CurvePreview::Series> series;
    if (!ItemHasData(item, reverbVariant_)) {
        return series;
    }
    const auto& bands = pairMode_ == 0 ? document_.reverbValues[reverbVariant_][item]
                                       : document_.groupValues[reverbVariant_][item];
    for (int b = 0; b < document_.bandCount && b < sonalyx::kMaxBands; ++b) {
        CurvePreview::Series s;
        s.colour = QColor(kBandColours[b]);
        for (int t = 0; t < sonalyx::kTimePoints; ++t) {
            s.points.append(QPointF(5.0 * (t + 1), bands[b][t] + sonalyx::kLevelBase));
        }
        series.append(s);
    }
    return series;
}

void TMDIChild::AddReverbCard(int item, const QString& longName, const QString& shortName) {
    auto* card = new ChannelCard(cardHost_);
    card->setTitle(longName, shortName);
    card->setAvailability(ItemHasData(item, 0), ItemHasData(item, 1));
    card->preview()->setRanges({0, 160}, {reverbMin_, reverbMax_});
    card->preview()->setGridSteps(8, static_cast<int>((reverbMax_ - reverbMin_) / 5));
    card->setCurves(ReverbSeries(item), graph3D_);
    auto& memo = pairMode_ == 0 ? document_.channelMemos[item] : document_.groupMemos[item];
    card->setMemo(MemoCodec::decode(memo));
    connect(card, &ChannelCard::memoEdited, this,
            [this, &memo](const QString& text) { MemoEdited(memo, text); });
    const int index = static_cast<int>(cards_.size());
    cardGrid_->addWidget(card, index / kCardColumns, index % kCardColumns);
    cards_.append(card);
}

void TMDIChild::FillReverbCards() {
    qDeleteAll(cards_);
    cards_.clear();
    if (pairMode_ == 0) {
        for (int p = 0; p < document_.channelCount && p < sonalyx::kMaxPositions; ++p) {
            if (ItemHasData(p, 0) || ItemHasData(p, 1)) {
                AddReverbCard(p, fromBytes(document_.channelLongNames[p]),
                              fromBytes(document_.channelNames[p]));
            }
        }
    } else {
        for (int g = 0; g < document_.groupCount && g < sonalyx::kMaxGroups; ++g) {
            if (ItemHasData(g, 0) || ItemHasData(g, 1)) {
                const int id = document_.groupIdAt(g);
                AddReverbCard(g, groupNameAt(document_, g),
                              QString::fromUtf8(sonalyx::groupAbbreviation(id)));
            }
        }
    }
    // Two rows fill the view for up to six cards; more scroll in rows of a third.
    const int rows = (static_cast<int>(cards_.size()) + kCardColumns - 1) / kCardColumns;
    const int viewHeight = scrollBox1_->viewport()->height();
    const int cardHeight = std::max(190, (viewHeight - 12) / (rows <= 2 ? 2 : 3) - 6);
    for (auto* card : cards_) {
        card->setMinimumHeight(cardHeight);
    }
    for (int r = 0; r < cardGrid_->rowCount(); ++r) {
        cardGrid_->setRowStretch(r, 0);
    }
    cardGrid_->setRowStretch(rows, 1);
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
    const bool any = sonalyx::hasParameterRows(document_.parameterLines);
    sectionPages_[sonalyx::kParametersSection]->setCurrentIndex(any ? 0 : 1);
}

void TMDIChild::TMDIChild_ComboChannelChange(int index) {
    if (pageControl_->currentIndex() == kParametersTab) {
        parametersView_->SetMemory(index);
    }
}

void TMDIChild::UpdatePanel1() {
    QString layout = tr("%1 channels").arg(document_.channelCount);
    if (sonalyx::layoutByNumber(document_.layoutNumber) != nullptr &&
        document_.layoutNumber != document_.channelCount) {
        layout += tr(" (layout %1)").arg(document_.layoutNumber);
    }
    QStringList bands;
    for (const auto& band : document_.bandLabels) {
        bands.append(fromBytes(band));
    }
    QString eq = QString::fromStdString(document_.reverbTypeLabel);
    eq.replace(QStringLiteral("\r\n"), QStringLiteral(" "));
    const auto row = [](const QString& name, const QString& value) {
        return QStringLiteral(
                   "<tr><td style=\"color:#667;padding-right:6px\">%1</td>"
                   "<td>%2</td></tr>")
            .arg(name.toHtmlEscaped(), value.toHtmlEscaped());
    };
    summary_->setText(QStringLiteral("<table>") + row(tr("Date"), fromBytes(document_.date)) +
                      row(tr("Speakers"), layout) +
                      row(tr("Bands"), bands.join(QStringLiteral(" "))) + row(tr("Reverb EQ"), eq) +
                      row(tr("Data"), tr("%1 before, %2 after")
                                          .arg(document_.positionsWithData[1].count)
                                          .arg(document_.positionsWithData[2].count)) +
                      QStringLiteral("</table>"));
    viewState_->setText(
        QStringLiteral("<table>") + row(tr("Graph"), graph3D_ ? tr("3D") : tr("2D")) +
        row(tr("Type"), pairMode_ == 0 ? tr("Each channel") : tr("Pair channel")) +
        row(tr("Data"), reverbVariant_ == 0 ? tr("Before") : tr("After")) +
        row(tr("Rotation"), QStringLiteral("%1\u00B0").arg(360 - rotationPosition_)) +
        QStringLiteral("</table>"));
}

void TMDIChild::RebuildCharts(bool maximise) {
    if (maximise) {
        showMaximized();
    }
    if (pageControl_->currentIndex() == kReverbTab) {
        FillReverbCards();
    }
    comboChannel_->setVisible(pageControl_->currentIndex() == kParametersTab);
    if (pageControl_->currentIndex() == kParametersTab) {
        parametersView_->SetMemory(comboChannel_->currentIndex());
    }
    UpdatePanel1();
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

void TMDIChild::SetGraph3D(bool on) {
    graph3D_ = on;
    RebuildCharts(false);
}

void TMDIChild::SetPairMode(int mode) {
    pairMode_ = mode == 0 ? 0 : 1;
    RebuildCharts(false);
}

void TMDIChild::SetReverbVariant(int variant) {
    reverbVariant_ = variant == 0 ? 0 : 1;
    RebuildCharts(false);
}

void TMDIChild::DemoRotateStep() {
    constexpr int kMin = 0;
    constexpr int kMax = 90;
    if (!graph3D_) {
        return;
    }
    if (rotateBackward_) {
        if (rotationPosition_ <= kMin) {
            rotateBackward_ = false;
        } else {
            --rotationPosition_;
        }
    } else if (rotationPosition_ >= kMax) {
        rotateBackward_ = true;
    } else {
        ++rotationPosition_;
    }
    UpdatePanel1();
}
