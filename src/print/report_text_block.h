#pragma once

#include <QColor>
#include <QString>

#include "print/report_block.h"

namespace sonalyx {

// A heading or a paragraph: text wrapped at the column's width. A section heading carries a
// rule beneath it; headings keep with what follows.
class ReportTextBlock : public ReportBlock {
  public:
    enum class Kind { Heading, Subheading, Paragraph, Note };

    ReportTextBlock(Kind kind, QString text);

    double Height(double width) const override;
    void Paint(QPainter& painter, const QRectF& rect) const override;
    bool KeepWithNext() const override { return kind_ != Kind::Paragraph && kind_ != Kind::Note; }
    double SpaceAfter() const override;

  private:
    QRectF TextRect(double width) const;

    Kind kind_;
    QString text_;
};

}  // namespace sonalyx
