#include "views/decay/form_decay_times.h"

#include <QClipboard>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QSaveFile>
#include <QTableView>
#include <QVBoxLayout>
#include <algorithm>

#include "document/decay_table_csv.h"
#include "views/decay/decay_header_view.h"
#include "views/window/memo_codec.h"

TFormDecayTimes::TFormDecayTimes(const sonalyx::MeasurementDocument& document, int pairMode,
                                 sonalyx::Messenger& messenger, QWidget* parent)
    : QDialog(parent),
      messenger_(messenger),
      documentPath_(sonalyx::MemoCodec::decodeLine(document.fileName)),
      channels_(sonalyx::buildDecayTable(document, false)),
      groups_(sonalyx::buildDecayTable(document, true)),
      model_(this) {
    setObjectName(QStringLiteral("FormDecayTimes"));
    setWindowTitle(tr("Decay Times - %1").arg(QFileInfo(documentPath_).fileName()));

    comboRows_ = new QComboBox(this);
    comboRows_->setObjectName(QStringLiteral("ComboRows"));
    comboRows_->addItems({tr("Each channel"), tr("Channel groups")});
    comboFigure_ = new QComboBox(this);
    comboFigure_->setObjectName(QStringLiteral("ComboFigure"));
    comboFigure_->addItems({tr("Reverberation time RT60 [ms]"), tr("Decay rate [dB/s]")});
    auto* controls = new QHBoxLayout;
    controls->addWidget(new QLabel(tr("Rows:"), this));
    controls->addWidget(comboRows_);
    controls->addSpacing(16);
    controls->addWidget(new QLabel(tr("Show:"), this));
    controls->addWidget(comboFigure_);
    controls->addStretch(1);

    auto* method = new QLabel(
        tr("Decay rate: least-squares slope of the 5-160 ms curve; RT60 = 60 dB / rate. "
           "Change = after - before. \u2014 where a curve has no data or does not fall."),
        this);
    method->setObjectName(QStringLiteral("LabelMethod"));
    method->setWordWrap(true);

    labelNoData_ = new QLabel(tr("No reverb data in this document."), this);
    labelNoData_->setObjectName(QStringLiteral("LabelNoData"));
    labelReference_ = new QLabel(this);
    labelReference_->setObjectName(QStringLiteral("LabelReference"));
    labelReference_->setTextFormat(Qt::PlainText);
    labelReference_->setWordWrap(true);
    labelReference_->hide();

    tableDecay_ = new QTableView(this);
    tableDecay_->setObjectName(QStringLiteral("TableDecay"));
    tableDecay_->setHorizontalHeader(new sonalyx::DecayHeaderView(tableDecay_));
    tableDecay_->setModel(&model_);
    tableDecay_->setSelectionMode(QAbstractItemView::ContiguousSelection);
    tableDecay_->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    tableDecay_->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);

    // The view's own Copy takes only the current cell; ours takes the selection.
    tableDecay_->installEventFilter(this);

    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    btnExport_ = buttons->addButton(tr("Export CSV..."), QDialogButtonBox::ActionRole);
    btnExport_->setObjectName(QStringLiteral("BtnExport"));
    buttons->button(QDialogButtonBox::Close)->setObjectName(QStringLiteral("BtnClose"));
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    connect(btnExport_, &QPushButton::clicked, this, &TFormDecayTimes::BtnExportClick);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(controls);
    layout->addWidget(method);
    layout->addWidget(labelReference_);
    layout->addWidget(labelNoData_);
    layout->addWidget(tableDecay_, 1);
    layout->addWidget(buttons);

    comboRows_->setCurrentIndex(pairMode == 1 ? 1 : 0);
    ShowTable();
    connect(comboRows_, &QComboBox::currentIndexChanged, this, &TFormDecayTimes::ComboRowsChange);
    connect(comboFigure_, &QComboBox::currentIndexChanged, this,
            &TFormDecayTimes::ComboFigureChange);
    resize(960, 440);
}

void TFormDecayTimes::SetReference(const sonalyx::MeasurementDocument* reference,
                                   const QString& title) {
    const QString name = QFileInfo(documentPath_).fileName();
    if (reference != nullptr) {
        referenceChannels_ = sonalyx::buildDecayTable(*reference, false);
        referenceGroups_ = sonalyx::buildDecayTable(*reference, true);
        setWindowTitle(tr("Decay Times - %1 compared with %2").arg(name, title));
    } else {
        referenceChannels_.reset();
        referenceGroups_.reset();
        setWindowTitle(tr("Decay Times - %1").arg(name));
    }
    referenceTitle_ = title;
    ShowTable();
}

void TFormDecayTimes::ShowTable() {
    const bool groups = comboRows_->currentIndex() == 1;
    model_.setTable(groups ? groups_ : channels_);
    const auto& reference = groups ? referenceGroups_ : referenceChannels_;
    if (reference)
        model_.addColumnSet(tr("Reference"), *reference);
    const bool empty = model_.table().empty();
    labelNoData_->setVisible(empty);
    btnExport_->setEnabled(!empty);
    ShowReferenceNote();
}

