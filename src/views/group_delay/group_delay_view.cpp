#include "views/group_delay/group_delay_view.h"

#include <QHeaderView>
#include <QResizeEvent>
#include <QTableWidget>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

#include "views/compare/reference_overlay.h"
#include "views/window/view_axis.h"

namespace sonalyx {

namespace {

// The table never takes more than this share of the tab, and a small tab leaves it out
// altogether: the chart comes first.
constexpr int kTableShareDivisor = 4;
constexpr int kTableMinWidth = 600;
constexpr int kChartMinHeightBesideTable = 300;

}  // namespace

GroupDelayView::GroupDelayView(const MeasurementDocument& document, QWidget* parent)
    : QWidget(parent), document_(document) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(4);
    chart_ = new chart::ChartWidget(this);
    chart_->setObjectName(QStringLiteral("Chart101"));
    GroupDelayFiller::InitChartDesign(chart_->model());
    // A curve's point x is its band + 1: the readout names the band by its frequency edges.
    chart_->setReadoutFormatter(
        [](const chart::ChartModel& model, const chart::Series& series, const chart::Point& point) {
            const int band = static_cast<int>(std::lround(point.x)) - 1;
            if (series.kind != chart::SeriesKind::Line || band < 0 || band >= kGroupDelayBands) {
                return chart::defaultReadoutText(model, series, point);
            }
            return QStringLiteral("%1: %2, %3 ms")
                .arg(series.title.trimmed(), view_axis::GroupDelayBandCaption(band),
                     QString::number(point.y, 'f', 2));
        });
    chart_->setMinimumHeight(160);
    layout->addWidget(chart_, 1);

    table_ = new QTableWidget(this);
    table_->setObjectName(QStringLiteral("GroupDelayTable"));
    table_->setColumnCount(7);
    table_->setHorizontalHeaderLabels({tr("Group"), tr("Before min"), tr("Before max"),
                                       tr("Before mean"), tr("After min"), tr("After max"),
                                       tr("After mean")});
    table_->verticalHeader()->hide();
    table_->horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setAlternatingRowColors(true);
    table_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    table_->setWordWrap(false);
    layout->addWidget(table_, 0);
    swatches_.fill(Qt::white);
}

void GroupDelayView::SetSources(const MeasurementDocument* values,
                                const MeasurementDocument* overlay) {
    values_ = values;
    overlay_ = overlay;
}

void GroupDelayView::RebuildCharts(const GroupDelaySelection& selection) {
    const auto fill = [&selection](const MeasurementDocument& doc, chart::ChartModel& model,
                                   Swatches& swatches) {
        const GroupDelayFiller filler(doc, selection);
        if (selection.barMode) {
            filler.FillBarChart(model, swatches);
        } else {
            filler.FillLineChart(model, swatches);
        }
    };
    chart::ChartModel& model = chart_->model();
    fill(values_ != nullptr ? *values_ : document_, model, swatches_);
    ReferenceOverlay::Attach(model, overlay_ != nullptr, [&](chart::ChartModel& scratch) {
        Swatches unused;
        fill(*overlay_, scratch, unused);
    });
    chart_->update();
}

std::vector<GroupDelayView::GroupStatistics> GroupDelayView::Statistics(
    const MeasurementDocument& document) {
    const auto& gd = document.groupDelay;
    const GroupDelayFiller filler(document, {});
    std::vector<GroupStatistics> rows;
    for (int g = 0; g < kMaxGroups; ++g) {
        if (!gd.hasData[0][g] && !gd.hasData[1][g]) {
            continue;
        }
        GroupStatistics row;
        row.name = filler.GroupName(g);
        row.colour = GroupDelayFiller::GroupColour(document.groupIdAt(g));
        for (int v = 0; v < kVariants; ++v) {
            row.has[v] = gd.hasData[v][g];
            if (!row.has[v]) {
                continue;
            }
            const auto& values = gd.values[v][g];
            const auto [mn, mx] = std::minmax_element(values.begin(), values.end());
            double sum = 0;
            for (const float value : values) {
                sum += value;
            }
            row.minimum[v] = *mn;
            row.maximum[v] = *mx;
            row.mean[v] = sum / static_cast<double>(values.size());
        }
        rows.push_back(row);
    }
    return rows;
}

QString GroupDelayView::FigureText(double milliseconds) {
    return QStringLiteral("%1 ms").arg(milliseconds, 0, 'f', 2);
}

bool GroupDelayView::FillTable() {
    table_->setRowCount(0);
    for (const GroupStatistics& statistics : Statistics(document_)) {
        const int row = table_->rowCount();
        table_->insertRow(row);
        auto* name = new QTableWidgetItem(statistics.name);
        name->setForeground(statistics.colour.darker(140));
        table_->setItem(row, 0, name);
        for (int v = 0; v < kVariants; ++v) {
            const double cells[3] = {statistics.minimum[v], statistics.maximum[v],
                                     statistics.mean[v]};
            for (int c = 0; c < 3; ++c) {
                auto* item =
                    new QTableWidgetItem(statistics.has[v] ? FigureText(cells[c]) : tr("-"));
                if (statistics.has[v]) {
                    item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
                }
                table_->setItem(row, 1 + v * 3 + c, item);
            }
        }
    }
    FitTable();
    return table_->rowCount() > 0;
}

void GroupDelayView::FitTable() {
    const int rows = table_->rowCount();
    const int needed = table_->horizontalHeader()->sizeHint().height() +
                       rows * table_->verticalHeader()->defaultSectionSize() +
                       2 * table_->frameWidth();
    const int tableHeight = std::min(needed, std::max(height() / kTableShareDivisor, 60));
    table_->setFixedHeight(tableHeight);
    table_->setVisible(rows > 0 && width() >= kTableMinWidth &&
                       height() - tableHeight >= kChartMinHeightBesideTable);
}

void GroupDelayView::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    FitTable();
    if (event->oldSize().width() != event->size().width()) {
        emit Resized();
    }
}

}  // namespace sonalyx
