// The view controls of the document window: selectors, trackbars, step buttons, scrolling.
#include <QAbstractScrollArea>
#include <QButtonGroup>
#include <QComboBox>
#include <QKeyEvent>
#include <QLabel>
#include <QScrollArea>
#include <QScrollBar>
#include <QSlider>
#include <QTabWidget>
#include <QTableWidget>
#include <QTimer>
#include <QWheelEvent>

#include "views/chart/chart_widget.h"
#include "views/window/mdi_child.h"

#include "views/parameters/parameters_view.h"
#include "views/parameters/sheet_scroll_box.h"
#include "views/reverb/reverb_view.h"
#include "views/window/fit_to_data.h"
#include "views/window/panel_button.h"
#include "views/window/step_button.h"

using sonalyx::Step;
using sonalyx::Track;

namespace {

constexpr int kRepeatFirstMs = 500;
constexpr int kRepeatNextMs = 60;
constexpr int kScrollStep = 32;
constexpr int kWheelStep = 120;  // one notch of a mouse wheel, in eighths of a degree
constexpr int kReverbPerspective = 25;
constexpr int kGroupDelayPerspective = 30;
constexpr int kReverbSliceMax = 31;
constexpr int kGroupDelaySliceMax = 63;
constexpr int kDefaultElevation = 12;
constexpr int kDefaultRotation = 50;
constexpr int kReverbMoveMax = 40;

// Sets a new vertical range in the order that keeps the minimum below the maximum at every
// step, as an axis that checks its bounds needs: down-shifts lower the minimum first.
void SetLeftRange(sonalyx::chart::Axis& axis, const sonalyx::AxisRange& range) {
    if (axis.maximum >= range.maximum) {
        axis.minimum = range.minimum;
        axis.maximum = range.maximum;
    } else {
        axis.maximum = range.maximum;
        axis.minimum = range.minimum;
    }
}

}  // namespace

void TMDIChild::ConnectControls() {
    auto* p = panel1_;
    const auto onChange = [this](Track track, void (TMDIChild::*apply)()) {
        QSlider* slider = panel1_->TrackBar(track);
        connect(slider, &QSlider::valueChanged, this, apply);
        slider->installEventFilter(this);
    };
    onChange(Track::Zoom, &TMDIChild::S_Zoom);
    onChange(Track::Move, &TMDIChild::S_Move);
    onChange(Track::Elevation, &TMDIChild::S_Elevation);
    onChange(Track::Rotation, &TMDIChild::S_Rotation);
    onChange(Track::TimeSlice, &TMDIChild::S_TimeSlice);
    connect(p->Perspective(), &QScrollBar::valueChanged, this, &TMDIChild::S_Perspective);
    for (int i = 0; i < sonalyx::kStepCount; ++i) {
        const auto step = static_cast<Step>(i);
        sonalyx::StepButton* button = p->StepButtonOf(step);
        connect(button, &sonalyx::StepButton::mouseDown, this,
                [this, step] { StepMouseDown(step); });
        connect(button, &sonalyx::StepButton::mouseUp, this, &TMDIChild::StepMouseUp);
        connect(button, &sonalyx::StepButton::mouseLeave, this, &TMDIChild::StepMouseUp);
        connect(button, &QToolButton::clicked, this, [this, step] { PerformStep(step); });
    }
    connect(p->BtnTimeSlice(), &sonalyx::PanelButton::clicked, this, &TMDIChild::OnClickTimeSlice);
    connect(p->BtnEQBefore(), &sonalyx::PanelButton::clicked, this, &TMDIChild::OnClickEQBefore);
    connect(p->BtnEQAfter(), &sonalyx::PanelButton::clicked, this, &TMDIChild::OnClickEQAfter);
    connect(p->Ch(), &sonalyx::PanelButton::clicked, this, &TMDIChild::ChClick);
    connect(p->Freq(), &sonalyx::PanelButton::clicked, this, &TMDIChild::FreqClick);
    connect(p->ComboChannel(), &QComboBox::currentIndexChanged, this,
            &TMDIChild::ComboChannelChange);
    for (QLabel* edit : {p->EditElevation(), p->EditRotation()}) {
        edit->installEventFilter(this);
    }
    reverbView_->ScrollBox1()->viewport()->installEventFilter(this);
}

