#include "views/reverb/reverb_view.h"

#include <QEvent>
#include <QLabel>
#include <QPlainTextEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QStyle>
#include <QTextDocument>
#include <QVBoxLayout>
#include <algorithm>

#include "views/compare/reference_overlay.h"
#include "views/window/memo_codec.h"

namespace sonalyx {

namespace {

constexpr int kColumns = 3;
constexpr int kScrollStep = 32;

void MarkEmpty(QPlainTextEdit* memo) {
    const bool empty = memo->document()->isEmpty();
    if (memo->property("empty").toBool() != empty) {
        memo->setProperty("empty", empty);
        memo->style()->unpolish(memo);
        memo->style()->polish(memo);
    }
}

constexpr int kMemoWidth = 66;
constexpr int kMemoHeight = 45;
constexpr int kMemoFromBottom = 52;
constexpr int kMemoLeft = 4;

}  // namespace

ReverbView::ReverbView(MeasurementDocument& document, QWidget* parent)
    : QWidget(parent), document_(document) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    scrollBox1_ = new QScrollArea(this);
    scrollBox1_->setObjectName(QStringLiteral("ScrollBox1"));
    scrollBox1_->setFrameShape(QFrame::NoFrame);
    scrollBox1_->setWidgetResizable(false);
    scrollBox1_->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrollBox1_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scrollBox1_->installEventFilter(this);
    // A chart clicked gives the box the focus; its arrow keys then step as the window's do.
    scrollBox1_->verticalScrollBar()->setSingleStep(kScrollStep);
    scrollBox1_->horizontalScrollBar()->setSingleStep(kScrollStep);
    layout->addWidget(scrollBox1_);

    content_ = new QWidget;
    content_->setObjectName(QStringLiteral("ScrollBox1Content"));
    for (int i = 0; i < kCharts; ++i) {
        auto* chart = new chart::ChartWidget(content_);
        chart->setObjectName(QStringLiteral("Chart%1").arg(i + 1));
        InitChartDesign(chart->model(), i);
        chart->hide();
        charts_[i] = chart;

        auto* title = new QLabel(content_);
        title->setObjectName(QStringLiteral("ChartTitle%1").arg(i + 1));
        title->setAttribute(Qt::WA_TransparentForMouseEvents);
        title->hide();
        titles_[i] = title;

        auto* memo = new QPlainTextEdit(content_);
        memo->setObjectName(QStringLiteral("ChannelMemo%1").arg(i + 1));
        memo->setTabChangesFocus(true);
        memo->setFixedSize(kMemoWidth, kMemoHeight);
        memo->setProperty("empty", true);
        // A note longer than the box scrolls; lines wrap, so never sideways.
        memo->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
        memo->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        memo->installEventFilter(this);
        memo->hide();
        connect(memo, &QPlainTextEdit::textChanged, this, [this, i] {
            MarkEmpty(memos_[i]);
            KeepLabelsClear(i);
            StoreMemo(i);
        });
        memos_[i] = memo;
    }
    scrollBox1_->setWidget(content_);
    SetPaperLook(false);

    labelNoData_ = new QLabel(tr("No Data"), scrollBox1_);
    labelNoData_->setObjectName(QStringLiteral("LabelNoData"));
    labelNoData_->setAlignment(Qt::AlignCenter);
    QFont font = labelNoData_->font();
    font.setPointSizeF(font.pointSizeF() * 1.8);
    font.setBold(true);
    labelNoData_->setFont(font);
    labelNoData_->setStyleSheet(QStringLiteral("color:#7d838e; background:transparent;"));
    labelNoData_->hide();
    swatches_.fill(Qt::white);
}

