#pragma once

#include <QColor>
#include <QRectF>
#include <QString>
#include <array>
#include <vector>

namespace sonalyx::chart {

inline constexpr int kSeriesSlots = 15;

// One axis of a chart. The bottom axis runs along x, the left axis along y; the depth axis
// has one step per series slot and only its increment and title matter.
struct Axis {
    double minimum = 0;
    double maximum = 1;
    double increment = 1;  // distance between labelled grid lines (0: choose one)
    QString title;
    QColor titleColour = QColor(255, 255, 0);
    QString valueFormat = QStringLiteral("#,##0.0##");
    bool visible = true;
};

enum class SeriesKind { Line, Bar };

struct Point {
    double x = 0;
    double y = 0;
    QString label;  // drawn under the bottom axis at x when not empty; " " marks a grid line
};

// One series slot. A slot with no points draws nothing.
struct Series {
    QString title;
    QColor colour = Qt::white;
    SeriesKind kind = SeriesKind::Line;
    std::vector<Point> points;
    double origin = 0;    // bars rise (or fall) from here
    double barWidth = 1;  // in bottom-axis units
    // Where point labels stand from their points: a bar moved aside to pair with a reference's
    // keeps its label under the middle of the pair.
    double labelOffset = 0;
    bool visible = true;
    // A reference measurement's curve, drawn dashed and lighter beside its own slot.
    bool reference = false;
};

struct Walls {
    bool visible = true;
    QColor back = Qt::black;
    QColor left = Qt::black;
    QColor bottom = Qt::black;
    QColor lines = QColor(64, 64, 64);  // wall edges and grid: the dark 3D shadow colour
    bool dottedGrid = true;
};

struct Margins {
    int top = 20;
    int bottom = 20;
    int left = 5;
    int right = 10;
};

// The 3D view: rotation about the vertical axis, then elevation (tilt towards the viewer),
// then perspective (0 = parallel). Angles are in degrees as the view controls set them
// (elevation 270..360, rotation 270..360). Orthogonal is the classic oblique view.
struct View3D {
    bool enabled = true;
    bool orthogonal = false;
    int elevation = 348;
    int rotation = 310;
    int perspective = 25;
    int depthPercent = 20;
};

// The plain description of one chart: what the JSON export writes and what paint() draws.
// It knows nothing of documents; the views fill it.
struct ChartModel {
    QString name;  // "Chart1" ... "Chart15", "Chart101"
    bool visible = true;
    Axis left;
    Axis bottom;
    Axis depth;
    std::array<Series, kSeriesSlots> series;
    // Curves of a reference document, drawn after (over) the slots above.
    std::vector<Series> referenceSeries;
    Walls walls;
    Margins margins;
    View3D view;
    bool clipPoints = true;
    int penWidth = 1;
    // A box laid over the chart (a note), in pixels from the chart's top left: no axis number
    // is drawn under it. Empty: none.
    QRectF keepClear;
    QColor background = QColor(0, 0, 0);
    QColor axisLabelColour = QColor(192, 192, 192);
};

}  // namespace sonalyx::chart