sonalyx::ReverbSelection TMDIChild::Selection() const {
    sonalyx::ReverbSelection selection;
    selection.chFreq = ChFreqMode();
    selection.pairMode = pairMode_;
    selection.variant = reverbVariant_;
    selection.barMode = BarMode_;
    selection.view3D = graph3D_;
    selection.timeSlice = panel1_->TrackBar(Track::TimeSlice)->value();
    selection.difference = reference_.Differs();
    return selection;
}

int TMDIChild::ChFreqMode() const {
    return panel1_->RadioGroup1()->checkedId() == 1 ? 1 : 0;
}

int TMDIChild::RotationPosition() const {
    return panel1_->TrackBar(Track::Rotation)->value();
}

QList<sonalyx::chart::ChartWidget*> TMDIChild::TargetCharts() const {
    QList<sonalyx::chart::ChartWidget*> charts;
    if (pageControl_->currentIndex() == kReverbTab) {
        for (int i = 0; i < sonalyx::ReverbView::kCharts; ++i) {
            charts.append(reverbView_->Chart(i));
        }
    } else if (auto* chart101 =
                   findChild<sonalyx::chart::ChartWidget*>(QStringLiteral("Chart101"))) {
        charts.append(chart101);
    }
    return charts;
}

void TMDIChild::RepaintCharts() {
    for (auto* chart : TargetCharts()) {
        chart->update();
    }
}

sonalyx::GroupDelaySelection TMDIChild::GroupDelaySelectionNow() const {
    sonalyx::GroupDelaySelection selection;
    selection.variant = groupDelayVariant_;
    selection.comboIndex = groupDelayChannel_;
    selection.barMode = BarMode_;
    selection.view3D = graph3D_;
    selection.band = panel1_->TrackBar(Track::TimeSlice)->value();
    selection.windowWidth = width();
    selection.difference = reference_.Differs();
    return selection;
}

void TMDIChild::RefreshSelectors() {
    QComboBox* combo = panel1_->ComboChannel();
    const QSignalBlocker block(combo);
    combo->clear();
    // On the Parameters tab the same box picks the sheet's memory; each tab keeps its choice.
    if (pageControl_->currentIndex() == kParametersTab) {
        combo->addItems(ParametersView::MemoryItems());
        combo->setCurrentIndex(std::clamp(selectedMemory_, 0, combo->count() - 1));
        return;
    }
    // The Group Delay tab keeps its own choice among its own list: "ALL" and the groups.
    const bool groupDelay = pageControl_->currentIndex() == kGroupDelayTab;
    int& chosen = groupDelay ? groupDelayChannel_ : selectedChannel_;
    combo->addItems(
        groupDelay ? sonalyx::GroupDelayFiller(document_, GroupDelaySelectionNow()).ComboItems()
                   : sonalyx::ReverbFiller(document_, Selection()).ComboItems());
    combo->setCurrentIndex(std::clamp(chosen, 0, combo->count() - 1));
    chosen = combo->currentIndex();
}