void ReverbView::InitChartDesign(chart::ChartModel& model, int index) {
    model.name = QStringLiteral("Chart%1").arg(index + 1);
    model.visible = false;
    model.background = Qt::black;
    model.walls = chart::Walls{};
    model.margins = chart::Margins{20, 20, 5, 10};
    model.bottom.minimum = 0;
    model.bottom.maximum = 160;
    model.bottom.increment = 10;
    model.bottom.title = QStringLiteral("Time[msec]");
    model.bottom.valueFormat = QStringLiteral("#,##0");
    model.bottom.titleColour = QColor(120, 200, 255);
    model.left.minimum = 53;
    model.left.maximum = 63;
    model.left.increment = 1;
    model.left.valueFormat = QStringLiteral("#,##0.0##");
    model.left.title = QStringLiteral("Level[dB] ");
    model.left.titleColour = QColor(255, 214, 90);
    model.depth.increment = 1;
    model.depth.title = QStringLiteral("Freq[Hz]");
    model.depth.titleColour = QColor(130, 230, 150);
    model.view.depthPercent = 20;
    model.view.elevation = 337;
    model.view.rotation = 310;
}

void ReverbView::SetSources(const MeasurementDocument* values, const MeasurementDocument* overlay) {
    values_ = values;
    overlay_ = overlay;
}

template <typename Fill>
void ReverbView::FillWithOverlay(int chart, const Fill& fill) {
    chart::ChartModel& model = charts_[chart]->model();
    fill(ReverbFiller(Values(), selection_), model, swatches_, false);
    ReferenceOverlay::Attach(model, overlay_ != nullptr, [&](chart::ChartModel& scratch) {
        Swatches unused;
        fill(ReverbFiller(*overlay_, selection_), scratch, unused, true);
    });
}

void ReverbView::RebuildCharts(const ReverbSelection& selection, int comboIndex) {
    selection_ = selection;
    const ReverbFiller filler(Values(), selection_);
    const bool anyData = document_.anyVariantData[0] || document_.anyVariantData[1];
    labelNoData_->setVisible(!anyData);
    labelNoData_->setGeometry(scrollBox1_->rect());
    if (!anyData) {
        LayoutCharts(true, 0);
        return;
    }
    for (auto* chart : charts_) {
        chart->model().view.enabled = selection_.view3D;
    }
    const bool bars = selection_.barMode;
    if (comboIndex > 0) {
        LayoutCharts(false, 1);
        // The hidden charts keep nothing, so their data never outlives what is shown.
        for (int s = 1; s < kCharts; ++s) {
            for (auto& series : charts_[s]->model().series) {
                series.points.clear();
            }
            charts_[s]->model().referenceSeries.clear();
        }
        const int entry = comboIndex - 1;
        if (selection_.chFreq == 1) {
            bars ? FillBarChartByBand(0, entry) : FillLineChartByBand(0, entry);
        } else {
            const int item = filler.ItemByLongName(filler.ItemLongName(entry));
            const bool hasData = filler.ItemHasData(item);
            bars ? FillBarChart(0, item, hasData, false) : FillLineChart(0, item, hasData, false);
            ShowChart(0, hasData);
        }
    } else {
        const int count = filler.ChartCount();
        LayoutCharts(true, count);
        for (int s = 0; s < kCharts; ++s) {
            if (selection_.chFreq == 1) {
                bars ? FillBarChartByBand(s, s) : FillLineChartByBand(s, s);
                continue;
            }
            // Slots past the end of the list stand for item 0 without data.
            const bool inList = s < filler.ListLength();
            const int item = inList ? s : 0;
            const bool hasData = inList && filler.ItemHasData(item);
            bars ? FillBarChart(s, item, hasData, true) : FillLineChart(s, item, hasData, true);
        }
    }
    for (auto* chart : charts_) {
        chart->update();
    }
}

void ReverbView::LayoutCharts(bool allCharts, int count) {
    allCharts_ = allCharts;
    layoutCount_ = count;
    const int boxWidth = scrollBox1_->width();
    const int boxHeight = scrollBox1_->height();
    if (!allCharts) {
        scrollBox1_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        content_->resize(std::max(boxWidth, 0), boxHeight);
        charts_[0]->setGeometry(0, 0, std::max(boxWidth, 0), boxHeight);
        for (int s = 0; s < kCharts; ++s) {
            ShowChart(s, s == 0);
        }
        PlaceOverlays(0);
        return;
    }
    scrollBox1_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    int width = boxWidth / kColumns;
    const int height = count <= 6 ? boxHeight / 2 : boxHeight / 3;
    if (count > 9) {
        scrollBox1_->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
        if (selection_.chFreq == 0) {
            const int bar = scrollBox1_->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
            width = (boxWidth - bar) / kColumns;
        }
    }
    const int rows = (count + kColumns - 1) / kColumns;
    content_->resize(boxWidth, std::max(rows * height, boxHeight));
    for (int s = 0; s < kCharts; ++s) {
        charts_[s]->setGeometry((s % kColumns) * width + 1, (s / kColumns) * height, width, height);
        ShowChart(s, s < count);
        PlaceOverlays(s);
    }
}

