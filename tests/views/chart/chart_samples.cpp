#include "views/chart/chart_samples.h"

#include "support/golden.h"

namespace sonalyx::test {

namespace {

using namespace chart;

const QColor kBandColours[] = {{248, 0, 0},    {232, 72, 8},   {248, 160, 40},
                               {192, 216, 56}, {0, 216, 112},  {0, 104, 224},
                               {80, 144, 248}, {144, 88, 208}, {160, 16, 124}};

const MeasurementDocument& sampleDocument() {
    static const MeasurementDocument doc = loadSampleDocument("9");
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

}  // namespace sonalyx::test
