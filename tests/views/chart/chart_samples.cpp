#include "views/chart/chart_samples.h"

#include <gtest/gtest.h>

#include <cmath>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "support/golden.h"

namespace sonalyx::test {

namespace {

using namespace chart;

const QColor kBandColours[] = {{248, 0, 0},    {232, 72, 8},   {248, 160, 40},
                               {192, 216, 56}, {0, 216, 112},  {0, 104, 224},
                               {80, 144, 248}, {144, 88, 208}, {160, 16, 124}};

const MeasurementDocument& sampleDocument() {
    static const MeasurementDocument doc = [] {
        MeasurementDocument d;
        const auto lines = readDocumentLines(samplesPath("sample-layout-9.csv"));
        EXPECT_TRUE(lines && DocumentLoader::load(d, *lines, "sample-layout-9.csv", nullptr));
        return d;
    }();
    return doc;
}

ChartModel reverbFrame() {
    ChartModel m;
    m.name = QStringLiteral("Chart1");
    // The view as zoom 14 and move 13 leave it: 30 dB in 3 dB steps around 65 dB.
    m.left = {50, 80, 3, QStringLiteral("Level[dB] ")};
    m.bottom = {0, 160, 10, QStringLiteral("Time[msec]")};
    m.depth = {0, 1, 1, QStringLiteral("Freq[Hz]")};
    m.left.titleColour = QColor(255, 255, 0);
    m.bottom.titleColour = QColor(0, 255, 255);
    m.depth.titleColour = QColor(0, 255, 0);
    return m;
}

}  // namespace

ChartModel sampleDecayChart() {
    const MeasurementDocument& doc = sampleDocument();
    ChartModel m = reverbFrame();
    for (int b = 0; b < doc.bandCount && b < 9; ++b) {
        Series& s = m.series[static_cast<std::size_t>(b)];
        s.title = QString::fromStdString(doc.bandLabels[static_cast<std::size_t>(b)]);
        s.colour = kBandColours[b];
        for (int t = 0; t < kTimePoints; ++t) {
            s.points.push_back({5.0 * (t + 1), 58.0 + doc.reverbValues[0][0][b][t], QString()});
        }
    }
    return m;
}

ChartModel sampleBarChart() {
    const MeasurementDocument& doc = sampleDocument();
    ChartModel m = reverbFrame();
    m.bottom = {0, 9, 1, QStringLiteral("Freq[Hz]")};
    m.bottom.titleColour = QColor(0, 255, 255);
    Series& s = m.series[0];
    s.title = QStringLiteral("20-25msec");
    s.colour = kBandColours[0];
    s.kind = SeriesKind::Bar;
    s.origin = m.left.minimum;
    s.barWidth = 0.6;
    for (int b = 0; b < doc.bandCount && b < 9; ++b) {
        const double level = b == 8 ? 45.0 : 58.0 + doc.reverbValues[0][0][b][4];
        s.points.push_back(
            {b + 0.5, level, QString::fromStdString(doc.bandLabels[static_cast<std::size_t>(b)])});
    }
    return m;
}

ChartModel sampleGroupDelayChart() {
    ChartModel m;
    m.name = QStringLiteral("Chart101");
    m.left = {-1.0, 2.8, 0.38, QStringLiteral("Group Delay[msec] ")};
    m.bottom = {0, 64, 31, QStringLiteral("Freq[Hz]    ")};
    m.depth = {0, 1, 4, QStringLiteral("Channel")};
    m.view.perspective = 30;
    const char* groups[] = {"Front", "Center", "Surround A", "Surr Back", "Top Surr"};
    const QColor colours[] = {
        {0, 153, 0}, {204, 204, 0}, {255, 153, 0}, {255, 51, 51}, {153, 153, 255}};
    for (int g = 0; g < kSeriesSlots; ++g) {
        Series& s = m.series[static_cast<std::size_t>(g)];
        if (g >= 5) {
            s.title = QStringLiteral(" ");
            s.points = {{0, 0, QString()}};
            continue;
        }
        s.title = QString::fromLatin1(groups[g]);
        s.colour = colours[g];
        for (int i = 0; i < 64; ++i) {
            QString label;
            if (i == 0) {
                label = QStringLiteral("200");
            } else if (i == 31) {
                label = QStringLiteral("2kHz");
            } else if (i == 63) {
                label = QStringLiteral("20kHz");
            } else if ((i + 1) % 4 == 0) {
                label = QStringLiteral(" ");
            }
            const double delay = 1.6 * std::exp(-i / 12.0) + 0.1 * g + 0.05 * std::sin(i * 0.7);
            s.points.push_back({i + 1.0, delay, label});
        }
    }
    return m;
}

}  // namespace sonalyx::test
