#include "views/chart/chart_ticks.h"

#include <algorithm>
#include <cmath>

#include "views/chart/axis_value_format.h"
#include "views/chart/chart_style.h"

namespace sonalyx::chart {

namespace {

constexpr double kMaxIntervals = 500;

double roundStep(double span) {
    const double raw = span / 10.0;
    const double decade = std::pow(10.0, std::floor(std::log10(raw)));
    for (const double m : {1.0, 2.0, 5.0}) {
        if (raw <= m * decade) {
            return m * decade;
        }
    }
    return 10.0 * decade;
}

// The bottom axis counts milliseconds or bands: plain numbers, no forced decimals.
const QString kPlainNumber = QStringLiteral("0.######");

void valueTicks(const Axis& axis, const QString& picture, const ChartStyle& style,
                std::vector<Tick>& out) {
    const double step = effectiveIncrement(axis);
    if (!(step > 0) || !(axis.maximum > axis.minimum)) {
        return;
    }
    // Grid lines stand at whole multiples of the increment, as on any measuring scale.
    const double first = std::ceil(axis.minimum / step - 1e-9);
    const double last = std::floor(axis.maximum / step + 1e-9);
    for (double k = first; k <= last; ++k) {
        Tick t;
        t.value = k * step;
        if (axis.visible) {
            t.text = formatAxisValue(t.value, picture);
            t.width = style.textWidth(t.text);
        }
        out.push_back(std::move(t));
    }
}

// The labelled points of every visible series, one per position: curves that share their
// labels give them once, bars standing side by side (one series each) give one apiece.
bool pointLabelTicks(const ChartModel& model, const ChartStyle& style, std::vector<Tick>& out) {
    bool labelled = false;
    for (const Series& series : model.series) {
        if (!series.visible) {
            continue;
        }
        for (const Point& p : series.points) {
            if (p.label.isEmpty()) {
                continue;
            }
            labelled = true;
            const double x = p.x + series.labelOffset;
            if (x < model.bottom.minimum || x > model.bottom.maximum ||
                std::any_of(out.begin(), out.end(), [&](const Tick& t) { return t.value == x; })) {
                continue;
            }
            Tick t;
            t.value = x;
            if (model.bottom.visible && !p.label.trimmed().isEmpty()) {
                t.text = p.label;
                t.width = style.textWidth(t.text);
            }
            out.push_back(std::move(t));
        }
    }
    std::stable_sort(out.begin(), out.end(),
                     [](const Tick& a, const Tick& b) { return a.value < b.value; });
    return labelled;
}

void depthTicks(const ChartModel& model, const ChartStyle& style, int depthSlots,
                std::vector<Tick>& out) {
    for (int slot = 0; slot < depthSlots && slot < kSeriesSlots; ++slot) {
        Tick t;
        t.value = slot;
        if (model.depth.visible) {
            t.text = model.series[static_cast<std::size_t>(slot)].title.trimmed();
            t.width = t.text.isEmpty() ? 0 : style.textWidth(t.text);
        }
        out.push_back(std::move(t));
    }
}

double widest(const std::vector<Tick>& ticks) {
    double w = 0;
    for (const Tick& t : ticks) {
        w = std::max(w, t.width);
    }
    return w;
}

}  // namespace

double effectiveIncrement(const Axis& axis) {
    const double span = axis.maximum - axis.minimum;
    if (!(span > 0) || !std::isfinite(span)) {
        return 0;
    }
    if (axis.increment > 0 && span / axis.increment <= kMaxIntervals) {
        return axis.increment;
    }
    return roundStep(span);
}

ChartTicks::ChartTicks(const ChartModel& model, const ChartStyle& style, bool view3d,
                       int depthSlots) {
    valueTicks(model.left, model.left.valueFormat, style, left);
    if (!pointLabelTicks(model, style, bottom)) {
        valueTicks(model.bottom, kPlainNumber, style, bottom);
    }
    if (view3d) {
        depthTicks(model, style, depthSlots, depthNames);
        const auto step = static_cast<std::size_t>(
            std::max(1, static_cast<int>(std::lround(model.depth.increment))));
        for (std::size_t i = 0; i < depthNames.size(); i += step) {
            depth.push_back(depthNames[i]);
        }
    }

    const double line = style.lineHeight();
    const double gap = style.gap();
    const bool leftTitle = model.left.visible && !model.left.title.trimmed().isEmpty();
    const bool bottomTitle = model.bottom.visible && !model.bottom.title.trimmed().isEmpty();
    const bool depthTitle = view3d && model.depth.visible && !model.depth.title.trimmed().isEmpty();
    const double leftLabels = widest(left);
    room.left = (leftLabels > 0 ? leftLabels + gap : 0) + (leftTitle ? line + 2 * gap : 0);
    room.top = line / 2;
    room.bottom = (widest(bottom) > 0 ? line + gap : 0) + (bottomTitle || depthTitle ? line : 0);
    const double lastBottom = bottom.empty() ? 0 : bottom.back().width / 2;
    room.right = std::max(lastBottom, view3d ? widest(depthNames) + gap : 0.0);
}

}  // namespace sonalyx::chart
