#include "views/window/view_export.h"

#include <QComboBox>
#include <QFileInfo>
#include <QLabel>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QPlainTextEdit>
#include <QSaveFile>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QSvgGenerator>
#include <QTabWidget>
#include <QTableWidget>

#include "views/chart/chart_json.h"
#include "views/chart/chart_widget.h"
#include "views/chart/json_writer.h"
#include "views/compare/reference_note.h"
#include "views/decay/decay_times_json.h"
#include "views/group_delay/group_delay_view.h"
#include "views/reverb/reverb_view.h"
#include "views/window/mdi_child.h"
#include "views/window/memo_codec.h"

namespace sonalyx {

namespace {

constexpr int kLegendStripHeight = 26;
constexpr int kMemoBandHeight = 52;
constexpr int kTableRowHeight = 20;
const QColor kInk(232, 234, 238);
const QColor kBoxEdge(75, 82, 94);
const QColor kBoxFill(24, 26, 30);
const char* const kTabNames[] = {"reverb", "groupdelay", "parameters"};

// The current tab's "No Data" label, when it shows one.
const QLabel* NoDataLabel(const TMDIChild& window) {
    const QWidget* page = window.PageControl()->currentWidget();
    for (const auto* label : page->findChildren<QLabel*>(QStringLiteral("LabelNoData"))) {
        if (label->isVisibleTo(page)) {
            return label;
        }
    }
    return nullptr;
}

// The widget whose rectangle the charts of the current tab are seen through (the "No Data"
// label stands in their place).
const QWidget* ChartArea(const TMDIChild& window) {
    if (const QLabel* noData = NoDataLabel(window)) {
        return noData;
    }
    if (window.PageControl()->currentIndex() == TMDIChild::kReverbTab) {
        return window.Reverb()->ScrollBox1()->viewport();
    }
    if (window.PageControl()->currentIndex() == TMDIChild::kGroupDelayTab) {
        // The statistics table below the chart is not part of the picture.
        return window.GroupDelay()->Chart101();
    }
    return window.PageControl()->currentWidget();
}

// The document window's client area: inside the MDI area the frame and title bar are the
// desktop's, not part of the view (a window of its own, as on the command line, has none).
QWidget* ClientArea(const TMDIChild& window) {
    return window.widget() != nullptr ? window.widget() : const_cast<TMDIChild*>(&window);
}

// Text in exports names a family every SVG and PDF reader knows (the widgets' own default,
// "Sans Serif", is drawn with a serif face by browsers); sized in pixels, as the page is.
QFont ExportFont(int pixels, bool bold = false) {
    QFont font(QStringLiteral("Arial"));
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

}  // namespace

ViewExport::ViewExport(const TMDIChild& window) : window_(window) {}

bool ViewExport::IsKnownSuffix(const QString& suffix) {
    static const QStringList known = {QStringLiteral("png"), QStringLiteral("svg"),
                                      QStringLiteral("pdf"), QStringLiteral("json")};
    return known.contains(suffix.toLower());
}

bool ViewExport::TabHasNoData(const TMDIChild& window) {
    return NoDataLabel(window) != nullptr;
}

QImage ViewExport::Grab() const {
    return ClientArea(window_)->grab().toImage();
}

QRect ViewExport::ChartArea() const {
    return QRect(QPoint(0, 0), sonalyx::ChartArea(window_)->size());
}

QString ViewExport::FileMemo() const {
    const int tab = window_.PageControl()->currentIndex();
    if (tab != TMDIChild::kReverbTab && tab != TMDIChild::kGroupDelayTab) {
        return {};
    }
    return MemoCodec::decode(window_.Document().fileMemos[tab]).trimmed();
}

int ViewExport::MemoBandHeight() const {
    return FileMemo().isEmpty() ? 0 : kMemoBandHeight;
}

int ViewExport::TableBandHeight() const {
    if (window_.PageControl()->currentIndex() != TMDIChild::kGroupDelayTab) {
        return 0;
    }
    const int rows = window_.GroupDelay()->GroupDelayTable()->rowCount();
    return rows > 0 ? (rows + 1) * kTableRowHeight + 8 : 0;
}

QSize ViewExport::VectorPageSize() const {
    const QRect area = ChartArea();
    return {area.width(),
            MemoBandHeight() + area.height() + TableBandHeight() + kLegendStripHeight};
}

void ViewExport::PaintVector(QPainter& painter) const {
    const QRect area = ChartArea();
    painter.setFont(ExportFont(12));
    painter.fillRect(QRect(QPoint(0, 0), VectorPageSize()), Qt::black);
    int y = 0;
    if (const int memo = MemoBandHeight(); memo > 0) {
        PaintFileMemo(painter, QRect(0, 0, area.width(), memo));
        y += memo;
    }
    painter.save();
    painter.translate(0, y);
    PaintCharts(painter);
    painter.restore();
    y += area.height();
    if (const int table = TableBandHeight(); table > 0) {
        PaintStatistics(painter, QRect(0, y, area.width(), table));
        y += table;
    }
    PaintLegendStrip(painter, QRect(0, y, area.width(), kLegendStripHeight));
}

void ViewExport::PaintCharts(QPainter& painter) const {
    const QWidget* areaWidget = sonalyx::ChartArea(window_);
    const QRect area = ChartArea();
    painter.save();
    painter.setClipRect(area);
    for (const auto* chart : window_.TargetCharts()) {
        if (!chart->isVisibleTo(&window_)) {
            continue;
        }
        const QRect rect(chart->mapTo(areaWidget, QPoint(0, 0)), chart->size());
        if (rect.intersects(area)) {
            chart->paint(painter, QRectF(rect));
        }
    }
    // The chart titles and channel memos that stand over the charts.
    for (const auto* label : areaWidget->findChildren<QLabel*>()) {
        if (label->objectName().startsWith(QStringLiteral("ChartTitle")) &&
            label->isVisibleTo(&window_)) {
            painter.setPen(kInk);
            painter.setFont(ExportFont(label->fontInfo().pixelSize(), label->font().bold()));
            painter.drawText(QRect(label->mapTo(areaWidget, QPoint(0, 0)), label->size()),
                             Qt::AlignLeft | Qt::AlignVCenter, label->text());
        }
    }
    for (const auto* memo : areaWidget->findChildren<QPlainTextEdit*>()) {
        if (!memo->isVisibleTo(&window_)) {
            continue;
        }
        const QRect rect(memo->mapTo(areaWidget, QPoint(0, 0)), memo->size());
        painter.setPen(kBoxEdge);
        painter.setBrush(kBoxFill);
        painter.drawRect(rect.adjusted(0, 0, -1, -1));
        painter.setPen(kInk);
        painter.setFont(ExportFont(9));
        painter.drawText(rect.adjusted(3, 2, -3, -2),
                         Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap, memo->toPlainText());
    }
    if (const QLabel* noData = NoDataLabel(window_)) {
        painter.setPen(QColor(125, 131, 142));
        painter.setFont(noData->font());
        painter.drawText(area, Qt::AlignCenter, noData->text());
    }
    painter.restore();
}

void ViewExport::PaintFileMemo(QPainter& painter, const QRect& band) const {
    const QRect box = band.adjusted(4, 4, -4, -4);
    painter.setPen(kBoxEdge);
    painter.setBrush(kBoxFill);
    painter.drawRect(box.adjusted(0, 0, -1, -1));
    painter.setPen(kInk);
    painter.setFont(ExportFont(12));
    painter.drawText(box.adjusted(5, 3, -5, -3), Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap,
                     FileMemo());
}

// The statistics table as the tab shows it: a header, then a row per group, its name in the
// group's colour.
void ViewExport::PaintStatistics(QPainter& painter, const QRect& band) const {
    const QTableWidget* table = window_.GroupDelay()->GroupDelayTable();
    const int columns = table->columnCount();
    const QRect box = band.adjusted(4, 4, -4, -4);
    const double width = static_cast<double>(box.width()) / columns;
    painter.save();
    painter.fillRect(QRect(box.left(), box.top(), box.width(), kTableRowHeight),
                     QColor(32, 35, 41));
    painter.setFont(ExportFont(12));
    for (int row = -1; row < table->rowCount(); ++row) {
        const int top = box.top() + (row + 1) * kTableRowHeight;
        for (int c = 0; c < columns; ++c) {
            const QRect cell(box.left() + static_cast<int>(c * width) + 6, top,
                             static_cast<int>(width) - 12, kTableRowHeight);
            const QTableWidgetItem* item =
                row < 0 ? table->horizontalHeaderItem(c) : table->item(row, c);
            if (item == nullptr) {
                continue;
            }
            painter.setPen(row >= 0 && c == 0 ? item->foreground().color().lighter(140) : kInk);
            painter.drawText(cell, (c == 0 ? Qt::AlignLeft : Qt::AlignRight) | Qt::AlignVCenter,
                             item->text());
        }
        painter.setPen(kBoxEdge);
        painter.drawLine(box.left(), top + kTableRowHeight, box.right(), top + kTableRowHeight);
    }
    painter.restore();
}

void ViewExport::PaintLegendStrip(QPainter& painter, const QRect& strip) const {
    painter.fillRect(strip, QColor(32, 35, 41));
    const ViewControls* panel = window_.Panel1();
    painter.setFont(ExportFont(11));
    int x = strip.left() + 8;
    for (int i = 0; i < kLegendEntries; ++i) {
        const QString caption = panel->LegendCaption(i);
        if (caption.isEmpty()) {
            continue;
        }
        const QRect swatch(x, strip.center().y() - 5, 16, 10);
        painter.fillRect(swatch, panel->LegendColour(i));
        painter.setPen(QColor(201, 206, 214));
        const int width = painter.fontMetrics().horizontalAdvance(caption);
        painter.drawText(QRect(x + 20, strip.top(), width + 4, strip.height()),
                         Qt::AlignLeft | Qt::AlignVCenter, caption);
        x += 20 + width + 14;
    }
    // A comparison is named at the right end, as the Compare note names it on screen.
    const QString comparison = panel->PanelReference()->Summary();
    if (!comparison.isEmpty()) {
        painter.setPen(QColor(159, 212, 255));
        painter.drawText(QRect(x, strip.top(), strip.right() - 8 - x, strip.height()),
                         Qt::AlignRight | Qt::AlignVCenter, comparison);
    }
}

void ViewExport::WriteTabJson(chart::JsonWriter& json) const {
    const ViewControls* panel = window_.Panel1();
    const int tab = window_.PageControl()->currentIndex();
    const bool noData = TabHasNoData(window_);
    json.beginObject();
    json.key("tab").value(kTabNames[std::clamp(tab, 0, 2)]);
    json.key("window").beginArray(chart::JsonWriter::Layout::Inline);
    const QSize client = ClientArea(window_)->size();
    json.value(client.width()).value(client.height()).endArray();
    json.key("noData").value(noData);
    json.key("barMode").value(window_.BarMode());
    const QComboBox* combo = panel->ComboChannel();
    json.key("comboChannel").beginObject(chart::JsonWriter::Layout::Inline);
    json.key("items").beginArray(chart::JsonWriter::Layout::Inline);
    for (int i = 0; i < combo->count(); ++i) {
        json.value(combo->itemText(i));
    }
    json.endArray();
    json.key("index").value(combo->currentIndex());
    json.endObject();
    json.key("controls").beginObject(chart::JsonWriter::Layout::Inline);
    json.key("zoom").value(panel->TrackBar(Track::Zoom)->value());
    json.key("move").value(panel->TrackBar(Track::Move)->value());
    json.key("elevation").value(panel->TrackBar(Track::Elevation)->value());
    json.key("rotation").value(panel->TrackBar(Track::Rotation)->value());
    json.key("timeSlice").value(panel->TrackBar(Track::TimeSlice)->value());
    json.key("perspective").value(panel->Perspective()->value());
    json.endObject();
    json.key("timeSlice").value(panel->EditTimeSlice()->text());
    json.key("legend").beginArray();
    for (int i = 0; i < kLegendEntries; ++i) {
        json.beginObject(chart::JsonWriter::Layout::Inline);
        json.key("caption").value(panel->LegendCaption(i));
        json.key("colour").colour(panel->LegendColour(i));
        json.endObject();
    }
    json.endArray();
    json.key("charts").beginArray();
    for (const auto* chart : window_.TargetCharts()) {
        // Where the chart sits in what it scrolls with: the scroll box's content on the
        // Reverb tab.
        chart::writeChartJson(json, chart->model(), chart->geometry());
    }
    json.endArray();
    if (tab == TMDIChild::kReverbTab) {
        json.key("decayTimes");
        writeDecayTimesJson(json, buildDecayTable(window_.Document(), window_.PairMode() == 1));
    }
    json.endObject();
}

std::string ViewExport::TabJson() const {
    chart::JsonWriter json;
    WriteTabJson(json);
    return json.text();
}

bool ViewExport::Save(const QString& path, QString& error) const {
    const QString suffix = QFileInfo(path).suffix().toLower();
    if (!IsKnownSuffix(suffix)) {
        error = QStringLiteral("Unknown output format: %1").arg(path);
        return false;
    }
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        error = QStringLiteral("Can't write %1: %2").arg(path, file.errorString());
        return false;
    }
    bool written = true;
    if (suffix == QLatin1String("png")) {
        written = Grab().save(&file, "PNG");
    } else if (suffix == QLatin1String("json")) {
        const std::string text = TabJson();
        written = file.write(text.data(), static_cast<qint64>(text.size())) ==
                  static_cast<qint64>(text.size());
    } else if (suffix == QLatin1String("svg")) {
        QSvgGenerator svg;
        svg.setOutputDevice(&file);
        svg.setSize(VectorPageSize());
        svg.setViewBox(QRect(QPoint(0, 0), VectorPageSize()));
        svg.setTitle(QFileInfo(window_.windowTitle()).fileName());
        QPainter painter(&svg);
        PaintVector(painter);
        written = painter.end();
    } else {
        QPdfWriter pdf(&file);
        pdf.setResolution(72);
        pdf.setPageSize(QPageSize(QSizeF(VectorPageSize()), QPageSize::Point));
        pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
        pdf.setTitle(QFileInfo(window_.windowTitle()).fileName());
        QPainter painter(&pdf);
        PaintVector(painter);
        written = painter.end();
    }
    if (!written || !file.commit()) {
        error = QStringLiteral("Can't write %1: %2").arg(path, file.errorString());
        file.cancelWriting();
        return false;
    }
    return true;
}

}  // namespace sonalyx
