#pragma once

#include <QString>

#include "document/measurement_document.h"

namespace sonalyx {

// The group delay axis values a document window derives from the span read off the group
// delay section: the axis centre, the step of one zoom position and the move position at
// which the axis is not shifted.
struct GroupDelayAxis {
    float span = 1.8f;
    float base = 0.9f;
    float scale = 0.38f;
    int moveRef = 0;
    int moveExtent = 0;  // the usable top of Track_Move

    static GroupDelayAxis FromSpan(float span);
};

// A vertical axis range as the zoom and move controls compute it.
struct AxisRange {
    double minimum = 0;
    double maximum = 0;
    double increment = 0;
};

namespace view_axis {

// Reverb zoom: keeps the current centre, ten steps of (20 - zoom) / 2 dB.
AxisRange ReverbZoom(int zoom, double currentMin, double currentMax);
// Reverb move: re-centres on the level base (0 for a difference view), one dB per position,
// inverted.
AxisRange ReverbMove(int move, double increment, double base = kLevelBase);
AxisRange GroupDelayZoom(int zoom, int move, const GroupDelayAxis& axis);
AxisRange GroupDelayMove(int move, double increment, const GroupDelayAxis& axis);

// EditTimeSlice's caption: a 5 ms window on the Reverb tab, a frequency band otherwise.
QString ReverbTimeSliceCaption(int position);
QString GroupDelayBandCaption(int band);

}  // namespace view_axis
}  // namespace sonalyx
