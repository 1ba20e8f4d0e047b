// The reverb filler on the samples: every mode's charts, swatches and lists go to one golden
// file of named cases (a series per line), so a wrong colour, level, slice or axis shows as a
// diff naming the case.
#include <gtest/gtest.h>

#include "document/document_loader.h"
#include "support/document_window.h"
#include "support/golden.h"
#include "views/chart/json_writer.h"
#include "views/reverb/reverb_filler.h"

namespace sonalyx::test {
namespace {

using chart::ChartModel;
using Lines = std::vector<std::string>;

MeasurementDocument load(const std::string& layout, const Lines& drop = {}) {
    MeasurementDocument doc;
    EXPECT_TRUE(DocumentLoader::load(doc, sampleLines(layout, drop), "x.csv", nullptr));
    return doc;
}

std::string joined(const QStringList& list) {
    return list.join(QLatin1Char('|')).toStdString();
}

// The filler's lists, then the chart: its bottom axis and one line per series.
Lines describe(const ReverbFiller& filler, const ChartModel& model, const Swatches& swatches) {
    QStringList hasData, colours;
    for (int i = 0; i < filler.ListLength(); ++i) {
        hasData.append(QString::number(filler.ItemHasData(i)));
        // Every item is found again by its long name.
        EXPECT_EQ(filler.ItemByLongName(filler.ItemLongName(i)), i) << i;
    }
    for (const QColor& c : swatches)
        colours.append(c.name());
    Lines out = {"combo " + joined(filler.ComboItems()),
                 "legend " + joined(filler.LegendCaptions()) + ", swatches " + joined(colours),
                 "charts " + std::to_string(filler.ChartCount()) + ", has data " + joined(hasData),
                 "bottom " + chart::JsonWriter::number(model.bottom.minimum) + ".." +
                     chart::JsonWriter::number(model.bottom.maximum) + " by " +
                     chart::JsonWriter::number(model.bottom.increment) + " " +
                     model.bottom.title.toStdString()};
    for (std::size_t s = 0; s < model.series.size(); ++s) {
        const chart::Series& series = model.series[s];
        std::string line = std::to_string(s) + " " + series.title.toStdString() + " " +
                           series.colour.name().toStdString() +
                           (series.kind == chart::SeriesKind::Bar ? " bar" : " line") +
                           (series.visible ? "" : " hidden") + " from " +
                           chart::JsonWriter::number(series.origin) + ":";
        for (const chart::Point& p : series.points)
            line += " " + chart::JsonWriter::number(p.x) + "," + chart::JsonWriter::number(p.y) +
                    (p.label.isEmpty() ? "" : "'" + p.label.toStdString() + "'");
        out.push_back(line);
    }
    return out;
}

enum class Fill { Line, LineByBand, Bar, BarByBand };

struct Case {
    const char* name;
    const char* layout;
    Lines drop;
    ReverbSelection selection;
    Fill fill;
    int index;  // the item, or the band by band
    bool hasData = true;
};

ReverbSelection select(int chFreq, int pairMode, int variant, bool barMode = false,
                       bool view3D = true) {
    return {chFreq, pairMode, variant, barMode, view3D, 7};
}

TEST(ReverbFiller, ChartsOfEveryModeMatchGolden) {
    const Case cases[] = {
        {"9: after, Ch, item 3", "9", {}, select(0, 0, 1), Fill::Line, 3},
        {"5: six bands, the other swatches white", "5", {}, select(0, 0, 0), Fill::Line, 0},
        {"10: Freq, band 4, the channel colours", "10", {}, select(1, 0, 0), Fill::LineByBand, 4},
        {"9 no right after: Freq, band 0", "9", {"[DATA3A]"}, select(1, 0, 1), Fill::LineByBand, 0},
        {"9 no right after: Ch, item 2", "9", {"[DATA3A]"}, select(0, 0, 1), Fill::Line, 2, false},
        {"7: pairs, group 1", "7", {}, select(0, 1, 0), Fill::Line, 1},
        {"9: bars 3D, Ch, slice 7", "9", {}, select(0, 0, 0, true), Fill::Bar, 1},
        {"9: bars 3D, Freq, slice 7", "9", {}, select(1, 0, 0, true), Fill::BarByBand, 1},
        {"9: bars 2D, Ch, slice 7", "9", {}, select(0, 0, 0, true, false), Fill::Bar, 1},
        {"9: bars 2D, Freq, slice 7", "9", {}, select(1, 0, 0, true, false), Fill::BarByBand, 1},
    };
    std::vector<GoldenSection> sections;
    for (const Case& c : cases) {
        const MeasurementDocument doc = load(c.layout, c.drop);
        const ReverbFiller filler(doc, c.selection);
        ChartModel model;
        model.left.minimum = 53;  // bars stand on the left axis's minimum
        Swatches swatches{};
        switch (c.fill) {
            case Fill::Line:
                filler.FillLineChart(model, c.index, c.hasData, swatches);
                break;
            case Fill::LineByBand:
                filler.FillLineChartByBand(model, c.index, swatches);
                break;
            case Fill::Bar:
                filler.FillBarChart(model, c.index, c.hasData, swatches);
                break;
            case Fill::BarByBand:
                filler.FillBarChartByBand(model, c.index, swatches);
                break;
        }
        sections.push_back({c.name, describe(filler, model, swatches)});
    }
    expectSectionsMatchGolden(testDataPath("views/reverb_filler.txt"), sections);
}

}  // namespace
}  // namespace sonalyx::test
