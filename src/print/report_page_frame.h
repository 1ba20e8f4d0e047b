#pragma once

#include <QRectF>
#include <QString>

class QPainter;

namespace sonalyx {

// What stands on every page of the report around its text: the document's name and date in
// the header over a rule, "Page n of N" in the footer. Measured in points on the whole sheet.
class ReportPageFrame {
  public:
    ReportPageFrame(QString name, QString date) : name_(std::move(name)), date_(std::move(date)) {}

    // The text column of a sheet of this size.
    static QRectF Column(const QRectF& sheet);
    void Paint(QPainter& painter, const QRectF& sheet, int page, int pages) const;

  private:
    QString name_;
    QString date_;
};

}  // namespace sonalyx
