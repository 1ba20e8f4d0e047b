#pragma once

#include <QColor>
#include <QFont>

namespace sonalyx {

// The report's type and ink, in points (the report is painted at 72 units per inch). One
// family that every PDF reader has or substitutes, embedded all the same.
class ReportStyle {
  public:
    static constexpr int kBodySize = 10;
    static constexpr int kSmallSize = 8;
    static constexpr int kHeadingSize = 16;
    static constexpr int kSubheadingSize = 12;

    static QFont Font(int points, bool bold = false);
    static QColor Ink() { return QColor(20, 20, 20); }
    static QColor Muted() { return QColor(96, 96, 96); }
    static QColor Rule() { return QColor(170, 170, 170); }
    static QColor Shade() { return QColor(236, 238, 241); }
};

}  // namespace sonalyx
