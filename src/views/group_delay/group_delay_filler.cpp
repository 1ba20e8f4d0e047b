#include "views/group_delay/group_delay_filler.h"

#include <algorithm>
#include <array>

#include "document/speaker_layout.h"
#include "views/window/view_axis.h"

namespace sonalyx {

namespace {

// One colour per channel group identity (Front, Center, Speaker-B, Surround A, Surround B,
// Surr Back, Top Surr), kept as text the way a user's colour settings would be. They are
// chosen to stay apart from each other on the black walls.
constexpr std::array<const char*, 7> kGroupColourTexts = {
    "#ff4040", "#ffd000", "#b070ff", "#30c8ff", "#40e070", "#ff8c1a", "#ff70c0"};
constexpr const char* kFallbackColourText = "#c0c0c0";

constexpr int kBandAxisMax = 64;
constexpr int kBandLabelStep = 31;  // the bottom axis's increment once the curves are in
constexpr double kSideBySideBarWidth = 0.7;
constexpr double kBandBarWidth = 1.6;  // in bands, on the frequency axis of the 3D bars

}  // namespace

GroupDelayFiller::GroupDelayFiller(const MeasurementDocument& doc,
                                   const GroupDelaySelection& selection)
    : doc_(doc), selection_(selection) {}

void GroupDelayFiller::InitChartDesign(chart::ChartModel& model) {
    model.name = QStringLiteral("Chart101");
    model.background = Qt::black;
    model.walls = chart::Walls{};
    model.margins = chart::Margins{20, 20, 5, 10};
    model.bottom.minimum = 0;
    model.bottom.maximum = kBandAxisMax;
    model.bottom.increment = 1;
    model.bottom.title = QStringLiteral("Freq[Hz]                    ");
    model.bottom.valueFormat = QStringLiteral("#,##0");
    model.left.increment = 0.38;
    model.left.title = QStringLiteral("Group Delay[msec] ");
    model.left.valueFormat = QStringLiteral("#,##0.0##");
    model.depth.increment = 4;
    model.depth.title = QStringLiteral("Channel");
    for (chart::Axis* axis : {&model.left, &model.bottom, &model.depth}) {
        axis->titleColour = QColor(255, 255, 0);
    }
}

QColor GroupDelayFiller::GroupColour(int groupId) {
    const bool known = groupId >= 0 && groupId < static_cast<int>(kGroupColourTexts.size());
    return QColor::fromString(QLatin1String(
        known ? kGroupColourTexts[static_cast<std::size_t>(groupId)] : kFallbackColourText));
}

QString GroupDelayFiller::PointLabel(int band, int windowWidth, bool view3D) {
    QString label;
    if (band == 0) {
        label = QStringLiteral("200");
    } else if (band == 31) {
        label = windowWidth >= 301 ? QStringLiteral("2kHz") : QStringLiteral(" ");
    } else if (band == 63) {
        label = QStringLiteral("20kHz");
    }
    if (label.isEmpty()) {
        // Narrower windows keep fewer grid positions.
        const int n = band + 1;
        const int every = windowWidth >= 601   ? 4
                          : windowWidth >= 451 ? 8
                          : windowWidth >= 321 ? 16
                                               : 0;
        if (every > 0 && n % every == 0) {
            label = QStringLiteral(" ");
        }
    } else if (windowWidth < 600 && view3D) {
        label = QStringLiteral(" ");
    }
    return label;
}

int GroupDelayFiller::GroupCount() const {
    return std::clamp(doc_.groupDelay.groupCount, 0, kMaxGroups);
}

QString GroupDelayFiller::GroupName(int g) const {
    const int id = doc_.groupIdAt(g);
    return id < 0 ? QString() : QString::fromUtf8(groupName(id));
}

bool GroupDelayFiller::GroupShown(int g) const {
    const int v = std::clamp(selection_.variant, 0, kVariants - 1);
    return g >= 0 && g < GroupCount() && doc_.groupDelay.hasData[v][g] &&
           (selection_.comboIndex == 0 || selection_.comboIndex == g + 1);
}

QStringList GroupDelayFiller::ComboItems() const {
    QStringList items{QStringLiteral("ALL")};
    for (int g = 0; g < GroupCount(); ++g) {
        items.append(GroupName(g));
    }
    return items;
}

QStringList GroupDelayFiller::LegendCaptions() const {
    QStringList captions;
    for (int i = 0; i < kLegendEntries; ++i) {
        captions.append(i < GroupCount() ? GroupName(i) : QString());
    }
    return captions;
}

void GroupDelayFiller::Begin(chart::ChartModel& model, Swatches& swatches) const {
    model.clipPoints = true;
    model.penWidth = 1;
    model.view.enabled = selection_.view3D;
    for (auto& series : model.series) {
        series = chart::Series{};
    }
    for (int g = 0; g < kLegendEntries; ++g) {
        swatches[g] = g < GroupCount() ? GroupColour(doc_.groupIdAt(g)) : QColor(Qt::white);
    }
}

void GroupDelayFiller::FillLineChart(chart::ChartModel& model, Swatches& swatches) const {
    Begin(model, swatches);
    model.bottom.minimum = 0;
    model.bottom.maximum = kBandAxisMax;
    model.bottom.title = QStringLiteral("Freq[Hz]                    ");
    const int v = std::clamp(selection_.variant, 0, kVariants - 1);
    for (int g = 0; g < chart::kSeriesSlots; ++g) {
        auto& series = model.series[static_cast<std::size_t>(g)];
        if (g < GroupCount()) {
            series.colour = GroupColour(doc_.groupIdAt(g));
        }
        if (!GroupShown(g)) {
            // A parked slot: one point at the origin, no title on the depth axis.
            series.title = QStringLiteral(" ");
            series.points.push_back({0, 0, QString()});
            continue;
        }
        series.title = GroupName(g);
        const auto& values = doc_.groupDelay.values[v][static_cast<std::size_t>(g)];
        series.points.reserve(kGroupDelayBands);
        for (int i = 0; i < kGroupDelayBands; ++i) {
            series.points.push_back({static_cast<double>(i + 1),
                                     values[static_cast<std::size_t>(i)],
                                     PointLabel(i, selection_.windowWidth, selection_.view3D)});
        }
    }
    model.bottom.increment = kBandLabelStep;
}

void GroupDelayFiller::FillBarChart(chart::ChartModel& model, Swatches& swatches) const {
    Begin(model, swatches);
    const int v = std::clamp(selection_.variant, 0, kVariants - 1);
    const int band = std::clamp(selection_.band, 0, kGroupDelayBands - 1);
    const int groups = GroupCount();
    if (selection_.view3D) {
        model.bottom.minimum = 0;
        model.bottom.maximum = kBandAxisMax;
        model.bottom.increment = kBandLabelStep;
        model.bottom.title = QStringLiteral("Freq[Hz]                    ");
    } else {
        model.bottom.minimum = 0;
        model.bottom.maximum = std::max(groups, 1);
        model.bottom.increment = 1;
        model.bottom.title = QStringLiteral("Channel");
    }
    bool labelled = false;
    for (int g = 0; g < chart::kSeriesSlots; ++g) {
        auto& series = model.series[static_cast<std::size_t>(g)];
        series.kind = chart::SeriesKind::Bar;
        series.origin = selection_.difference ? 0.0 : model.left.minimum;
        series.title = QStringLiteral(" ");
        if (g < groups) {
            series.colour = GroupColour(doc_.groupIdAt(g));
        }
        if (!GroupShown(g)) {
            continue;
        }
        series.title = GroupName(g);
        const double value =
            doc_.groupDelay.values[v][static_cast<std::size_t>(g)][static_cast<std::size_t>(band)];
        if (selection_.view3D) {
            // The bar stands where its band lies on the frequency axis; the first one names
            // the band under the axis.
            series.barWidth = kBandBarWidth;
            series.points.push_back(
                {band + 1.0, value, labelled ? QString() : view_axis::GroupDelayBandCaption(band)});
            labelled = true;
        } else {
            series.barWidth = kSideBySideBarWidth;
            series.points.push_back({g + 0.5, value, series.title});
        }
    }
}

}  // namespace sonalyx
