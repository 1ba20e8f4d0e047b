// The document window's comparison with a reference document: what its graphs draw from,
// their left axes and the note on Panel1.
#include <QSlider>
#include <QTabWidget>
#include <utility>

#include "views/chart/chart_widget.h"
#include "views/compare/reference_note.h"
#include "views/group_delay/group_delay_view.h"
#include "views/parameters/parameters_view.h"
#include "views/reverb/reverb_view.h"
#include "views/window/mdi_child.h"
#include "views/window/panel_button.h"

void TMDIChild::SetReference(std::shared_ptr<const sonalyx::MeasurementDocument> reference,
                             const QString& title) {
    reference_.SetReference(std::move(reference), title);
    ApplyComparison();
}

const sonalyx::MeasurementDocument* TMDIChild::Reference() const {
    return reference_.Reference();
}

QString TMDIChild::ReferenceTitle() const {
    return reference_.Title();
}

QString TMDIChild::ReferenceUnmatched() const {
    return reference_.Unmatched();
}

void TMDIChild::SetDifferenceMode(DifferenceMode mode) {
    reference_.SetMode(mode);
    ApplyComparison();
}

TMDIChild::DifferenceMode TMDIChild::Difference() const {
    return reference_.Mode();
}

sonalyx::GroupDelayAxis TMDIChild::GroupDelayAxisInView() const {
    sonalyx::GroupDelayAxis axis = groupDelayAxis_;
    if (reference_.Differs()) {
        axis.base = 0;
    }
    return axis;
}

double TMDIChild::ZeroWhenDiffering(double value) const {
    return reference_.Differs() ? 0.0 : value;
}

void TMDIChild::ApplyComparison() {
    const sonalyx::MeasurementDocument* values =
        reference_.Differs() ? &reference_.Values() : nullptr;
    reverbView_->SetSources(values, reference_.Overlay());
    groupDelayView_->SetSources(values, reference_.Overlay());

    // Differences are drawn about 0: the reverb charts are re-centred as Move does, at the
    // Reverb tab's own move position; the group delay chart follows when its tab shows.
    const int move = pageControl_->currentIndex() == kReverbTab
                         ? panel1_->TrackBar(sonalyx::Track::Move)->value()
                         : tabPositions_[kReverbTab][static_cast<int>(sonalyx::Track::Move)];
    for (int i = 0; i < sonalyx::ReverbView::kCharts; ++i) {
        auto& left = reverbView_->Chart(i)->model().left;
        const auto range = sonalyx::view_axis::ReverbMove(move, left.increment,
                                                          ZeroWhenDiffering(sonalyx::kLevelBase));
        left.minimum = range.minimum;
        left.maximum = range.maximum;
        left.title = reference_.LevelTitle();
    }
    groupDelayView_->Chart101()->model().left.title = reference_.DelayTitle();

    // After minus Before is the same whichever variant is chosen.
    const bool ownStep = reference_.Mode() == DifferenceMode::AfterMinusBefore;
    panel1_->BtnEQBefore()->setEnabled(!ownStep);
    panel1_->BtnEQAfter()->setEnabled(!ownStep);

    QString difference;
    if (reference_.Mode() == DifferenceMode::FromReference) {
        difference = tr("Difference: this document minus the reference");
    } else if (ownStep) {
        difference = tr("Difference: After minus Before");
    }
    panel1_->PanelReference()->ShowComparison(reference_.Title(), reference_.Overlay() != nullptr,
                                              difference, reference_.Unmatched());

    // The sheet compares cell by cell with the reference itself, whatever the graphs show.
    parametersView_->SetReference(reference_.Reference(), reference_.Title());

    RebuildCharts(false);
    if (pageControl_->currentIndex() == kGroupDelayTab) {
        S_Zoom();
        S_Move();
    }
    emit ReferenceChanged();
}