void TMDIChild::ApplyTabPositions() {
    const int tab = pageControl_->currentIndex();
    if (tab == kParametersTab) {
        return;
    }
    const auto slider = [this](int track) { return panel1_->TrackBar(static_cast<Track>(track)); };
    // The positions the trackbars show belong to the tab they were set on.
    for (int track = 0; track < kTabTracks; ++track) {
        int& kept = tabPositions_[positionsTab_][track];
        if (positionsTab_ != tab || kept >= 0) {
            kept = slider(track)->value();
        }
    }
    positionsTab_ = tab;
    // On the Group Delay tab Track_Move runs from 0 to the usable extent the span gives and
    // starts at the reference position, where the axis is centred on the curves: there is
    // room to move them both ways, down to 0 and up by the steps that make 4 ms.
    const int move = static_cast<int>(Track::Move);
    int& movePosition = tabPositions_[tab][move];
    slider(move)->setRange(0, tab == kReverbTab ? kReverbMoveMax : groupDelayAxis_.moveExtent);
    if (movePosition < 0) {
        movePosition = groupDelayAxis_.moveRef;
    }
    for (int track = 0; track < kTabTracks; ++track) {
        const QSignalBlocker block(slider(track));
        slider(track)->setValue(tabPositions_[tab][track]);
        tabPositions_[tab][track] = slider(track)->value();
    }
    panel1_->EditElevation()->setText(
        QString::number(panel1_->TrackBar(Track::Elevation)->value()));
    panel1_->EditRotation()->setText(QString::number(RotationPosition()));
}

void TMDIChild::S_Zoom() {
    const auto targets = TargetCharts();
    if (targets.isEmpty()) {
        return;
    }
    const int zoom = panel1_->TrackBar(Track::Zoom)->value();
    if (pageControl_->currentIndex() == kReverbTab) {
        const auto& left = targets.front()->model().left;
        const auto range = sonalyx::view_axis::ReverbZoom(zoom, left.minimum, left.maximum);
        for (auto* chart : targets) {
            auto& model = chart->model();
            model.left.maximum = range.maximum;
            model.left.minimum = range.minimum;
            model.left.increment = range.increment;
            // Bars stand on the axis floor, wherever the zoom puts it.
            sonalyx::ReferenceOverlay::SetBarOrigins(model, ZeroWhenDiffering(range.minimum));
        }
    } else {
        const int move = panel1_->TrackBar(Track::Move)->value();
        const auto range = sonalyx::view_axis::GroupDelayZoom(zoom, move, GroupDelayAxisInView());
        for (auto* chart : targets) {
            auto& model = chart->model();
            SetLeftRange(model.left, range);
            model.left.increment = range.increment;
            sonalyx::ReferenceOverlay::SetBarOrigins(model, ZeroWhenDiffering(range.minimum));
        }
    }
    RepaintCharts();
}

void TMDIChild::S_Move() {
    const auto targets = TargetCharts();
    if (targets.isEmpty()) {
        return;
    }
    const int move = panel1_->TrackBar(Track::Move)->value();
    const double increment = targets.front()->model().left.increment;
    const bool reverb = pageControl_->currentIndex() == kReverbTab;
    const auto range =
        reverb ? sonalyx::view_axis::ReverbMove(move, increment,
                                                ZeroWhenDiffering(sonalyx::kLevelBase))
               : sonalyx::view_axis::GroupDelayMove(move, increment, GroupDelayAxisInView());
    for (auto* chart : targets) {
        auto& model = chart->model();
        SetLeftRange(model.left, range);
        sonalyx::ReferenceOverlay::SetBarOrigins(model, ZeroWhenDiffering(range.minimum));
    }
    RepaintCharts();
}

