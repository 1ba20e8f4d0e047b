#pragma once

#include <QFrame>
#include <array>

#include "views/reverb/reverb_filler.h"

class QComboBox;
class QLabel;
class QScrollBar;
class QSlider;
class QButtonGroup;

namespace sonalyx {

class PanelButton;
class ReferenceNote;
class StepButton;

// The trackbars a view step moves.
enum class Track { Zoom, Move, Elevation, Rotation, TimeSlice };
inline constexpr int kTrackCount = 5;
// The ten step operations: Down then Up for each trackbar.
enum class Step {
    ZoomDown,
    ZoomUp,
    MoveDown,
    MoveUp,
    ElevationDown,
    ElevationUp,
    RotationDown,
    RotationUp,
    TimeSliceDown,
    TimeSliceUp
};
inline constexpr int kStepCount = 10;
inline Track TrackOf(Step step) {
    return static_cast<Track>(static_cast<int>(step) / 2);
}
inline int DeltaOf(Step step) {
    return static_cast<int>(step) % 2 == 0 ? -1 : 1;
}

// Panel1, the right-hand control panel of a document window: the data selectors, the
// channel selector, the view trackbars with their step buttons, the time-slice bar graph
// controls and the legend. It holds no view state; the document window reads and sets it.
class ViewControls : public QFrame {
    Q_OBJECT

  public:
    explicit ViewControls(QWidget* parent = nullptr);

    QSlider* TrackBar(Track track) const { return tracks_[static_cast<int>(track)]; }
    StepButton* StepButtonOf(Step step) const { return steps_[static_cast<int>(step)]; }
    QScrollBar* Perspective() const { return perspective_; }
    QLabel* EditElevation() const { return editElevation_; }
    QLabel* EditRotation() const { return editRotation_; }
    QLabel* EditPerspective() const { return editPerspective_; }
    QLabel* EditTimeSlice() const { return editTimeSlice_; }
    PanelButton* BtnTimeSlice() const { return btnTimeSlice_; }
    PanelButton* BtnEQBefore() const { return btnBefore_; }
    PanelButton* BtnEQAfter() const { return btnAfter_; }
    PanelButton* Ch() const { return ch_; }
    PanelButton* Freq() const { return freq_; }
    QButtonGroup* RadioGroup1() const { return radioGroup1_; }
    QComboBox* ComboChannel() const { return comboChannel_; }
    QWidget* PanelTimeSlice() const { return panelTimeSlice_; }
    QWidget* PanelLegend() const { return panelLegend_; }
    QLabel* Summary() const { return summary_; }
    ReferenceNote* PanelReference() const { return panelReference_; }

    // Titles and swatch colours of the ten legend entries.
    void SetLegend(const QStringList& captions, const Swatches& swatches);
    QString LegendCaption(int i) const;
    QColor LegendColour(int i) const;
    // Shows the time-slice controls (bar mode) or the legend; hint names what the slice picks.
    void SwitchBarMode(bool on, const QString& hint);
    bool BarModeShown() const { return barMode_; }
    // Ink on white for a printed capture, or the screen's dark panel again.
    void SetPaperLook(bool paper);
    // Panels at least this high have room for the legend beside the line graphs.
    static constexpr int kLegendMinHeight = 410;

  protected:
    void resizeEvent(QResizeEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* BuildSelectors();
    QWidget* BuildGraphParams();
    QWidget* BuildTimeSlice();
    QWidget* BuildLegend();
    QWidget* BuildTrackColumn(Track track, const QString& letter, const QString& hint, int max,
                              int position, QLabel* caption);
    StepButton* MakeStep(Step step, Qt::ArrowType arrow, const QString& hint);
    void UpdateLegendVisibility();
    // Lays the legend entries out in one or two columns, the captions whole where they fit.
    void ArrangeLegend();

    std::array<QSlider*, kTrackCount> tracks_{};
    std::array<StepButton*, kStepCount> steps_{};
    QScrollBar* perspective_ = nullptr;
    QLabel* editElevation_ = nullptr;
    QLabel* editRotation_ = nullptr;
    QLabel* editPerspective_ = nullptr;
    QLabel* editTimeSlice_ = nullptr;
    QWidget* editTimeSliceBorder_ = nullptr;
    PanelButton* btnTimeSlice_ = nullptr;
    PanelButton* btnBefore_ = nullptr;
    PanelButton* btnAfter_ = nullptr;
    PanelButton* ch_ = nullptr;
    PanelButton* freq_ = nullptr;
    QButtonGroup* radioGroup1_ = nullptr;
    QComboBox* comboChannel_ = nullptr;
    QWidget* panelTimeSlice_ = nullptr;
    QWidget* panelLegend_ = nullptr;
    std::array<QLabel*, kLegendEntries> legendTitles_{};
    std::array<QString, kLegendEntries> legendCaptions_{};  // whole, as the view set them
    std::array<QFrame*, kLegendEntries> shapes_{};
    QLabel* summary_ = nullptr;
    ReferenceNote* panelReference_ = nullptr;
    bool barMode_ = false;
};

}  // namespace sonalyx
