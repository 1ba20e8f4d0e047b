#pragma once

#include <QMdiSubWindow>
#include <QVector>
#include <array>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "document/document_saver.h"
#include "document/measurement_document.h"
#include "document/messenger.h"
#include "views/compare/reference_overlay.h"
#include "views/group_delay/group_delay_filler.h"
#include "views/window/view_axis.h"
#include "views/window/view_controls.h"

class QAbstractScrollArea;
class ParametersView;
class QLabel;
class QPlainTextEdit;
class QScrollArea;
class QStackedWidget;
class QTabWidget;
class QTableWidget;
class QTimer;

namespace sonalyx {
class GroupDelayView;
class ReverbView;
namespace chart {
class ChartWidget;
}  // namespace chart
}  // namespace sonalyx

// A document window: one MeasurementDocument shown on the tabs "Reverb", "Group Delay" and
// "Parameters", with the view controls on the right-hand Panel1. Its caption is the document's
// full path, or "New Data" for a received document never saved.
class TMDIChild : public QMdiSubWindow {
    Q_OBJECT

  public:
    enum Tab { kReverbTab = 0, kGroupDelayTab = 1, kParametersTab = 2 };
    // The trackbars kept per graph tab: Zoom, Move, Elevation and Rotation.
    static constexpr int kTabTracks = 4;

    TMDIChild(const QString& caption, sonalyx::Messenger& messenger, sonalyx::FileChooser& chooser,
              QWidget* parent = nullptr);
    ~TMDIChild() override;

    // Loads the lines into the document and shows it; on failure the content stays hidden
    // and the user has been told.
    bool LoadDocument(const std::vector<std::string>& lines, const QString& fileName);

    sonalyx::MeasurementDocument& Document() { return document_; }
    const sonalyx::MeasurementDocument& Document() const { return document_; }
    QString FileName() const;
    bool IsNewData() const { return document_.isNewData(); }
    bool IsModified() const { return document_.modified; }

    // Store what the memo editors hold into the document; they already do so as the user
    // types, so this only matters for an editor whose change is still pending.
    void StoreMemos();
    bool Save();
    bool SaveAs();
    // The close query: asks whether to save a modified document. True when it may close.
    bool CloseQuery();

    // View modes the main window sets (kept for the life of the window, never saved).
    void SetGraph3D(bool on);
    bool IsGraph3D() const { return graph3D_; }
    // Each channel (0) or channel groups (1); redraws as the Ch/Freq selector does.
    void SetPairMode(int mode);
    int PairMode() const { return pairMode_; }
    int ReverbVariant() const { return reverbVariant_; }
    int GroupDelayVariant() const { return groupDelayVariant_; }
    int ChFreqMode() const;
    bool BarMode() const { return BarMode_; }
    // One step of the demonstration's back-and-forth rotation of the 3D view.
    void DemoRotateStep();
    int RotationPosition() const;
    bool RotateBackward() const { return RotateBackward_; }
    const sonalyx::GroupDelayAxis& GroupDelayAxisValues() const { return groupDelayAxis_; }

    // The look of the window while it is captured for paper: white charts with black text and
    // grid (the curve colours kept), a white box behind them, black chart titles and memos
    // drawn as ink, the control panel black on white; off again, the screen look returns.
    void SetPrintAppearance(bool on);
    bool PrintAppearance() const { return printAppearance_; }

    // Redraws the current tab from the document and the view modes: the one entry of every
    // redraw.
    void RebuildCharts(bool maximise);
    // The charts a view operation acts on: Chart1..Chart15 on the Reverb tab, Chart101 on the
    // others.
    QList<sonalyx::chart::ChartWidget*> TargetCharts() const;

    // The view operations; each applies its control's current position.
    void S_Zoom();
    void S_Move();
    void S_Elevation();
    void S_Rotation();
    void S_Perspective();
    void S_TimeSlice();
    void OnClickTimeSlice();
    void SwitchBarMode(bool on);
    // Display > Fit to Data: the tightest zoom and move whose axis holds every point the
    // tab's visible charts draw, set through the trackbars as a user would.
    void FitToData();
    void OnClickEQBefore();
    void OnClickEQAfter();
    void ChClick();
    void FreqClick();
    void RadioGroup1Click();
    void ComboChannelChange(int index);
    void OnChangeTab();
    void OnMouseWheelDown();
    void OnMouseWheelUp();
    void OnKeyDownForm(int key);

    // The step buttons: a press steps at once and repeats while held; a click steps again.
    void PerformStep(sonalyx::Step step);
    void StepMouseDown(sonalyx::Step step);
    void StepMouseUp();
    void Timer1Timer();