void TMDIChild::FitToData() {
    if (pageControl_->currentIndex() == kParametersTab) {
        return;
    }
    std::vector<const sonalyx::chart::ChartModel*> models;
    for (const auto* chart : TargetCharts()) {
        models.push_back(&chart->model());
    }
    const auto span = sonalyx::FitToData::DrawnSpan(models);
    if (!span) {
        return;
    }
    QSlider* zoom = panel1_->TrackBar(Track::Zoom);
    QSlider* move = panel1_->TrackBar(Track::Move);
    // The axis the two handlers leave behind: zoom sets the step, move places the range.
    const bool reverb = pageControl_->currentIndex() == kReverbTab;
    const double levelBase = ZeroWhenDiffering(sonalyx::kLevelBase);
    const sonalyx::GroupDelayAxis delayAxis = GroupDelayAxisInView();
    const auto axisAt = [&](int z, int m) {
        namespace axis = sonalyx::view_axis;
        return reverb ? axis::ReverbMove(m, axis::ReverbZoom(z, 0, 0).increment, levelBase)
                      : axis::GroupDelayMove(m, axis::GroupDelayZoom(z, m, delayAxis).increment,
                                             delayAxis);
    };
    const auto fit = sonalyx::FitToData::Search(*span, axisAt, zoom->maximum(), move->minimum(),
                                                move->maximum());
    // A trackbar already in place fires no change, so its handler is asked directly.
    const auto apply = [this](QSlider* track, int position, void (TMDIChild::*handler)()) {
        if (track->value() == position) {
            (this->*handler)();
        } else {
            track->setValue(position);
        }
    };
    apply(zoom, fit.zoom, &TMDIChild::S_Zoom);
    apply(move, fit.move, &TMDIChild::S_Move);
}

void TMDIChild::S_Elevation() {
    QSlider* track = panel1_->TrackBar(Track::Elevation);
    const auto targets = TargetCharts();
    if (!track->isEnabled() || targets.isEmpty()) {
        return;
    }
    for (auto* chart : targets) {
        chart->model().view.orthogonal = false;
        chart->model().view.elevation = 360 - track->value();
    }
    if (targets.back()->model().view.enabled) {
        panel1_->EditElevation()->setText(QString::number(track->value()));
        RepaintCharts();
    }
}

void TMDIChild::S_Rotation() {
    QSlider* track = panel1_->TrackBar(Track::Rotation);
    const auto targets = TargetCharts();
    if (targets.isEmpty()) {
        return;
    }
    for (auto* chart : targets) {
        chart->model().view.orthogonal = false;
        chart->model().view.rotation = 360 - track->value();
    }
    if (targets.back()->model().view.enabled) {
        panel1_->EditRotation()->setText(QString::number(track->value()));
    }
    RepaintCharts();
}

void TMDIChild::S_Perspective() {
    QScrollBar* bar = panel1_->Perspective();
    if (!bar->isEnabled()) {
        return;
    }
    for (auto* chart : TargetCharts()) {
        chart->model().view.orthogonal = false;
        chart->model().view.perspective = bar->value();
    }
    panel1_->EditPerspective()->setText(QString::number(bar->value()));
}

void TMDIChild::S_TimeSlice() {
    const int position = panel1_->TrackBar(Track::TimeSlice)->value();
    panel1_->EditTimeSlice()->setText(pageControl_->currentIndex() == kReverbTab
                                          ? sonalyx::view_axis::ReverbTimeSliceCaption(position)
                                          : sonalyx::view_axis::GroupDelayBandCaption(position));
    if (BarMode_) {
        RebuildCharts(false);
    }
}

void TMDIChild::SwitchBarMode(bool on) {
    panel1_->SwitchBarMode(
        on, pageControl_->currentIndex() == kReverbTab ? tr("Time Position") : tr("Frequency"));
}

void TMDIChild::OnClickTimeSlice() {
    BarMode_ = !BarMode_;
    SwitchBarMode(BarMode_);
    RebuildCharts(false);
}

void TMDIChild::ApplyPressedLook() {
    const int variant =
        pageControl_->currentIndex() == kGroupDelayTab ? groupDelayVariant_ : reverbVariant_;
    panel1_->BtnEQBefore()->setPressed(variant == 0);
    panel1_->BtnEQAfter()->setPressed(variant == 1);
    panel1_->Ch()->setPressed(ChFreqMode() == 0);
    panel1_->Freq()->setPressed(ChFreqMode() == 1);
}

void TMDIChild::OnClickEQBefore() {
    if (panel1_->BtnEQBefore()->isPressed()) {
        return;
    }
    (pageControl_->currentIndex() == kGroupDelayTab ? groupDelayVariant_ : reverbVariant_) = 0;
    ApplyPressedLook();
    RebuildCharts(false);
}

