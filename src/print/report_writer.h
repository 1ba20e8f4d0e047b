#pragma once

#include <QString>
#include <functional>
#include <optional>
#include <string>

#include "document/measurement_document.h"

namespace sonalyx {

// The whole document as one portrait PDF, for File > Report... and sonalyx-cli report: a
// summary, the reverb charts, the decay times, the group delay charts and statistics, every
// memory's parameters, and with a reference what differs from it. Vectors and embedded fonts;
// the document's name and date head every page, "Page n of N" ends it.
class ReportWriter {
  public:
    enum class Paper { A4, Letter };
    // Told after each page is drawn; returning false stops the report (nothing is written).
    using Progress = std::function<bool(int done, int total)>;

    ReportWriter(const MeasurementDocument& document, QString name);

    // Compares with a reference document under its name; copied, so it need not outlive
    // the writer.
    void SetReference(const MeasurementDocument& reference, QString name);
    void SetPaper(Paper paper) { paper_ = paper; }
    static std::optional<Paper> PaperNamed(const std::string& name);

    // Writes the report over path through a save file, so a failed or stopped report leaves
    // what was there. False with error set when it can't be written; with error empty when
    // progress stopped it.
    bool Write(const QString& path, QString& error, const Progress& progress = {});
    int PageCount() const { return pages_; }

  private:
    const MeasurementDocument& document_;
    QString name_;
    std::optional<MeasurementDocument> reference_;
    std::optional<MeasurementDocument> aligned_;
    QString referenceName_;
    Paper paper_ = Paper::A4;
    int pages_ = 0;
};

}  // namespace sonalyx
