#pragma once

#include <array>
#include <string>

#include "document/measurement_document.h"

namespace sonalyx {

// How the channels, groups and bands of a document find their counterparts in a reference
// document: channels by long name, groups by identity ("Surr Back" in any layout), bands by
// their caption ("1k"). Everything the views need is then a document shaped like this one:
// the reference's curves moved to this document's places, or the differences, so the same
// fillers draw them. A curve the reference lacks holds no data there; a band it lacks holds
// NaN, which the fillers leave out.
class DocumentComparison {
  public:
    DocumentComparison(const MeasurementDocument& document, const MeasurementDocument& reference);

    // Index in the reference of this document's channel position, group or band; -1 when
    // the reference has none of that name.
    int ChannelMatch(int position) const;
    int GroupMatch(int group) const;
    int BandMatch(int band) const;

    // What could not be matched, for the window: "Not in the reference: Surround Back L;
    // bands 16k" and "Only in the reference: ...", joined by ". "; empty when all match.
    std::string UnmatchedText() const;

    // The reference's values at this document's channels, groups and bands.
    MeasurementDocument AlignedReference() const;
    // This document minus the reference, point by point (dB on the reverb curves, ms on the
    // group delay curves), where both hold data.
    MeasurementDocument Difference() const;

  private:
    const MeasurementDocument& document_;
    const MeasurementDocument& reference_;
    std::array<int, kMaxPositions> channels_{};
    std::array<int, kMaxGroups> groups_{};
    std::array<int, kMaxBands> bands_{};
};

// The document's own calibration step: its after-calibration values minus its before
// values, held in both variants so the Before/After choice shows the same curves.
MeasurementDocument AfterMinusBefore(const MeasurementDocument& document);

}  // namespace sonalyx