void TMDIChild::OnClickEQAfter() {
    if (panel1_->BtnEQAfter()->isPressed()) {
        return;
    }
    (pageControl_->currentIndex() == kGroupDelayTab ? groupDelayVariant_ : reverbVariant_) = 1;
    ApplyPressedLook();
    RebuildCharts(false);
}

void TMDIChild::ChClick() {
    if (ChFreqMode() == 0) {
        return;
    }
    panel1_->RadioGroup1()->button(0)->setChecked(true);
    ApplyPressedLook();
    RadioGroup1Click();
    panel1_->ComboChannel()->setToolTip(tr("Channel"));
}

void TMDIChild::FreqClick() {
    if (ChFreqMode() == 1) {
        return;
    }
    panel1_->RadioGroup1()->button(1)->setChecked(true);
    ApplyPressedLook();
    RadioGroup1Click();
    panel1_->ComboChannel()->setToolTip(tr("Frequency"));
}

void TMDIChild::RadioGroup1Click() {
    // A chosen entry becomes the first one of the new list; "ALL" stays "ALL".
    selectedChannel_ = selectedChannel_ == 0 ? 0 : 1;
    RefreshSelectors();
    RebuildCharts(false);
}

void TMDIChild::SetPairMode(int mode) {
    pairMode_ = mode == 0 ? 0 : 1;
    RadioGroup1Click();
}

void TMDIChild::ComboChannelChange(int index) {
    if (pageControl_->currentIndex() == kParametersTab) {
        selectedMemory_ = std::max(index, 0);
        parametersView_->SetMemory(selectedMemory_);
        return;
    }
    (pageControl_->currentIndex() == kGroupDelayTab ? groupDelayChannel_ : selectedChannel_) =
        std::max(index, 0);
    RebuildCharts(false);
}

void TMDIChild::SetGraph3D(bool on) {
    graph3D_ = on;
    const Track turning[] = {Track::Elevation, Track::Rotation};
    for (const Track track : turning) {
        panel1_->TrackBar(track)->setEnabled(on);
        const int down = static_cast<int>(track) * 2;
        panel1_->StepButtonOf(static_cast<Step>(down))->setEnabled(on);
        panel1_->StepButtonOf(static_cast<Step>(down + 1))->setEnabled(on);
    }
    RebuildCharts(false);
    if (on) {
        S_Elevation();
        S_Rotation();
    }
}

void TMDIChild::OnChangeTab() {
    const bool reverb = pageControl_->currentIndex() == kReverbTab;
    ApplyTabPositions();
    RefreshSelectors();
    RebuildCharts(false);
    QSlider* slice = panel1_->TrackBar(Track::TimeSlice);
    slice->setMaximum(reverb ? kReverbSliceMax : kGroupDelaySliceMax);
    panel1_->Perspective()->setValue(reverb ? kReverbPerspective : kGroupDelayPerspective);
    S_Perspective();
    ApplyPressedLook();
    SwitchBarMode(BarMode_);
    S_TimeSlice();
    if (pageControl_->currentIndex() == kGroupDelayTab) {
        S_Zoom();
        S_Move();
    }
}

void TMDIChild::DemoRotateStep() {
    QSlider* track = panel1_->TrackBar(Track::Rotation);
    if (track->isHidden() || !graph3D_) {
        return;
    }
    if (RotateBackward_) {
        if (track->value() <= track->minimum()) {
            RotateBackward_ = false;
            return;
        }
        track->setValue(track->value() - 1);
    } else {
        if (track->value() >= track->maximum()) {
            RotateBackward_ = true;
            return;
        }
        track->setValue(track->value() + 1);
    }
}

void TMDIChild::PerformStep(Step step) {
    QSlider* track = panel1_->TrackBar(sonalyx::TrackOf(step));
    const int delta = sonalyx::DeltaOf(step);
    if ((delta < 0 && track->value() > track->minimum()) ||
        (delta > 0 && track->value() < track->maximum())) {
        track->setValue(track->value() + delta);
    }
}