namespace {

// The names of `theirs` that `ours` lacks, for the user to read.
QStringList missingNames(const std::vector<std::string>& theirs,
                         const std::vector<std::string>& ours) {
    QStringList missing;
    for (const std::string& name : theirs) {
        if (std::find(ours.begin(), ours.end(), name) == ours.end())
            missing.append(sonalyx::MemoCodec::decodeLine(name));
    }
    return missing;
}

}  // namespace

// Names the reference, and what of it this document has no row or band for: those figures
// have no place in the table, and a user comparing two layouts should not have to hunt for
// them.
void TFormDecayTimes::ShowReferenceNote() {
    const bool groups = comboRows_->currentIndex() == 1;
    const auto& reference = groups ? referenceGroups_ : referenceChannels_;
    labelReference_->setVisible(reference.has_value());
    if (!reference)
        return;
    QString note = tr("Reference columns: %1.").arg(referenceTitle_);
    if (reference->empty())
        note += QLatin1Char(' ') + tr("It has no reverb data.");
    const QStringList items = missingNames(reference->items, model_.table().items);
    if (!items.isEmpty()) {
        note += QLatin1Char(' ') + (groups ? tr("Its groups not in this document: %1.")
                                           : tr("Its channels not in this document: %1."))
                                       .arg(items.join(QStringLiteral(", ")));
    }
    const QStringList bands = missingNames(reference->bands, model_.table().bands);
    if (!bands.isEmpty()) {
        note += QLatin1Char(' ') +
                tr("Its bands not in this document: %1.").arg(bands.join(QStringLiteral(", ")));
    }
    labelReference_->setText(note);
}

void TFormDecayTimes::ComboRowsChange(int) {
    ShowTable();
}

void TFormDecayTimes::ComboFigureChange(int index) {
    model_.setFigure(index == 1 ? sonalyx::DecayTimesModel::Figure::Rate
                                : sonalyx::DecayTimesModel::Figure::Rt60);
}

void TFormDecayTimes::BtnExportClick() {
    // Beside the document, named after it; a received document has no folder yet.
    const QFileInfo document(documentPath_);
    const QString folder = document.isAbsolute() ? document.absolutePath() : QDir::homePath();
    const QString name =
        (document.isAbsolute() ? document.completeBaseName() : QStringLiteral("New Data")) +
        QStringLiteral(" decay times.csv");
    QFileDialog dialog(this, tr("Export Decay Times"), folder);
    dialog.setObjectName(QStringLiteral("DecayExportDialog"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(QStringLiteral("csv"));
    dialog.setNameFilters({tr("CSV Files (*.csv)"), tr("All Files (*)")});
    dialog.selectFile(name);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    ExportCsv(dialog.selectedFiles().constFirst());
}

bool TFormDecayTimes::eventFilter(QObject* watched, QEvent* event) {
    const bool copy = event->type() == QEvent::KeyPress &&
                      static_cast<QKeyEvent*>(event)->matches(QKeySequence::Copy);
    if (watched == tableDecay_ && copy) {
        CopySelection();
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

void TFormDecayTimes::CopySelection() {
    const QModelIndexList selected = tableDecay_->selectionModel()->selectedIndexes();
    if (selected.isEmpty())
        return;
    int top = selected.front().row(), bottom = top, left = selected.front().column(), right = left;
    for (const QModelIndex& index : selected) {
        top = std::min(top, index.row());
        bottom = std::max(bottom, index.row());
        left = std::min(left, index.column());
        right = std::max(right, index.column());
    }
    QStringList lines;
    for (int row = top; row <= bottom; ++row) {
        QStringList cells;
        for (int column = left; column <= right; ++column)
            cells.append(model_.index(row, column).data().toString());
        lines.append(cells.join(QLatin1Char('\t')));
    }
    QGuiApplication::clipboard()->setText(lines.join(QLatin1Char('\n')));
}

bool TFormDecayTimes::ExportCsv(const QString& path) {
    const std::string text = sonalyx::decayTableCsv(model_.table(), model_.reference());
    QSaveFile file(path);
    // QSaveFile writes beside the target and renames at commit: a full disk or a refused
    // folder leaves the old file (or none) in place.
    const bool written = file.open(QIODevice::WriteOnly) &&
                         file.write(text.data(), static_cast<qint64>(text.size())) ==
                             static_cast<qint64>(text.size()) &&
                         file.commit();
    if (!written) {
        const QString reason = file.errorString();
        file.cancelWriting();
        messenger_.show(
            tr("Can't write the file.").toStdString(),
            QStringLiteral("%1 (%2)").arg(QDir::toNativeSeparators(path), reason).toStdString(),
            sonalyx::MessageMode::OkFitted);
    }
    return written;
}
