#pragma once

#include <QString>
#include <functional>
#include <memory>
#include <optional>

#include "document/measurement_document.h"
#include "views/chart/chart_model.h"

namespace sonalyx {

// What a document window's graphs show of a comparison.
enum class DifferenceMode {
    Off,               // the document's own curves
    FromReference,     // the document minus the reference
    AfterMinusBefore,  // the document's after-calibration curves minus its before curves
};

// A document window's comparison: the reference document, the difference mode, and what they
// make of the window's document for the charts. It keeps the documents the fillers draw from
// (the reference moved to the document's channels, groups and bands; the differences), worked
// out once when the comparison changes, so a redraw costs what it always did.
class ReferenceOverlay {
  public:
    explicit ReferenceOverlay(const MeasurementDocument& document);

    // A null reference ends the comparison (and a difference from it).
    void SetReference(std::shared_ptr<const MeasurementDocument> reference, const QString& title);
    // A difference from the reference needs one; without it the mode stays Off.
    void SetMode(DifferenceMode mode);

    const MeasurementDocument* Reference() const { return reference_.get(); }
    const QString& Title() const { return title_; }
    DifferenceMode Mode() const { return mode_; }
    bool Differs() const { return mode_ != DifferenceMode::Off; }

    // The document the charts draw: the window's own, or the differences.
    const MeasurementDocument& Values() const;
    // The curves drawn dashed beside them, shaped as the window's document; null for none.
    const MeasurementDocument* Overlay() const;
    // What the reference lacks and what only it has; empty without a reference.
    const QString& Unmatched() const { return unmatched_; }
    // The left axis titles of the reverb and the group delay charts.
    QString LevelTitle() const;
    QString DelayTitle() const;
    // Bars rise from the axis minimum, a difference's from 0.
    double BarOrigin(double axisMinimum) const { return Differs() ? 0.0 : axisMinimum; }

    // Gives the model its reference series: fillScratch fills a chart with the model's axis and
    // view from the reference, and those series join the model's; none when not overlaid. Bars
    // then stand in pairs, the document's to the left of the reference's, so neither hides
    // the other.
    static void Attach(chart::ChartModel& model, bool overlaid,
                       const std::function<void(chart::ChartModel& scratch)>& fillScratch);
    static void SetBarOrigins(chart::ChartModel& model, double origin);

  private:
    void Recompute();

    const MeasurementDocument& document_;
    std::shared_ptr<const MeasurementDocument> reference_;
    QString title_;
    DifferenceMode mode_ = DifferenceMode::Off;
    std::optional<MeasurementDocument> values_;
    std::optional<MeasurementDocument> overlay_;
    QString unmatched_;
};

}  // namespace sonalyx
