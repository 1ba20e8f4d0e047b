#include "print/report_chart_block.h"

#include <QFontMetricsF>
#include <QObject>
#include <QPainter>

#include "print/report_style.h"
#include "views/chart/chart_painter.h"

namespace sonalyx {

namespace {

constexpr double kCaptionHeight = 16;
constexpr double kKeyLine = 11;
constexpr double kSwatch = 14;
constexpr int kMemoFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap;

// The curves the key names: every filled slot, once per title.
QStringList KeyTitles(const chart::ChartModel& model, std::vector<QColor>& colours) {
    QStringList titles;
    for (const chart::Series& series : model.series) {
        if (series.points.empty() || titles.contains(series.title.trimmed())) {
            continue;
        }
        titles << series.title.trimmed();
        colours.push_back(series.colour);
    }
    return titles;
}

}  // namespace

ReportChartBlock::ReportChartBlock(QString caption, chart::ChartModel model, double chartHeight)
    : caption_(std::move(caption)), model_(std::move(model)), chartHeight_(chartHeight) {}

void ReportChartBlock::SetLineKey(QString solid, QString dashed) {
    solid_ = std::move(solid);
    dashed_ = std::move(dashed);
}

double ReportChartBlock::KeyHeight(double width) const {
    std::vector<QColor> colours;
    const QStringList titles = KeyTitles(model_, colours);
    const QFontMetricsF metrics(ReportStyle::Font(ReportStyle::kSmallSize));
    double x = 0;
    int lines = titles.isEmpty() ? 0 : 1;
    for (const QString& title : titles) {
        const double item = kSwatch + 3 + metrics.horizontalAdvance(title) + 10;
        if (x > 0 && x + item > width) {
            ++lines;
            x = 0;
        }
        x += item;
    }
    return (lines + (solid_.isEmpty() ? 0 : 1)) * kKeyLine;
}

double ReportChartBlock::MemoHeight(double width) const {
    if (memo_.trimmed().isEmpty()) {
        return 0;
    }
    return QFontMetricsF(ReportStyle::Font(ReportStyle::kSmallSize))
               .boundingRect(QRectF(0, 0, width, 1e6), kMemoFlags, memo_)
               .height() +
           4;
}

double ReportChartBlock::Height(double width) const {
    return kCaptionHeight + chartHeight_ + 4 + KeyHeight(width) + MemoHeight(width);
}

void ReportChartBlock::Paint(QPainter& painter, const QRectF& rect) const {
    painter.save();
    painter.setFont(ReportStyle::Font(ReportStyle::kSubheadingSize, true));
    painter.setPen(ReportStyle::Ink());
    painter.drawText(QRectF(rect.left(), rect.top(), rect.width(), kCaptionHeight),
                     Qt::AlignLeft | Qt::AlignTop, caption_);
    const QRectF chart(rect.left(), rect.top() + kCaptionHeight, rect.width(), chartHeight_);
    paintChart(painter, chart, model_, chart::ChartAppearance{true});
    const double keyTop = chart.bottom() + 4;
    const double key = KeyHeight(rect.width());
    PaintKey(painter, QRectF(rect.left(), keyTop, rect.width(), key));
    if (const double memo = MemoHeight(rect.width()); memo > 0) {
        painter.setFont(ReportStyle::Font(ReportStyle::kSmallSize));
        painter.setPen(ReportStyle::Ink());
        painter.drawText(QRectF(rect.left(), keyTop + key + 4, rect.width(), memo), kMemoFlags,
                         memo_);
    }
    painter.restore();
}

void ReportChartBlock::PaintKey(QPainter& painter, const QRectF& rect) const {
    std::vector<QColor> colours;
    const QStringList titles = KeyTitles(model_, colours);
    painter.setFont(ReportStyle::Font(ReportStyle::kSmallSize));
    const QFontMetricsF metrics(painter.font());
    double x = rect.left();
    double y = rect.top();
    for (int i = 0; i < titles.size(); ++i) {
        const double item = kSwatch + 3 + metrics.horizontalAdvance(titles[i]) + 10;
        if (x > rect.left() && x + item > rect.right()) {
            x = rect.left();
            y += kKeyLine;
        }
        painter.setPen(QPen(colours[static_cast<std::size_t>(i)], 2));
        painter.drawLine(QPointF(x, y + kKeyLine / 2), QPointF(x + kSwatch, y + kKeyLine / 2));
        painter.setPen(ReportStyle::Ink());
        painter.drawText(QRectF(x + kSwatch + 3, y, item, kKeyLine),
                         Qt::AlignLeft | Qt::AlignVCenter, titles[i]);
        x += item;
    }
    if (solid_.isEmpty()) {
        return;
    }
    y = rect.bottom() - kKeyLine;
    x = rect.left();
    const double mid = y + kKeyLine / 2;
    painter.setPen(QPen(ReportStyle::Ink(), 1.2));
    painter.drawLine(QPointF(x, mid), QPointF(x + kSwatch * 1.5, mid));
    painter.setPen(ReportStyle::Muted());
    const QString solid = QObject::tr("solid: %1").arg(solid_);
    painter.drawText(QRectF(x + kSwatch * 1.5 + 3, y, rect.width(), kKeyLine),
                     Qt::AlignLeft | Qt::AlignVCenter, solid);
    x += kSwatch * 1.5 + 3 + metrics.horizontalAdvance(solid) + 16;
    painter.setPen(QPen(ReportStyle::Ink(), 1.2, Qt::DashLine));
    painter.drawLine(QPointF(x, mid), QPointF(x + kSwatch * 1.5, mid));
    painter.setPen(ReportStyle::Muted());
    painter.drawText(QRectF(x + kSwatch * 1.5 + 3, y, rect.width(), kKeyLine),
                     Qt::AlignLeft | Qt::AlignVCenter, QObject::tr("dashed: %1").arg(dashed_));
}

}  // namespace sonalyx
