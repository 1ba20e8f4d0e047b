#include "views/window/view_axis.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "views/reverb/reverb_filler.h"

namespace sonalyx {

namespace {

// Edges of the 64 group delay bands, in Hz.
constexpr std::array<int, 65> kBandEdges = {
    0,    200,  215,  231,   249,   268,   288,   310,   334,   359,   386,   415,   447,
    481,  517,  557,  599,   644,   693,   746,   802,   863,   928,   999,   1074,  1156,
    1244, 1338, 1439, 1549,  1666,  1792,  1928,  2074,  2232,  2401,  2583,  2779,  2990,
    3216, 3460, 3723, 4005,  4309,  4636,  4987,  5365,  5772,  6210,  6681,  7188,  7733,
    8319, 8950, 9629, 10359, 11145, 11990, 12899, 13877, 14930, 16062, 17280, 18590, 20000};

// The smallest whole n with n * scale >= target.
int StepsToReach(float target, float scale) {
    if (scale <= 0) {
        return 0;
    }
    int n = static_cast<int>(std::ceil(target / scale));
    while (n > 0 && (n - 1) * scale >= target) {
        --n;
    }
    while (n * scale < target) {
        ++n;
    }
    return n;
}

QString Kilo(int hz) {
    return QString::asprintf("%5.3f", hz * 0.001);
}

}  // namespace

GroupDelayAxis GroupDelayAxis::FromSpan(float span) {
    GroupDelayAxis axis;
    axis.span = span;
    axis.base = (span + 1.0f - (-1.0f)) * 0.5f + (-1.0f);
    axis.scale = (span + 1.0f - (-1.0f)) * 0.1f;
    axis.moveRef = StepsToReach(10.0f - (span + 1.0f), axis.scale);
    axis.moveExtent = axis.moveRef + StepsToReach(4.0f, axis.scale);
    return axis;
}

namespace view_axis {

AxisRange ReverbZoom(int zoom, double currentMin, double currentMax) {
    const double step = (20 - zoom) * 0.5;
    const double centre = (currentMax + currentMin) / 2;
    return {centre - 5 * step, centre + 5 * step, step};
}

AxisRange ReverbMove(int move, double increment, double base) {
    const double shift = move - 20;
    return {base - 5 * increment - shift, base + 5 * increment - shift, increment};
}

AxisRange GroupDelayZoom(int zoom, int move, const GroupDelayAxis& axis) {
    const double step = (20 - zoom) / (8 / static_cast<double>(axis.scale));
    const int d = move - axis.moveRef;
    const double top = d > 5 ? axis.base - (d - 5) * step : axis.base + (5 - d) * step;
    return {top - 10 * step, top, step};
}

AxisRange GroupDelayMove(int move, double increment, const GroupDelayAxis& axis) {
    const double bottom = axis.base - 5 * increment - (move - axis.moveRef) * increment;
    return {bottom, bottom + 10 * increment, increment};
}

QString ReverbTimeSliceCaption(int position) {
    return QStringLiteral("%1-%2msec").arg(5 * position).arg(5 * position + 5);
}

QString GroupDelayBandCaption(int band) {
    band = std::clamp(band, 0, static_cast<int>(kBandEdges.size()) - 2);
    const int low = kBandEdges[band];
    const int high = kBandEdges[band + 1];
    if (high >= 1000) {
        return Kilo(low) + QLatin1Char('-') + Kilo(high) + QStringLiteral("kHz");
    }
    return QStringLiteral("%1-%2Hz").arg(low).arg(high);
}

}  // namespace view_axis
}  // namespace sonalyx