void TMDIChild::StepMouseDown(Step step) {
    PerformStep(step);
    RepeatStep_ = step;
    panel1_->TrackBar(sonalyx::TrackOf(step))->setFocus(Qt::MouseFocusReason);
    timer1_->setInterval(kRepeatFirstMs);
    timer1_->start();
}

void TMDIChild::StepMouseUp() {
    RepeatStep_.reset();
    timer1_->stop();
}

void TMDIChild::Timer1Timer() {
    if (RepeatStep_) {
        PerformStep(*RepeatStep_);
    }
    timer1_->setInterval(kRepeatNextMs);
}

QAbstractScrollArea* TMDIChild::ScrollBoxOfTab() const {
    switch (pageControl_->currentIndex()) {
        case kReverbTab:
            return reverbView_->ScrollBox1();
        case kParametersTab:
            return parametersView_->ScrollBox3();
        default:
            return nullptr;
    }
}

void TMDIChild::ScrollBy(int dx, int dy) {
    if (QAbstractScrollArea* box = ScrollBoxOfTab()) {
        box->horizontalScrollBar()->setValue(box->horizontalScrollBar()->value() + dx);
        box->verticalScrollBar()->setValue(box->verticalScrollBar()->value() + dy);
    }
}

void TMDIChild::OnMouseWheelDown() {
    ScrollBy(0, kScrollStep);
}

void TMDIChild::OnMouseWheelUp() {
    ScrollBy(0, -kScrollStep);
}

void TMDIChild::OnKeyDownForm(int key) {
    switch (key) {
        case Qt::Key_Down:
            ScrollBy(0, kScrollStep);
            break;
        case Qt::Key_Up:
            ScrollBy(0, -kScrollStep);
            break;
        case Qt::Key_Right:
            ScrollBy(kScrollStep, 0);
            break;
        case Qt::Key_Left:
            ScrollBy(-kScrollStep, 0);
            break;
        default:
            break;
    }
}

void TMDIChild::keyPressEvent(QKeyEvent* event) {
    OnKeyDownForm(event->key());
    QMdiSubWindow::keyPressEvent(event);
}

void TMDIChild::WheelScroll(int delta) {
    wheelRemainder_ += delta;
    for (; wheelRemainder_ >= kWheelStep; wheelRemainder_ -= kWheelStep) {
        OnMouseWheelUp();
    }
    for (; wheelRemainder_ <= -kWheelStep; wheelRemainder_ += kWheelStep) {
        OnMouseWheelDown();
    }
}

void TMDIChild::wheelEvent(QWheelEvent* event) {
    WheelScroll(event->angleDelta().y());
    event->accept();
}

bool TMDIChild::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::FocusIn && qobject_cast<QSlider*>(watched) != nullptr) {
        // No trackbar keeps the keyboard: the arrow keys belong to the document's scrolling,
        // which the frame does for keys its content leaves alone.
        content_->setFocus(Qt::OtherFocusReason);
        return false;
    }
    if (event->type() == QEvent::Wheel && watched == reverbView_->ScrollBox1()->viewport()) {
        WheelScroll(static_cast<QWheelEvent*>(event)->angleDelta().y());
        return true;
    }
    if (event->type() == QEvent::MouseButtonRelease) {
        if (watched == panel1_->EditElevation() &&
            panel1_->TrackBar(Track::Elevation)->isEnabled()) {
            panel1_->TrackBar(Track::Elevation)->setValue(kDefaultElevation);
        } else if (watched == panel1_->EditRotation() &&
                   panel1_->TrackBar(Track::Rotation)->isEnabled()) {
            panel1_->TrackBar(Track::Rotation)->setValue(kDefaultRotation);
        }
    }
    return QMdiSubWindow::eventFilter(watched, event);
}
