#include "views/chart/chart_readout.h"

#include <QPainter>
#include <QRegularExpression>

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

}  // namespace

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
    readout.text = format ? format(model, series, point) : defaultReadoutText(model, series, point);
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
