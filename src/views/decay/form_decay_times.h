#pragma once

#include <QDialog>
#include <optional>

#include "document/decay_table.h"
#include "document/messenger.h"
#include "views/decay/decay_times_model.h"

class QComboBox;
class QLabel;
class QPushButton;
class QTableView;

// Display > Decay Times: how long each channel (or channel group) rings in each band, before
// and after calibration, as a table that exports as CSV. It takes its figures from the
// document when it opens and keeps no pointer to it. Another document can be compared: its
// figures follow the document's beside each band and in the CSV.
class TFormDecayTimes : public QDialog {
    Q_OBJECT

  public:
    // pairMode as the document window's: 0 each channel, 1 channel groups.
    TFormDecayTimes(const sonalyx::MeasurementDocument& document, int pairMode,
                    sonalyx::Messenger& messenger, QWidget* parent = nullptr);

    // Compares with another document, named by title: its channels or groups (whichever the
    // rows show, matched by name) get columns of their own. nullptr ends the comparison. Like
    // the document's, its figures are taken now.
    void SetReference(const sonalyx::MeasurementDocument* reference, const QString& title);

    sonalyx::DecayTimesModel& Model() { return model_; }
    QTableView* Table() const { return tableDecay_; }

    // Writes the shown table as CSV to path. On failure the user is told why and nothing is
    // left at path that was not there before. True when the file was written.
    bool ExportCsv(const QString& path);

  public slots:
    void ComboRowsChange(int index);
    void ComboFigureChange(int index);
    void BtnExportClick();
    // The selected cells as tab-separated text on the clipboard, for a spreadsheet.
    void CopySelection();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void ShowTable();
    void ShowReferenceNote();

    sonalyx::Messenger& messenger_;
    QString documentPath_;
    sonalyx::DecayTable channels_;
    sonalyx::DecayTable groups_;
    std::optional<sonalyx::DecayTable> referenceChannels_;
    std::optional<sonalyx::DecayTable> referenceGroups_;
    QString referenceTitle_;
    sonalyx::DecayTimesModel model_;

    QComboBox* comboRows_ = nullptr;
    QComboBox* comboFigure_ = nullptr;
    QLabel* labelNoData_ = nullptr;
    QLabel* labelReference_ = nullptr;
    QTableView* tableDecay_ = nullptr;
    QPushButton* btnExport_ = nullptr;
};
