#pragma once

#include <QRectF>

class QPainter;

namespace sonalyx {

// One piece of the report that is never cut across pages: a heading, a paragraph, a chart, a
// table (or a part of one), a parameter table. It is laid out in points, at the width of the
// page's text column.
class ReportBlock {
  public:
    virtual ~ReportBlock() = default;
    virtual double Height(double width) const = 0;
    virtual void Paint(QPainter& painter, const QRectF& rect) const = 0;
    // A heading: it moves to the next page with the block after it rather than end a page.
    virtual bool KeepWithNext() const { return false; }
    // The space below the block, before the next one on the same page.
    virtual double SpaceAfter() const { return 8; }
};

}  // namespace sonalyx