void ReverbView::Relayout() {
    LayoutCharts(allCharts_, layoutCount_);
    labelNoData_->setGeometry(scrollBox1_->rect());
}

void ReverbView::ShowChart(int chart, bool visible) {
    charts_[chart]->setVisible(visible);
    charts_[chart]->model().visible = visible;
    titles_[chart]->setVisible(visible && !titles_[chart]->text().isEmpty());
    if (!visible) {
        memos_[chart]->hide();
    }
}

void ReverbView::PlaceOverlays(int chart) {
    const QRect r = charts_[chart]->geometry();
    titles_[chart]->adjustSize();
    titles_[chart]->move(r.left() + 8, r.top() + 2);
    memos_[chart]->move(r.left() + kMemoLeft, r.top() + r.height() - kMemoFromBottom);
    titles_[chart]->raise();
    memos_[chart]->raise();
    KeepLabelsClear(chart);
}

void ReverbView::KeepLabelsClear(int chart) {
    const QPlainTextEdit* memo = memos_[chart];
    const bool note = memo->isVisibleTo(content_) && !memo->document()->isEmpty();
    const QRectF clear =
        note ? QRectF(memo->geometry().translated(-charts_[chart]->pos())) : QRectF();
    chart::ChartModel& model = charts_[chart]->model();
    if (model.keepClear != clear) {
        model.keepClear = clear;
        charts_[chart]->update();
    }
}

void ReverbView::ShowMemo(int chart, int item, bool visible) {
    memoItems_[chart] = item;
    QPlainTextEdit* memo = memos_[chart];
    const ReverbFiller filler(document_, selection_);
    titles_[chart]->setText(filler.ItemLongName(item));
    if (visible && item >= 0 && item < filler.ListLength()) {
        const Memo& lines =
            selection_.pairMode == 0 ? document_.channelMemos[item] : document_.groupMemos[item];
        filling_ = true;
        memo->setPlainText(MemoCodec::decode(lines));
        filling_ = false;
        memo->setToolTip(tr("Channel memo: %1").arg(filler.ItemLongName(item)));
        memo->setVisible(charts_[chart]->isVisibleTo(content_));
    } else {
        memo->hide();
    }
    PlaceOverlays(chart);
    titles_[chart]->setVisible(charts_[chart]->isVisibleTo(content_) &&
                               !titles_[chart]->text().isEmpty());
}

void ReverbView::StoreMemo(int chart) {
    if (filling_) {
        return;
    }
    const int item = memoItems_[chart];
    if (item < 0 || item >= kMaxPositions) {
        return;
    }
    Memo& lines =
        selection_.pairMode == 0 ? document_.channelMemos[item] : document_.groupMemos[item];
    lines = MemoCodec::store(memos_[chart]->toPlainText(), kMaxMemoLines, lines);
    emit MemoEdited();
}

void ReverbView::FillLineChart(int chart, int item, bool hasData, bool allCharts) {
    const bool listed = !allCharts || chart < ReverbFiller(document_, selection_).ListLength();
    // The reference's own data decides whether its curves are drawn.
    FillWithOverlay(chart, [&](const ReverbFiller& filler, chart::ChartModel& model,
                               Swatches& swatches, bool reference) {
        filler.FillLineChart(model, item, reference ? listed && filler.ItemHasData(item) : hasData,
                             swatches);
    });
    ShowMemo(chart, item, listed);
}