    // Comparison with a reference document: its curves are drawn dashed beside the window's
    // own, matched by channel, group and band. The window keeps the reference it is given
    // (closing the window it came from changes nothing); nullptr ends the comparison.
    void SetReference(std::shared_ptr<const sonalyx::MeasurementDocument> reference,
                      const QString& title);
    const sonalyx::MeasurementDocument* Reference() const;
    QString ReferenceTitle() const;
    // What the graphs show: the curves, the document minus the reference, or the document's
    // after-calibration curves minus its before curves (which needs no reference).
    using DifferenceMode = sonalyx::DifferenceMode;
    void SetDifferenceMode(DifferenceMode mode);
    DifferenceMode Difference() const;
    // What the reference lacks and what only it has, as the window shows it.
    QString ReferenceUnmatched() const;

    QTabWidget* PageControl() const { return pageControl_; }
    sonalyx::ViewControls* Panel1() const { return panel1_; }
    sonalyx::ReverbView* Reverb() const { return reverbView_; }
    sonalyx::GroupDelayView* GroupDelay() const { return groupDelayView_; }
    QTimer* Timer1() const { return timer1_; }
    ParametersView* Parameters() const { return parametersView_; }

  signals:
    // A "New Data" document was saved under this path from its close query or Save As.
    void SavedAs(const QString& path);
    void ModifiedChanged(bool modified);
    // The reference or the difference mode changed.
    void ReferenceChanged();

  protected:
    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    QWidget* BuildReverbTab();
    QWidget* BuildGroupDelayTab();
    QWidget* BuildParametersTab();
    void BuildPanel1();
    void ConnectControls();
    QPlainTextEdit* BuildFileMemo(sonalyx::Section section, QWidget* parent);
    static QLabel* BuildNoDataLabel(QWidget* parent);

    void ShowDocument();
    void FillFileMemos();
    sonalyx::ReverbSelection Selection() const;
    sonalyx::GroupDelaySelection GroupDelaySelectionNow() const;
    // The trackbars take the positions of the graph tab now shown (Track_Move its extent).
    void ApplyTabPositions();
    // Vertical wheel delta in eighths of a degree; every 120 scroll one step.
    void WheelScroll(int delta);
    void RefreshSelectors();
    void ApplyPressedLook();
    void RepaintCharts();
    QAbstractScrollArea* ScrollBoxOfTab() const;
    void ScrollBy(int dx, int dy);
    void FillGroupDelay();
    void FillParameters();
    void UpdateSummary();
    void MemoEdited(std::vector<std::string>& memo, const QString& text);
    void MarkModified();
    void ApplyComparison();
    sonalyx::GroupDelayAxis GroupDelayAxisInView() const;
    // A centre or origin of the own curves (the level base, an axis minimum), or 0 while the
    // graphs show differences.
    double ZeroWhenDiffering(double value) const;

    sonalyx::Messenger& messenger_;
    sonalyx::MeasurementDocument document_;
    sonalyx::DocumentSaver saver_;

    QWidget* content_ = nullptr;
    QTabWidget* pageControl_ = nullptr;
    sonalyx::ViewControls* panel1_ = nullptr;
    sonalyx::ReverbView* reverbView_ = nullptr;
    QTimer* timer1_ = nullptr;
    QPlainTextEdit* fileMemos_[3] = {};
    QStackedWidget* sectionPages_[3] = {};
    sonalyx::GroupDelayView* groupDelayView_ = nullptr;
    ParametersView* parametersView_ = nullptr;

    // View state of the window, never saved.
    bool graph3D_ = true;
    int pairMode_ = 0;
    int reverbVariant_ = 0;
    int groupDelayVariant_ = 0;
    int selectedChannel_ = 0;
    int selectedMemory_ = 0;  // the Parameters tab's choice of ComboChannel
    int groupDelayChannel_ = 0;
    // Zoom, move, elevation and rotation keep a position on each graph tab, so the trackbars
    // always show what the tab's charts have; positionsTab_ is the tab the trackbars show
    // now. A group delay move of -1 is not moved yet: it starts where the axis is centred.
    std::array<std::array<int, kTabTracks>, 2> tabPositions_ = {
        {{18, 20, 12, 50}, {18, -1, 12, 50}}};
    int positionsTab_ = kReverbTab;
    // Wheel delta not yet scrolled: a step is 120 units, which a touchpad sends in pieces.
    int wheelRemainder_ = 0;
    bool BarMode_ = false;
    bool printAppearance_ = false;
    std::optional<sonalyx::Step> RepeatStep_;
    bool RotateBackward_ = false;
    sonalyx::GroupDelayAxis groupDelayAxis_ = sonalyx::GroupDelayAxis::FromSpan(1.8f);
    sonalyx::ReferenceOverlay reference_{document_};
};
