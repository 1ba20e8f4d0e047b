#pragma once

#include <QMdiSubWindow>
#include <QVector>
#include <string>
#include <vector>

#include "document/document_saver.h"
#include "document/measurement_document.h"
#include "document/messenger.h"
#include "views/curve_preview.h"

class ParametersView;
class QComboBox;
class QLabel;
class QPlainTextEdit;
class QScrollArea;
class QStackedWidget;
class QTabWidget;
class QTableWidget;
class QGridLayout;

namespace sonalyx {
class ChannelCard;
}  // namespace sonalyx

// A document window: one MeasurementDocument shown on the tabs "Reverb", "Group Delay" and
// "Parameters", with the view controls on the right-hand Panel1. Its caption is the document's
// full path, or "New Data" for a received document never saved.
class TMDIChild : public QMdiSubWindow {
    Q_OBJECT

  public:
    enum Tab { kReverbTab = 0, kGroupDelayTab = 1, kParametersTab = 2 };

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
    void SetPairMode(int mode);
    int PairMode() const { return pairMode_; }
    void SetReverbVariant(int variant);
    int ReverbVariant() const { return reverbVariant_; }
    // One step of the demonstration's back-and-forth rotation of the 3D view.
    void DemoRotateStep();
    int RotationPosition() const { return rotationPosition_; }
    bool RotateBackward() const { return rotateBackward_; }

    // Redraws the current tab from the document and the view modes.
    void RebuildCharts(bool maximise);

    QTabWidget* PageControl() const { return pageControl_; }
    QWidget* Panel1() const { return panel1_; }
    ParametersView* Parameters() const { return parametersView_; }
    QComboBox* ComboChannel() const { return comboChannel_; }

  signals:
    // A "New Data" document was saved under this path from its close query or Save As.
    void SavedAs(const QString& path);
    void ModifiedChanged(bool modified);

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    QWidget* BuildReverbTab();
    QWidget* BuildGroupDelayTab();
    QWidget* BuildParametersTab();
    QWidget* BuildPanel1();
    QPlainTextEdit* BuildFileMemo(sonalyx::Section section, QWidget* parent);
    static QLabel* BuildNoDataLabel(QWidget* parent);

    void ShowDocument();
    void FillFileMemos();
    void FillReverbCards();
    void AddReverbCard(int item, const QString& longName, const QString& shortName);
    QVector<sonalyx::CurvePreview::Series> ReverbSeries(int item) const;
    bool ItemHasData(int item, int variant) const;
    void FillGroupDelay();
    void FillParameters();
    void TMDIChild_ComboChannelChange(int index);
    void UpdatePanel1();
    void UpdateReverbRange();
    void MemoEdited(std::vector<std::string>& memo, const QString& text);
    void MarkModified();

    sonalyx::Messenger& messenger_;
    sonalyx::MeasurementDocument document_;
    sonalyx::DocumentSaver saver_;

    QWidget* content_ = nullptr;
    QTabWidget* pageControl_ = nullptr;
    QWidget* panel1_ = nullptr;
    QPlainTextEdit* fileMemos_[3] = {};
    QStackedWidget* sectionPages_[3] = {};
    QScrollArea* scrollBox1_ = nullptr;
    QWidget* cardHost_ = nullptr;
    QGridLayout* cardGrid_ = nullptr;
    QVector<sonalyx::ChannelCard*> cards_;
    sonalyx::CurvePreview* groupDelayPreviews_[2] = {};
    QLabel* groupDelayLegend_ = nullptr;
    QTableWidget* groupDelayTable_ = nullptr;
    ParametersView* parametersView_ = nullptr;
    QComboBox* comboChannel_ = nullptr;
    QLabel* summary_ = nullptr;
    QLabel* viewState_ = nullptr;

    bool graph3D_ = true;
    int pairMode_ = 0;
    int reverbVariant_ = 0;
    int rotationPosition_ = 50;
    bool rotateBackward_ = false;
    double reverbMin_ = 53;
    double reverbMax_ = 63;
};
