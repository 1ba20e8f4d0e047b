#include "views/chart/chart_readout.h"

#include <QObject>
#include <QPainter>
#include <QRegularExpression>
#include <algorithm>
#include <cmath>

namespace sonalyx::chart {

namespace {

// "Time[msec]" -> "ms", "Level[dB] " -> "dB": the unit the axis title carries.
QString unitOf(const Axis& axis) {
    static const QRegularExpression bracket(QStringLiteral("\\[([^\\]]*)\\]"));
    const QRegularExpressionMatch match = bracket.match(axis.title);
    if (!match.hasMatch())
        return {};
    const QString unit = match.captured(1).trimmed();
    return unit.compare(QLatin1String("msec"), Qt::CaseInsensitive) == 0 ? QStringLiteral("ms")
                                                                         : unit;
}

// At most two decimals, none trailing: 45, 61.25, 0.5.
QString number(double value) {
    QString text = QString::number(value, 'f', 2);
    while (text.contains(QLatin1Char('.')) && (text.endsWith(QLatin1Char('0'))))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text == QLatin1String("-0") ? QStringLiteral("0") : text;
}

QString withUnit(double value, const QString& unit) {
    return unit.isEmpty() ? number(value) : number(value) + QLatin1Char(' ') + unit;
}

// Compared figures keep two decimals, so a value and its difference line up: 60.50, +0.75.
QString comparedValue(double value, const QString& unit, bool sign) {
    QString text = QString::number(value, 'f', 2);
    if (text == QLatin1String("-0.00"))
        text = QStringLiteral("0.00");
    if (sign && value > 0 && text != QLatin1String("0.00"))
        text.prepend(QLatin1Char('+'));
    return unit.isEmpty() ? text : text + QLatin1Char(' ') + unit;
}

// The point of a curve at x: both documents share the time points and bands, so the same x
// is the same measurement.
const Point* pointAt(const Series& series, double x) {
    const double tolerance = 1e-9 * std::max(1.0, std::abs(x));
    const auto it = std::find_if(series.points.begin(), series.points.end(),
                                 [&](const Point& p) { return std::abs(p.x - x) <= tolerance; });
    return it == series.points.end() ? nullptr : &*it;
}

const QString kSeparator = QStringLiteral(" \u00b7 ");

}  // namespace

QString readoutText(const ChartModel& model, const NearestPoint& found,
                    const ReadoutFormatter& format) {
    const auto slot = static_cast<std::size_t>(found.slot);
    const Series& series = found.reference ? model.referenceSeries[slot] : model.series[slot];
    const Point& point = series.points[static_cast<std::size_t>(found.index)];
    const QString text =
        format ? format(model, series, point) : defaultReadoutText(model, series, point);
    if (model.referenceSeries.empty())
        return text;
    const Series* other = nullptr;
    if (found.reference && slot < model.series.size())
        other = &model.series[slot];
    else if (!found.reference && slot < model.referenceSeries.size())
        other = &model.referenceSeries[slot];
    const Point* match = other != nullptr ? pointAt(*other, point.x) : nullptr;
    if (match == nullptr) {
        return found.reference ? QObject::tr("Reference") + kSeparator + text + kSeparator +
                                     QObject::tr("not in this document")
                               : text + kSeparator + QObject::tr("no reference value");
    }
    const QString unit = unitOf(model.left);
    const double mine = found.reference ? match->y : point.y;
    const double theirs = found.reference ? point.y : match->y;
    const QString difference = QStringLiteral("\u0394 ") + comparedValue(mine - theirs, unit, true);
    if (found.reference) {
        return QObject::tr("Reference") + kSeparator + text + kSeparator +
               QObject::tr("document %1").arg(comparedValue(mine, unit, false)) + kSeparator +
               difference;
    }
    return text + kSeparator + QObject::tr("ref %1").arg(comparedValue(theirs, unit, false)) +
           kSeparator + difference;
}

QString defaultReadoutText(const ChartModel& model, const Series& series, const Point& point) {
    QString text = series.title.trimmed();
    if (!text.isEmpty())
        text += QStringLiteral(": ");
    // A bar of a band is labelled with the band the title already names.
    const QString label = point.label.trimmed();
    if (label.isEmpty())
        text += withUnit(point.x, unitOf(model.bottom)) + QStringLiteral(", ");
    else if (label != series.title.trimmed())
        text += label + QStringLiteral(", ");
    return text + withUnit(point.y, unitOf(model.left));
}

Readout readoutAt(const ChartModel& model, const ChartProjection& projection, const QPointF& mouse,
                  const ReadoutFormatter& format) {
    Readout readout;
    readout.mouse = mouse;
    readout.plot = projection.plotRect();
    readout.spanPlot = !projection.is3D();
    if (!model.visible || !readout.plot.contains(mouse))
        return readout;
    readout.point = projection.nearestPoint(model, mouse);
    if (!readout.point.found())
        return readout;
    const Series& series = readout.point.reference
                               ? model.referenceSeries[static_cast<std::size_t>(readout.point.slot)]
                               : model.series[static_cast<std::size_t>(readout.point.slot)];
    const Point& point = series.points[static_cast<std::size_t>(readout.point.index)];
    readout.pointPixel = projection.map(point.x, point.y, readout.point.slot);
    readout.text = readoutText(model, readout.point, format);
    readout.shown = true;
    return readout;
}

void paintReadout(QPainter& painter, const Readout& readout) {
    if (!readout.shown)
        return;
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setClipRect(readout.plot);
    painter.setPen(QPen(QColor(255, 255, 255, 150), 1, Qt::DashLine));
    const QPointF m = readout.mouse;
    constexpr double kArm = 10;
    const QRectF cross =
        readout.spanPlot ? readout.plot : QRectF(m.x() - kArm, m.y() - kArm, 2 * kArm, 2 * kArm);
    painter.drawLine(QPointF(cross.left(), m.y()), QPointF(cross.right(), m.y()));
    painter.drawLine(QPointF(m.x(), cross.top()), QPointF(m.x(), cross.bottom()));
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setPen(QPen(QColor(255, 255, 255), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawEllipse(readout.pointPixel, 4.5, 4.5);
    painter.restore();
}

}  // namespace sonalyx::chart
