#include "views/parameters/parameters_view.h"

#include <QHBoxLayout>
#include <QHelpEvent>
#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QToolButton>
#include <QToolTip>
#include <QVBoxLayout>
#include <algorithm>

#include "sheets/sheet_painter.h"
#include "views/parameters/sheet_scroll_box.h"
#include "views/window/memo_codec.h"

using sonalyx::ParameterSheet;
using sonalyx::SheetColours;
using sonalyx::SheetComparison;
using sonalyx::SheetPainter;
using sonalyx::SheetPicture;

ParametersView::ParametersView(QWidget* parent)
    : QWidget(parent), fonts_(&sonalyx::MemoCodec::decodeLine) {
    setObjectName(QStringLiteral("ParametersView"));
    scrollBox_ = new SheetScrollBox(this);
    panel_ = new QWidget;
    panel_->setObjectName(QStringLiteral("ChartAllMemoryLong"));
    panel_->setAutoFillBackground(true);
    QPalette palette = panel_->palette();
    palette.setColor(QPalette::Window, SheetColours::screen().background);
    panel_->setPalette(palette);
    picture_ = new QLabel(panel_);
    picture_->setObjectName(QStringLiteral("ImageSheet"));
    picture_->move(0, 0);
    picture_->hide();
    picture_->installEventFilter(this);
    scrollBox_->setWidget(panel_);
    scrollBox_->setPalette(palette);

    // The count line, with a swatch of the mark so it reads as the key to the marked cells.
    panelComparison_ = new QWidget(this);
    panelComparison_->setObjectName(QStringLiteral("PanelComparison"));
    auto* swatch = new QLabel(panelComparison_);
    swatch->setFixedSize(14, 14);
    const SheetColours screen = SheetColours::screen();
    swatch->setStyleSheet(QStringLiteral("background: %1; border: 1px solid %2;")
                              .arg(screen.markBackground.name(), screen.markText.name()));
    labelComparison_ = new QLabel(panelComparison_);
    labelComparison_->setObjectName(QStringLiteral("LabelComparison"));
    labelComparison_->setTextFormat(Qt::PlainText);
    btnPrevDifference_ = new QToolButton(panelComparison_);
    btnPrevDifference_->setObjectName(QStringLiteral("BtnPrevDifference"));
    btnPrevDifference_->setArrowType(Qt::UpArrow);
    btnPrevDifference_->setToolTip(tr("Previous difference"));
    btnNextDifference_ = new QToolButton(panelComparison_);
    btnNextDifference_->setObjectName(QStringLiteral("BtnNextDifference"));
    btnNextDifference_->setArrowType(Qt::DownArrow);
    btnNextDifference_->setToolTip(tr("Next difference"));
    connect(btnPrevDifference_, &QToolButton::clicked, this, &ParametersView::PreviousDifference);
    connect(btnNextDifference_, &QToolButton::clicked, this, &ParametersView::NextDifference);
    auto* comparison = new QHBoxLayout(panelComparison_);
    comparison->setContentsMargins(4, 2, 4, 2);
    comparison->setSpacing(6);
    comparison->addWidget(swatch);
    comparison->addWidget(labelComparison_, 1);
    comparison->addWidget(btnPrevDifference_);
    comparison->addWidget(btnNextDifference_);
    panelComparison_->hide();

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(panelComparison_);
    layout->addWidget(scrollBox_, 1);
}

void ParametersView::SetDocument(sonalyx::MeasurementDocument* document) {
    document_ = document;
}

QStringList ParametersView::MemoryItems() {
    QStringList items{QStringLiteral("ALL MEMORY")};
    for (int m = 1; m <= ParameterSheet::kMemoryCount; ++m)
        items.append(QStringLiteral("MEMORY%1").arg(m));
    return items;
}

void ParametersView::SetReference(const sonalyx::MeasurementDocument* reference,
                                  const QString& title) {
    if (reference != nullptr)
        referenceLines_ = reference->parameterLines;
    else
        referenceLines_.reset();
    referenceTitle_ = title;
    BuildParameterSheet();
}

void ParametersView::SetMemory(int memory) {
    memory_ = std::clamp(memory, 0, ParameterSheet::kMemoryCount);
    BuildParameterSheet();
}

bool ParametersView::BuildParameterSheet() {
    picture_->hide();
    sheet_ = SheetPicture();
    comparison_ = SheetComparison();
    currentDifference_ = -1;
    ParameterSheet sheet(fonts_);
    // Parsing writes the distances back in display units, so a later save keeps them so.
    if (document_ == nullptr || !sheet.Parse(document_->parameterLines)) {
        scrollBox_->SetSheetSize(QSize());
        panelComparison_->hide();
        return false;
    }
    sheet_ = sheet.BuildScreen(memory_);
    ShowComparison(CompareWithReference());
    SheetPainter painter(fonts_, SheetColours::screen());
    painter.SetMarked(comparison_.DifferingOps());
    const QImage image = painter.image(sheet_, devicePixelRatioF());
    picture_->setPixmap(QPixmap::fromImage(image));
    picture_->resize(sheet_.width, sheet_.height);
    scrollBox_->SetSheetSize(picture_->size());
    picture_->show();
    return true;
}

bool ParametersView::CompareWithReference() {
    if (!referenceLines_)
        return false;
    // A copy, since parsing rewrites the distance rows and the lines are the other window's.
    std::vector<std::string> lines = *referenceLines_;
    ParameterSheet reference(fonts_);
    if (!sonalyx::hasParameterRows(lines) || !reference.Parse(lines))
        return false;
    comparison_ = SheetComparison(sheet_, reference.BuildScreen(memory_));
    return true;
}

