#include "print/report_writer.h"

#include <QObject>
#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>
#include <QSaveFile>

#include "document/document_comparison.h"
#include "print/report_content.h"
#include "print/report_page_frame.h"
#include "print/report_pagination.h"
#include "sheets/sheet_fonts.h"
#include "views/window/memo_codec.h"

namespace sonalyx {

namespace {

// The report is painted in points.
constexpr int kPointsPerInch = 72;

}  // namespace

ReportWriter::ReportWriter(const MeasurementDocument& document, QString name)
    : document_(document), name_(std::move(name)) {}

void ReportWriter::SetReference(const MeasurementDocument& reference, QString name) {
    reference_ = reference;
    aligned_ = DocumentComparison(document_, *reference_).AlignedReference();
    referenceName_ = std::move(name);
}

std::optional<ReportWriter::Paper> ReportWriter::PaperNamed(const std::string& name) {
    if (name == "a4") {
        return Paper::A4;
    }
    if (name == "letter") {
        return Paper::Letter;
    }
    return std::nullopt;
}

bool ReportWriter::Write(const QString& path, QString& error, const Progress& progress) {
    error.clear();
    pages_ = 0;
    const SheetFonts fonts(&MemoCodec::decodeLine);
    ReportContent content(document_, name_, fonts);
    if (reference_) {
        content.SetReference(&*aligned_, &*reference_, referenceName_);
    }
    const ReportBlocks blocks = content.Build();

    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) {
        error = QObject::tr("Can't write %1: %2").arg(path, file.errorString());
        return false;
    }
    QPdfWriter pdf(&file);
    pdf.setResolution(kPointsPerInch);
    pdf.setPageSize(QPageSize(paper_ == Paper::A4 ? QPageSize::A4 : QPageSize::Letter));
    pdf.setPageOrientation(QPageLayout::Portrait);
    pdf.setPageMargins(QMarginsF(0, 0, 0, 0));
    pdf.setTitle(QObject::tr("%1 - report").arg(name_));
    pdf.setCreator(QStringLiteral("Sonalyx"));
    const QRectF sheet(QPointF(0, 0), pdf.pageLayout().fullRectPoints().size());
    const auto pages = ReportPagination::Paginate(blocks, ReportPageFrame::Column(sheet));
    const ReportPageFrame frame(name_, QString::fromStdString(document_.date));
    const int total = static_cast<int>(pages.size());

    QPainter painter(&pdf);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int p = 0; p < total; ++p) {
        if (p > 0) {
            pdf.newPage();
        }
        frame.Paint(painter, sheet, p + 1, total);
        for (const auto& placed : pages[static_cast<std::size_t>(p)]) {
            placed.block->Paint(painter, placed.rect);
        }
        if (progress && !progress(p + 1, total)) {
            painter.end();
            file.cancelWriting();
            return false;
        }
    }
    if (!painter.end() || !file.commit()) {
        error = QObject::tr("Can't write %1: %2").arg(path, file.errorString());
        return false;
    }
    pages_ = total;
    return true;
}

}  // namespace sonalyx