void ReverbView::FillBarChart(int chart, int item, bool hasData, bool allCharts) {
    const bool listed = !allCharts || chart < ReverbFiller(document_, selection_).ListLength();
    // The reference's own data decides whether its curves are drawn.
    FillWithOverlay(chart, [&](const ReverbFiller& filler, chart::ChartModel& model,
                               Swatches& swatches, bool reference) {
        filler.FillBarChart(model, item, reference ? listed && filler.ItemHasData(item) : hasData,
                            swatches);
    });
    ShowMemo(chart, item, listed);
}

void ReverbView::FillLineChartByBand(int chart, int band) {
    FillWithOverlay(
        chart, [&](const ReverbFiller& filler, chart::ChartModel& model, Swatches& swatches, bool) {
            filler.FillLineChartByBand(model, band, swatches);
        });
    ShowBandTitle(chart, band);
}

void ReverbView::ShowBandTitle(int chart, int band) {
    const QString caption = ReverbFiller(document_, selection_).BandCaption(band);
    memos_[chart]->hide();
    titles_[chart]->setText(caption.isEmpty() ? QString() : caption + QStringLiteral("Hz"));
    PlaceOverlays(chart);
    titles_[chart]->setVisible(charts_[chart]->isVisibleTo(content_) && !caption.isEmpty());
}

void ReverbView::FillBarChartByBand(int chart, int band) {
    FillWithOverlay(
        chart, [&](const ReverbFiller& filler, chart::ChartModel& model, Swatches& swatches, bool) {
            filler.FillBarChartByBand(model, band, swatches);
        });
    ShowBandTitle(chart, band);
}

bool ReverbView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == scrollBox1_ && event->type() == QEvent::Resize) {
        Relayout();
    }
    if (auto* memo = qobject_cast<QPlainTextEdit*>(watched)) {
        // An empty memo is invisible on the chart until the mouse or the cursor comes to it.
        const QEvent::Type type = event->type();
        if (type == QEvent::Enter || type == QEvent::Leave || type == QEvent::FocusIn ||
            type == QEvent::FocusOut) {
            const bool invite = !paper_ && (type == QEvent::Enter || type == QEvent::FocusIn ||
                                            (type == QEvent::Leave && memo->hasFocus()) ||
                                            (type == QEvent::FocusOut && memo->underMouse()));
            memo->setPlaceholderText(invite ? tr("Channel memo") : QString());
        }
    }
    return QWidget::eventFilter(watched, event);
}

void ReverbView::SetPaperLook(bool paper) {
    // One sheet for the box, the chart titles and the channel memos. An empty memo shows only
    // while hovered or edited, so the charts are not crowded with blank boxes; on paper it is
    // not drawn.
    static const QString screen = QStringLiteral(
        "#ScrollBox1, #ScrollBox1Content{background:#000;}"
        "QLabel[objectName^=\"ChartTitle\"]{color:#e8eaee; font-weight:bold;"
        " background:transparent;}"
        "QPlainTextEdit{background:rgba(24,26,30,220); color:#e8eaee; font-size:7pt;"
        "border:1px solid #4b525e; border-radius:2px;}"
        "QPlainTextEdit[empty=\"true\"]{background:transparent; border:1px solid transparent;}"
        "QPlainTextEdit[empty=\"true\"]:hover, QPlainTextEdit[empty=\"true\"]:focus"
        "{background:rgba(24,26,30,200); border:1px dashed #4b525e;}");
    static const QString paperSheet = QStringLiteral(
        "#ScrollBox1, #ScrollBox1Content{background:#fff;}"
        "QLabel[objectName^=\"ChartTitle\"]{color:#000; font-weight:bold;"
        " background:transparent;}"
        "QPlainTextEdit{background:#fff; color:#000; font-size:7pt;"
        "border:1px solid #000; border-radius:0px;}"
        "QPlainTextEdit[empty=\"true\"]{background:transparent; border:none;}");
    paper_ = paper;
    scrollBox1_->setStyleSheet(paper ? paperSheet : screen);
    for (QPlainTextEdit* memo : memos_) {
        memo->setPlaceholderText(!paper && memo->hasFocus() ? tr("Channel memo") : QString());
    }
}

}  // namespace sonalyx
