#pragma once

#include <QColor>
#include <QString>
#include <QStringList>
#include <array>

#include "document/measurement_document.h"
#include "views/chart/chart_model.h"

namespace sonalyx {

// The level every reverb value is stored relative to, and the centre of the default axis.
inline constexpr double kReverbLevelBase = 58.0;
inline constexpr int kLegendEntries = 10;

// Curve colours: bands in Ch mode, channels (or groups) in Freq mode, indexed by slot.
extern const std::array<QColor, chart::kSeriesSlots> kBandColours;
extern const std::array<QColor, chart::kSeriesSlots> kChannelColours;

using Swatches = std::array<QColor, kLegendEntries>;

// What the reverb charts are asked to show; the document window keeps these.
struct ReverbSelection {
    int chFreq = 0;    // 0: one chart per channel, 1: one chart per band
    int pairMode = 0;  // 0: each channel, 1: channel groups
    int variant = 0;   // 0: before calibration, 1: after
    bool barMode = false;
    bool view3D = true;
    int timeSlice = 0;  // 0..31, the 5 ms window a bar graph shows
    // The values are differences of levels: drawn about 0 instead of the level base, and
    // bars rise or fall from 0.
    bool difference = false;
};

// Fills reverb chart descriptions from the document. It knows the item lists of each mode
// (channels or groups, bands) and writes series, colours and the legend's swatches; it never
// touches the left axis, which belongs to the zoom and move controls.
class ReverbFiller {
  public:
    ReverbFiller(const MeasurementDocument& doc, const ReverbSelection& selection);

    // Entries of the current channel list (each channel or groups).
    int ListLength() const;
    QString ItemLongName(int item) const;
    QString ItemShortName(int item) const;
    bool ItemHasData(int item) const;
    // The item whose long name this is, or -1.
    int ItemByLongName(const QString& longName) const;
    int BandCount() const;
    QString BandCaption(int band) const;
    // How many charts "ALL" shows: bands in Freq mode, else the current list.
    int ChartCount() const;
    // "ALL" and then the channels, groups or bands the selector offers.
    QStringList ComboItems() const;
    // Captions of the legend's ten titles: what the curves of a chart are.
    QStringList LegendCaptions() const;

    // One chart per item, one curve per band.
    void FillLineChart(chart::ChartModel& model, int item, bool hasData, Swatches& swatches) const;
    // One chart per band, one curve per item.
    void FillLineChartByBand(chart::ChartModel& model, int band, Swatches& swatches) const;
    // One time slice as bars: in 3D each curve's bar stands at the slice's time, in its own
    // depth row; in 2D the bars stand side by side along a bottom axis of bands or channels.
    void FillBarChart(chart::ChartModel& model, int item, bool hasData, Swatches& swatches) const;
    void FillBarChartByBand(chart::ChartModel& model, int band, Swatches& swatches) const;

  private:
    const BandCurves& ItemCurves(int item) const;
    double LevelBase() const;
    void Begin(chart::ChartModel& model, bool bars, int count, const QString& barAxisTitle) const;
    static void PaintRemainingWhite(Swatches& swatches, int from);

    const MeasurementDocument& doc_;
    ReverbSelection selection_;
};

}  // namespace sonalyx
