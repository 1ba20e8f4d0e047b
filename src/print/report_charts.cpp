#include "print/report_charts.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "views/compare/reference_overlay.h"
#include "views/group_delay/group_delay_filler.h"
#include "views/reverb/reverb_filler.h"

namespace sonalyx {

namespace {

constexpr double kLevelSpan = 4;    // dB: a flat curve still gets an axis that reads
constexpr double kDelaySpan = 0.5;  // ms

void PaperDesign(chart::ChartModel& model) {
    model.view.enabled = false;
    model.background = Qt::white;
    model.margins = chart::Margins{8, 8, 5, 10};
    for (chart::Axis* axis : {&model.left, &model.bottom, &model.depth}) {
        axis->titleColour = Qt::black;
    }
}

ReverbSelection ReverbFlat(bool groups, int variant) {
    ReverbSelection selection;
    selection.pairMode = groups ? 1 : 0;
    selection.variant = variant;
    selection.view3D = false;
    return selection;
}

void FillReverb(const ReportCharts::Curves& curves, bool groups, int item,
                chart::ChartModel& model) {
    const ReverbFiller filler(*curves.document, ReverbFlat(groups, curves.variant));
    Swatches unused;
    filler.FillLineChart(model, item, filler.ItemHasData(item), unused);
}

void FillGroupDelay(const ReportCharts::Curves& curves, chart::ChartModel& model) {
    GroupDelaySelection selection;
    selection.variant = curves.variant;
    selection.view3D = false;
    // Wide enough for the frequency labels of a page's width.
    selection.windowWidth = 1024;
    Swatches unused;
    GroupDelayFiller(*curves.document, selection).FillLineChart(model, unused);
}

double NiceStep(double rough) {
    const double power = std::pow(10.0, std::floor(std::log10(rough)));
    for (const double factor : {1.0, 2.0, 5.0}) {
        if (factor * power >= rough) {
            return factor * power;
        }
    }
    return 10 * power;
}

}  // namespace

chart::ChartModel ReportCharts::Reverb(Curves solid, Curves dashed, bool groups, int item) {
    chart::ChartModel model;
    model.bottom.title = QStringLiteral("Time[msec]");
    model.left.title = QStringLiteral("Level[dB] ");
    model.left.valueFormat = QStringLiteral("#,##0.0##");
    model.depth.title = QStringLiteral("Freq[Hz]");
    PaperDesign(model);
    FillReverb(solid, groups, item, model);
    ReferenceOverlay::Attach(model, dashed.document != nullptr, [&](chart::ChartModel& scratch) {
        FillReverb(dashed, groups, item, scratch);
    });
    FitLeftAxis(model, kLevelSpan);
    return model;
}

chart::ChartModel ReportCharts::GroupDelay(Curves solid, Curves dashed) {
    chart::ChartModel model;
    GroupDelayFiller::InitChartDesign(model);
    PaperDesign(model);
    FillGroupDelay(solid, model);
    ReferenceOverlay::Attach(model, dashed.document != nullptr,
                             [&](chart::ChartModel& scratch) { FillGroupDelay(dashed, scratch); });
    FitLeftAxis(model, kDelaySpan);
    return model;
}

void ReportCharts::FitLeftAxis(chart::ChartModel& model, double minimumSpan) {
    double low = std::numeric_limits<double>::infinity();
    double high = -low;
    const auto take = [&](const chart::Series& series) {
        for (const chart::Point& point : series.points) {
            low = std::min(low, point.y);
            high = std::max(high, point.y);
        }
    };
    std::for_each(model.series.begin(), model.series.end(), take);
    std::for_each(model.referenceSeries.begin(), model.referenceSeries.end(), take);
    if (low > high) {
        low = 0;
        high = minimumSpan;
    }
    if (high - low < minimumSpan) {
        const double middle = (low + high) / 2;
        low = middle - minimumSpan / 2;
        high = middle + minimumSpan / 2;
    }
    const double step = NiceStep((high - low) / 10);
    model.left.minimum = std::floor(low / step) * step;
    model.left.maximum = std::ceil(high / step) * step;
    model.left.increment = step;
}

}  // namespace sonalyx
