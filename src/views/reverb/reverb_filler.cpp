#include "views/reverb/reverb_filler.h"

#include <algorithm>
#include <charconv>
#include <cmath>

#include "document/speaker_layout.h"
#include "views/window/memo_codec.h"

namespace sonalyx {

const std::array<QColor, chart::kSeriesSlots> kBandColours = {
    QColor(248, 0, 0),    QColor(232, 72, 8),  QColor(248, 160, 40), QColor(192, 216, 56),
    QColor(0, 216, 112),  QColor(0, 104, 224), QColor(80, 144, 248), QColor(144, 88, 208),
    QColor(160, 16, 124), QColor(255, 0, 0),   QColor(245, 162, 37), QColor(0, 217, 108),
    QColor(0, 101, 222),  QColor(0, 0, 0),     QColor(0, 0, 0)};

const std::array<QColor, chart::kSeriesSlots> kChannelColours = {
    QColor(0, 102, 0),     QColor(0, 153, 0),     QColor(204, 204, 0),   QColor(255, 153, 0),
    QColor(255, 51, 51),   QColor(204, 102, 255), QColor(153, 153, 255), QColor(204, 255, 255),
    QColor(178, 178, 178), QColor(206, 206, 206), QColor(230, 230, 230), QColor(252, 252, 252),
    QColor(255, 204, 153), QColor(153, 0, 204),   QColor(0, 0, 0)};

namespace {

constexpr double kSliceWidthMs = 5.0;
constexpr double kTimeAxisMax = 160.0;
constexpr double kTimeAxisStep = 10.0;
constexpr double kSideBySideBarWidth = 0.7;
constexpr double kSliceBarWidth = 4.0;

// A stored level as the decimal the document wrote (16.51, not 16.5100002).
double DecimalOf(float value) {
    char text[32];
    const auto written = std::to_chars(text, text + sizeof text, value);
    double decimal = value;
    std::from_chars(text, written.ptr, decimal);
    return decimal;
}

// The points of one curve; a value that is not a number (a band a compared document lacks)
// is left out.
void AddCurve(chart::Series& series, const Curve& curve, double base) {
    for (int t = 0; t < kTimePoints; ++t) {
        if (!std::isnan(curve[t])) {
            series.points.push_back({kSliceWidthMs * (t + 1), DecimalOf(curve[t]) + base, {}});
        }
    }
}

}  // namespace

ReverbFiller::ReverbFiller(const MeasurementDocument& doc, const ReverbSelection& selection)
    : doc_(doc), selection_(selection) {}

int ReverbFiller::ListLength() const {
    const int length = selection_.pairMode == 0 ? doc_.channelCount : doc_.groupCount;
    return std::clamp(length, 0, chart::kSeriesSlots);
}

QString ReverbFiller::ItemLongName(int item) const {
    if (item < 0 || item >= ListLength()) {
        return {};
    }
    if (selection_.pairMode == 0) {
        return MemoCodec::decodeLine(doc_.channelLongNames[item]);
    }
    return QString::fromUtf8(groupName(doc_.groupIdAt(item)));
}

QString ReverbFiller::ItemShortName(int item) const {
    if (item < 0 || item >= ListLength()) {
        return {};
    }
    if (selection_.pairMode == 0) {
        return MemoCodec::decodeLine(doc_.channelNames[item]);
    }
    return QString::fromUtf8(groupAbbreviation(doc_.groupIdAt(item)));
}

bool ReverbFiller::ItemHasData(int item) const {
    if (item < 0 || item >= ListLength()) {
        return false;
    }
    return selection_.pairMode == 0 ? doc_.positionHasData[selection_.variant][item]
                                    : doc_.groupHasData[selection_.variant][item];
}

int ReverbFiller::ItemByLongName(const QString& longName) const {
    for (int item = 0; item < ListLength(); ++item) {
        if (ItemLongName(item) == longName) {
            return item;
        }
    }
    return -1;
}

int ReverbFiller::BandCount() const {
    return std::clamp(doc_.bandCount, 0, kMaxBands);
}

QString ReverbFiller::BandCaption(int band) const {
    if (band < 0 || band >= BandCount()) {
        return {};
    }
    return MemoCodec::decodeLine(doc_.bandLabels[band]);
}

int ReverbFiller::ChartCount() const {
    return selection_.chFreq == 1 ? BandCount() : ListLength();
}

QStringList ReverbFiller::ComboItems() const {
    QStringList items{QStringLiteral("ALL")};
    if (selection_.chFreq == 1) {
        for (int b = 0; b < BandCount(); ++b) {
            items.append(BandCaption(b) + QStringLiteral("Hz"));
        }
        return items;
    }
    for (int item = 0; item < ListLength(); ++item) {
        items.append(ItemLongName(item));
    }
    return items;
}

QStringList ReverbFiller::LegendCaptions() const {
    QStringList captions;
    const int count = selection_.chFreq == 1 ? ListLength() : BandCount();
    for (int i = 0; i < kLegendEntries; ++i) {
        if (i >= count) {
            captions.append(QString());
        } else {
            captions.append(selection_.chFreq == 1 ? ItemShortName(i) : BandCaption(i));
        }
    }
    return captions;
}

double ReverbFiller::LevelBase() const {
    return selection_.difference ? 0.0 : kReverbLevelBase;
}

const BandCurves& ReverbFiller::ItemCurves(int item) const {
    return selection_.pairMode == 0 ? doc_.reverbValues[selection_.variant][item]
                                    : doc_.groupValues[selection_.variant][item];
}

void ReverbFiller::PaintRemainingWhite(Swatches& swatches, int from) {
    for (int i = std::max(from, 0); i < kLegendEntries; ++i) {
        swatches[i] = Qt::white;
    }
}

void ReverbFiller::Begin(chart::ChartModel& model, bool bars, int count,
                         const QString& barAxisTitle) const {
    model.clipPoints = true;
    model.penWidth = 1;
    for (auto& series : model.series) {
        series = chart::Series{};
        series.visible = false;
    }
    auto& bottom = model.bottom;
    bottom.valueFormat = QStringLiteral("#,##0");
    if (bars && !selection_.view3D) {
        bottom.minimum = 0;
        bottom.maximum = count;
        bottom.increment = 1;
        bottom.title = barAxisTitle;
    } else {
        bottom.minimum = 0;
        bottom.maximum = kTimeAxisMax;
        bottom.increment = kTimeAxisStep;
        bottom.title = QStringLiteral("Time[msec]");
    }
}

void ReverbFiller::FillLineChart(chart::ChartModel& model, int item, bool hasData,
                                 Swatches& swatches) const {
    const int bands = BandCount();
    Begin(model, false, bands, {});
    for (int b = 0; b < bands; ++b) {
        auto& series = model.series[b];
        series.visible = true;
        series.title = BandCaption(b);
        series.colour = kBandColours[b];
        if (b < kLegendEntries) {
            swatches[b] = series.colour;
        }
        if (!hasData || item < 0 || item >= ListLength()) {
            continue;
        }
        AddCurve(series, ItemCurves(item)[b], LevelBase());
    }
    PaintRemainingWhite(swatches, bands);
}

void ReverbFiller::FillLineChartByBand(chart::ChartModel& model, int band,
                                       Swatches& swatches) const {
    const int items = ListLength();
    Begin(model, false, items, {});
    for (int item = 0; item < items; ++item) {
        auto& series = model.series[item];
        series.visible = true;
        series.title = ItemShortName(item);
        series.colour = kChannelColours[item];
        if (item < kLegendEntries) {
            swatches[item] = series.colour;
        }
        if (!ItemHasData(item) || band < 0 || band >= BandCount()) {
            continue;
        }
        AddCurve(series, ItemCurves(item)[band], LevelBase());
    }
    PaintRemainingWhite(swatches, items);
}

void ReverbFiller::FillBarChart(chart::ChartModel& model, int item, bool hasData,
                                Swatches& swatches) const {
    const int bands = BandCount();
    Begin(model, true, bands, QStringLiteral("Freq[Hz]"));
    const int t = std::clamp(selection_.timeSlice, 0, kTimePoints - 1);
    for (int b = 0; b < bands; ++b) {
        auto& series = model.series[b];
        series.visible = true;
        series.kind = chart::SeriesKind::Bar;
        series.title = BandCaption(b);
        series.colour = kBandColours[b];
        series.origin = selection_.difference ? 0.0 : model.left.minimum;
        if (b < kLegendEntries) {
            swatches[b] = series.colour;
        }
        if (!hasData || item < 0 || item >= ListLength()) {
            continue;
        }
        const float value = ItemCurves(item)[b][t];
        if (std::isnan(value)) {
            continue;
        }
        const double level = DecimalOf(value) + LevelBase();
        if (selection_.view3D) {
            series.barWidth = kSliceBarWidth;
            series.points.push_back({kSliceWidthMs * (t + 0.5), level, {}});
        } else {
            series.barWidth = kSideBySideBarWidth;
            series.points.push_back({b + 0.5, level, series.title});
        }
    }
    PaintRemainingWhite(swatches, bands);
}

void ReverbFiller::FillBarChartByBand(chart::ChartModel& model, int band,
                                      Swatches& swatches) const {
    const int items = ListLength();
    Begin(model, true, items, QStringLiteral("Channel"));
    const int t = std::clamp(selection_.timeSlice, 0, kTimePoints - 1);
    for (int item = 0; item < items; ++item) {
        auto& series = model.series[item];
        series.visible = true;
        series.kind = chart::SeriesKind::Bar;
        series.title = ItemShortName(item);
        series.colour = kChannelColours[item];
        series.origin = selection_.difference ? 0.0 : model.left.minimum;
        if (item < kLegendEntries) {
            swatches[item] = series.colour;
        }
        if (!ItemHasData(item) || band < 0 || band >= BandCount()) {
            continue;
        }
        const float value = ItemCurves(item)[band][t];
        if (std::isnan(value)) {
            continue;
        }
        const double level = DecimalOf(value) + LevelBase();
        if (selection_.view3D) {
            series.barWidth = kSliceBarWidth;
            series.points.push_back({kSliceWidthMs * (t + 0.5), level, {}});
        } else {
            series.barWidth = kSideBySideBarWidth;
            series.points.push_back({item + 0.5, level, series.title});
        }
    }
    PaintRemainingWhite(swatches, items);
}

}  // namespace sonalyx
