#pragma once

#include <QColor>
#include <QFont>
#include <QFontMetricsF>
#include <QRectF>
#include <QString>

#include "views/chart/chart_model.h"
#include "views/chart/chart_painter.h"

namespace sonalyx::chart {

struct ChartColours {
    QColor background;
    QColor backWall;
    QColor leftWall;
    QColor bottomWall;
    QColor edges;
    QColor grid;
    QColor labels;
    QColor leftTitle;
    QColor bottomTitle;
    QColor depthTitle;
};

// Font, text sizes and colours of one chart paint. The font grows with the chart so labels stay
// readable on a small tile and in a full window; fonts and text widths are cached across paints
// because fifteen charts repaint together.
class ChartStyle {
  public:
    ChartStyle(const ChartModel& model, const QRectF& rect, const ChartAppearance& appearance);

    const QFont& font() const;
    double lineHeight() const { return lineHeight_; }
    double ascent() const { return ascent_; }
    // Space between an axis line and its labels, and between labels and a title.
    double gap() const { return gap_; }
    double textWidth(const QString& text) const;
    const ChartColours& colours() const { return colours_; }

    // The label font's pixel size for a chart of this size.
    static int pixelSizeFor(const QRectF& rect);

  private:
    struct FontEntry;
    FontEntry* entry_ = nullptr;
    double lineHeight_ = 0;
    double ascent_ = 0;
    double gap_ = 0;
    ChartColours colours_;
};

}  // namespace sonalyx::chart
