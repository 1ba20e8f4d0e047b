#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "document/measurement_document.h"
#include "print/report_block.h"
#include "sheets/sheet_fonts.h"

namespace sonalyx {

using ReportBlocks = std::vector<std::unique_ptr<ReportBlock>>;

// What the report says about a document, in reading order: a summary, the reverb charts of
// every channel and channel group, the decay times, the group delay charts and statistics, the
// parameters of every memory; with a reference, its curves overlaid and what differs from it.
class ReportContent {
  public:
    ReportContent(const MeasurementDocument& document, QString name, const SheetFonts& fonts);

    // shaped: the reference moved onto this document's channels, groups and bands (as the
    // comparison overlay makes it); raw: the reference as loaded. Both outlive the content.
    void SetReference(const MeasurementDocument* shaped, const MeasurementDocument* raw,
                      QString name);

    ReportBlocks Build() const;

  private:
    void Summary(ReportBlocks& blocks) const;
    void Reverb(ReportBlocks& blocks) const;
    void ReverbItems(ReportBlocks& blocks, bool groups) const;
    void DecayTimes(ReportBlocks& blocks) const;
    void GroupDelay(ReportBlocks& blocks) const;
    void Parameters(ReportBlocks& blocks) const;
    void ParameterDifferences(ReportBlocks& blocks) const;

    const MeasurementDocument& document_;
    QString name_;
    const SheetFonts& fonts_;
    const MeasurementDocument* shaped_ = nullptr;
    const MeasurementDocument* raw_ = nullptr;
    QString referenceName_;
};

}  // namespace sonalyx
