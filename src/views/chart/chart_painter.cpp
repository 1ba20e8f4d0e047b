#include "views/chart/chart_painter.h"

#include <QPainter>

#include "views/chart/chart_frame.h"
#include "views/chart/chart_projection.h"
#include "views/chart/chart_style.h"
#include "views/chart/chart_ticks.h"
#include "views/chart/series_painter.h"

namespace sonalyx::chart {

void paintChart(QPainter& painter, const QRectF& rect, const ChartModel& model,
                const ChartAppearance& appearance) {
    painter.save();
    painter.setClipRect(rect, Qt::IntersectClip);
    const ChartStyle style(model, rect, appearance);
    painter.fillRect(rect, style.colours().background);
    if (!model.visible) {
        painter.restore();
        return;
    }
    const bool view3d = model.view.enabled;
    const ChartTicks ticks(model, style, view3d, ChartProjection::slotsInUse(model));
    const ChartProjection projection(model, rect, ticks.room);

    painter.setRenderHint(QPainter::Antialiasing, view3d);
    drawChartBackdrop(painter, model, style, ticks, projection);

    // Far slots first, so nearer curves cover the ones behind them. In 3D a reference
    // document's curve stands at its own slot's depth: its ribbon under the slot's curve, its
    // dashed edge over it. In 2D the reference curves come last, over everything.
    painter.setRenderHint(QPainter::Antialiasing, true);
    SeriesPainter series(painter, model, projection);
    const std::size_t references = model.referenceSeries.size();
    for (int slot = kSeriesSlots - 1; slot >= 0; --slot) {
        const auto s = static_cast<std::size_t>(slot);
        const bool referenced = view3d && s < references;
        if (referenced) {
            series.draw(model.referenceSeries[s], slot, true, SeriesPainter::Pass::Under);
        }
        series.draw(model.series[s], slot, false);
        if (referenced) {
            series.draw(model.referenceSeries[s], slot, true, SeriesPainter::Pass::Over);
        }
    }
    for (std::size_t i = view3d ? kSeriesSlots : 0; i < references; ++i) {
        series.draw(model.referenceSeries[i], static_cast<double>(i), true);
    }
    drawChartLabels(painter, rect, model, style, ticks, projection);
    painter.restore();
}

}  // namespace sonalyx::chart