void ParametersView::ShowComparison(bool referenceSheet) {
    panelComparison_->setVisible(referenceLines_.has_value());
    const bool any = comparison_.DifferingCells() > 0;
    btnPrevDifference_->setEnabled(any);
    btnNextDifference_->setEnabled(any);
    if (!referenceLines_)
        return;
    if (!referenceSheet) {
        labelComparison_->setText(tr("%1 has no parameters to compare with.").arg(referenceTitle_));
        labelComparison_->setToolTip(QString());
        return;
    }
    const int count = comparison_.DifferingCells();
    QString text = count == 0   ? tr("No cells differ from %1").arg(referenceTitle_)
                   : count == 1 ? tr("1 cell differs from %1").arg(referenceTitle_)
                                : tr("%1 cells differ from %2").arg(count).arg(referenceTitle_);
    // Rows one document has and the other lacks (another speaker layout) are named apart,
    // so the count does not pass them off as changed values.
    if (const int absent = comparison_.CellsWithoutCounterpart(); absent > 0)
        text += tr(", %1 of them not in it").arg(absent);
    if (const int lacking = comparison_.ReferenceOnlyCells(); lacking > 0) {
        text += lacking == 1 ? tr("; 1 of its cells is not on this sheet")
                             : tr("; %1 of its cells are not on this sheet").arg(lacking);
    }
    labelComparison_->setText(text);
    labelComparison_->setToolTip(TablesWithDifferences());
}

// "Speaker Setting: 1, Channel Level: 4": where to look on a tall sheet, in drawing order.
QString ParametersView::TablesWithDifferences() const {
    std::vector<std::pair<std::string, int>> tables;
    for (const sonalyx::CellDifference& difference : comparison_.Differences()) {
        if (tables.empty() || tables.back().first != difference.table)
            tables.emplace_back(difference.table, 0);
        ++tables.back().second;
    }
    QStringList parts;
    for (const auto& [table, count] : tables) {
        parts.append(QStringLiteral("%1: %2").arg(fonts_.text(table), QString::number(count)));
    }
    return parts.join(QStringLiteral(", "));
}

QRect ParametersView::CellRect(const sonalyx::SheetOp& op) const {
    // Free-running texts (the last cell of a row) own the width they are drawn in.
    const int width = op.width > 0 ? op.width : fonts_.width(op.text, op.font);
    return QRect(op.x, op.y, std::max(width, 1), fonts_.height(op.font));
}

void ParametersView::NextDifference() {
    StepDifference(1);
}

void ParametersView::PreviousDifference() {
    StepDifference(-1);
}

void ParametersView::StepDifference(int step) {
    const int count = comparison_.DifferingCells();
    if (count == 0)
        return;
    currentDifference_ = currentDifference_ < 0 && step < 0
                             ? count - 1
                             : (currentDifference_ + step + count) % count;
    const auto& difference =
        comparison_.Differences()[static_cast<std::size_t>(currentDifference_)];
    const QRect cell = CellRect(sheet_.ops[difference.op]);
    constexpr int kMargin = 60;  // some of the table around the cell stays in view
    scrollBox_->ensureVisible(cell.center().x(), cell.center().y(), kMargin, kMargin);
    QToolTip::showText(picture_->mapToGlobal(cell.bottomLeft()), DifferenceText(cell.center()),
                       picture_);
}

QString ParametersView::DifferenceText(const QPoint& sheetPoint) const {
    for (const sonalyx::CellDifference& difference : comparison_.Differences()) {
        if (!CellRect(sheet_.ops[difference.op]).contains(sheetPoint))
            continue;
        if (!difference.inReference)
            return tr("Not in %1").arg(referenceTitle_);
        if (difference.referenceText.empty())
            return tr("Empty in %1").arg(referenceTitle_);
        return QStringLiteral("%1: %2").arg(referenceTitle_, fonts_.text(difference.referenceText));
    }
    return {};
}

bool ParametersView::eventFilter(QObject* watched, QEvent* event) {
    if (watched == picture_ && event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const QString text = DifferenceText(help->pos());
        if (text.isEmpty())
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), text, picture_);
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

bool ParametersView::ParameterPage(int page, int pageCount, SheetPicture& out) const {
    ParameterSheet sheet(fonts_);
    if (document_ == nullptr || !sheet.Parse(document_->parameterLines))
        return false;
    out = sheet.BuildPage(
        memory_, page, pageCount,
        sonalyx::MemoCodec::asUtf8(document_->fileMemos[sonalyx::kParametersSection]));
    return true;
}

QImage ParametersView::BuildParameterPage(int page, int pageCount) const {
    SheetPicture picture;
    if (!ParameterPage(page, pageCount, picture))
        return QImage();
    return SheetPainter(fonts_, SheetColours::paper()).image(picture);
}

bool ParametersView::PaintParameterPage(QPainter& painter, int page, int pageCount) const {
    SheetPicture picture;
    if (!ParameterPage(page, pageCount, picture))
        return false;
    SheetPainter(fonts_, SheetColours::paper()).paint(painter, picture);
    return true;
}

bool ParametersView::HasStandingWave() const {
    ParameterSheet sheet(fonts_);
    return document_ != nullptr && sheet.Parse(document_->parameterLines) &&
           sheet.HasStandingWave();
}
