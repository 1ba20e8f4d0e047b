#include "views/compare/reference_overlay.h"

#include <utility>

#include "document/document_comparison.h"

namespace sonalyx {

namespace {

// Of a pair of bars, how far each stands from the slot's centre, in bar widths.
constexpr double kPairShift = 0.25;

bool Draws(const chart::Series& series) {
    return series.visible && !series.points.empty();
}

// Halves a 2D bar and moves it aside, by the side's sign.
void Narrow(chart::Series& series, double side) {
    const double width = series.barWidth;
    series.barWidth = width / 2;
    series.labelOffset = -side * kPairShift * width;
    for (auto& point : series.points) {
        point.x += side * kPairShift * width;
    }
}

}  // namespace

ReferenceOverlay::ReferenceOverlay(const MeasurementDocument& document) : document_(document) {}

void ReferenceOverlay::SetReference(std::shared_ptr<const MeasurementDocument> reference,
                                    const QString& title) {
    reference_ = std::move(reference);
    title_ = reference_ ? title : QString();
    if (!reference_ && mode_ == DifferenceMode::FromReference) {
        mode_ = DifferenceMode::Off;
    }
    Recompute();
}

void ReferenceOverlay::SetMode(DifferenceMode mode) {
    mode_ = mode == DifferenceMode::FromReference && !reference_ ? DifferenceMode::Off : mode;
    Recompute();
}

void ReferenceOverlay::Recompute() {
    values_.reset();
    overlay_.reset();
    unmatched_.clear();
    std::optional<MeasurementDocument> aligned;
    if (reference_) {
        const DocumentComparison comparison(document_, *reference_);
        unmatched_ = QString::fromStdString(comparison.UnmatchedText());
        aligned = comparison.AlignedReference();
        if (mode_ == DifferenceMode::FromReference) {
            values_ = comparison.Difference();
        }
    }
    switch (mode_) {
        case DifferenceMode::Off:
            overlay_ = std::move(aligned);
            break;
        case DifferenceMode::FromReference:
            // The reference is the zero line itself: nothing to draw beside the differences.
            break;
        case DifferenceMode::AfterMinusBefore:
            values_ = AfterMinusBefore(document_);
            if (aligned) {
                overlay_ = AfterMinusBefore(*aligned);
            }
            break;
    }
}

const MeasurementDocument& ReferenceOverlay::Values() const {
    return values_ ? *values_ : document_;
}

const MeasurementDocument* ReferenceOverlay::Overlay() const {
    return overlay_ ? &*overlay_ : nullptr;
}

QString ReferenceOverlay::LevelTitle() const {
    return Differs() ? QStringLiteral("Difference[dB] ") : QStringLiteral("Level[dB] ");
}

QString ReferenceOverlay::DelayTitle() const {
    return Differs() ? QStringLiteral("Difference[msec] ") : QStringLiteral("Group Delay[msec] ");
}

void ReferenceOverlay::Attach(chart::ChartModel& model, bool overlaid,
                              const std::function<void(chart::ChartModel&)>& fillScratch) {
    model.referenceSeries.clear();
    if (!overlaid) {
        return;
    }
    chart::ChartModel scratch;
    scratch.left = model.left;
    scratch.view = model.view;
    fillScratch(scratch);
    model.referenceSeries.reserve(scratch.series.size());
    for (std::size_t slot = 0; slot < scratch.series.size(); ++slot) {
        chart::Series& reference = scratch.series[slot];
        chart::Series& own = model.series[slot];
        reference.reference = true;
        if (reference.kind == chart::SeriesKind::Bar && Draws(reference)) {
            Narrow(reference, 1);
            if (Draws(own)) {
                Narrow(own, -1);
            }
        }
        model.referenceSeries.push_back(std::move(reference));
    }
}

void ReferenceOverlay::SetBarOrigins(chart::ChartModel& model, double origin) {
    for (auto& series : model.series) {
        if (series.kind == chart::SeriesKind::Bar) {
            series.origin = origin;
        }
    }
    for (auto& series : model.referenceSeries) {
        if (series.kind == chart::SeriesKind::Bar) {
            series.origin = origin;
        }
    }
}

}  // namespace sonalyx
