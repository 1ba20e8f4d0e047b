#pragma once

#include <cmath>
#include <optional>
#include <vector>

#include "views/window/view_axis.h"

namespace sonalyx {

namespace chart {
struct ChartModel;
}  // namespace chart

// The lowest and the highest value a set of charts draws on their vertical axis.
struct ValueSpan {
    double low = 0;
    double high = 0;
};

// Positions of Track_Zoom and Track_Move.
struct FitPosition {
    int zoom = 0;
    int move = 0;
};

// Fit to Data: the zoom and move positions whose vertical axis holds every value the charts
// of a tab draw, with the smallest range and, among equal ranges, the data best centred. The
// axis a pair of positions gives is the tab's own rule, passed in, so the search never
// second-guesses the handlers that will apply it.
class FitToData {
  public:
    // What the charts draw: every finite point of a bar series or of a line of two points or
    // more, own and reference curves alike, that lies within the bottom axis. Hidden charts
    // and series draw nothing. Empty when nothing is drawn.
    static std::optional<ValueSpan> DrawnSpan(const std::vector<const chart::ChartModel*>& charts);

    // Whether the range shows the whole span (a value on an edge is drawn).
    static bool Holds(const AxisRange& range, const ValueSpan& span);

    // Searches zoom 0..zoomMax and move moveMin..moveMax; axisAt(zoom, move) is the axis the
    // two positions give. When no position holds the span, the widest zoom, best centred.
    template <typename AxisAt>
    static FitPosition Search(const ValueSpan& span, const AxisAt& axisAt, int zoomMax, int moveMin,
                              int moveMax) {
        const double middle = (span.low + span.high) / 2;
        FitPosition best;
        for (int zoom = zoomMax; zoom >= 0; --zoom) {
            double bestOffset = -1;
            for (int move = moveMin; move <= moveMax; ++move) {
                const AxisRange range = axisAt(zoom, move);
                if (zoom > 0 && !Holds(range, span)) {
                    continue;
                }
                const double offset = std::abs((range.minimum + range.maximum) / 2 - middle);
                if (bestOffset < 0 || offset < bestOffset) {
                    bestOffset = offset;
                    best = {zoom, move};
                }
            }
            if (bestOffset >= 0) {
                break;
            }
        }
        return best;
    }
};

}  // namespace sonalyx
