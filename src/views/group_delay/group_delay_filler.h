#pragma once

#include <QColor>
#include <QString>
#include <QStringList>

#include "document/measurement_document.h"
#include "views/chart/chart_model.h"
#include "views/reverb/reverb_filler.h"

namespace sonalyx {

// What the group delay chart is asked to show; the document window keeps these.
struct GroupDelaySelection {
    int variant = 0;     // 0: before calibration, 1: after
    int comboIndex = 0;  // 0: "ALL", g + 1: group g alone
    bool barMode = false;
    bool view3D = true;
    int band = 0;             // 0..63, the frequency band a bar graph shows
    int windowWidth = 0;      // of the document window: how many frequency labels fit
    bool difference = false;  // the values are differences: bars rise or fall from 0
};

// Fills Chart101 from the document's group delay data: one curve per channel group over the
// 64 bands, or one band as bars. Like the reverb filler it never touches the left axis,
// which belongs to the zoom and move controls; bars start at its current minimum.
class GroupDelayFiller {
  public:
    GroupDelayFiller(const MeasurementDocument& doc, const GroupDelaySelection& selection);

    static void InitChartDesign(chart::ChartModel& model);
    // The curve and swatch colour of a channel group, by its identity, so that a group looks
    // the same in every layout.
    static QColor GroupColour(int groupId);
    // The label of band's point: the bottom axis's frequency scale for a window this wide.
    static QString PointLabel(int band, int windowWidth, bool view3D);

    int GroupCount() const;
    QString GroupName(int g) const;
    bool GroupShown(int g) const;
    // "ALL" and then the groups.
    QStringList ComboItems() const;
    QStringList LegendCaptions() const;

    void FillLineChart(chart::ChartModel& model, Swatches& swatches) const;
    // One band as bars: side by side along a bottom axis of groups in 2D; in 3D each group's
    // bar stands at the band's place on the frequency axis, in its own depth row.
    void FillBarChart(chart::ChartModel& model, Swatches& swatches) const;

  private:
    void Begin(chart::ChartModel& model, Swatches& swatches) const;

    const MeasurementDocument& doc_;
    GroupDelaySelection selection_;
};

}  // namespace sonalyx
