#include "views/parameters_view.h"

#include <QLabel>
#include <QPainter>
#include <QPixmap>
#include <QVBoxLayout>
#include <algorithm>

#include "sheets/sheet_painter.h"
#include "views/memo_codec.h"
#include "views/sheet_scroll_box.h"

using sonalyx::ParameterSheet;
using sonalyx::SheetColours;
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
    scrollBox_->setWidget(panel_);
    scrollBox_->setPalette(palette);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(scrollBox_);
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

void ParametersView::SetMemory(int memory) {
    memory_ = std::clamp(memory, 0, ParameterSheet::kMemoryCount);
    BuildParameterSheet();
}

bool ParametersView::BuildParameterSheet() {
    picture_->hide();
    sheet_ = SheetPicture();
    ParameterSheet sheet(fonts_);
    // Parsing writes the distances back in display units, so a later save keeps them so.
    if (document_ == nullptr || !sheet.Parse(document_->parameterLines)) {
        scrollBox_->SetSheetSize(QSize());
        return false;
    }
    sheet_ = sheet.BuildScreen(memory_);
    const QImage image =
        SheetPainter(fonts_, SheetColours::screen()).image(sheet_, devicePixelRatioF());
    picture_->setPixmap(QPixmap::fromImage(image));
    picture_->resize(sheet_.width, sheet_.height);
    scrollBox_->SetSheetSize(picture_->size());
    picture_->show();
    return true;
}

bool ParametersView::ParameterPage(int page, int pageCount, SheetPicture& out) const {
    ParameterSheet sheet(fonts_);
    if (document_ == nullptr || !sheet.Parse(document_->parameterLines))
        return false;
    out = sheet.BuildPage(memory_, page, pageCount,
                          document_->fileMemos[sonalyx::kParametersSection]);
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
