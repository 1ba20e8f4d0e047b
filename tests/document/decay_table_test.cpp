#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "document/decay_estimate.h"
#include "document/decay_table.h"
#include "document/decay_table_csv.h"
#include "support/golden.h"

namespace sonalyx::test {
namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();

std::vector<float> line(double start, double dbPerMs, int count = kTimePoints) {
    std::vector<float> levels;
    for (int i = 0; i < count; ++i)
        levels.push_back(static_cast<float>(start + dbPerMs * 5.0 * i));
    return levels;
}

TEST(DecayEstimate, SlopeAndTimeOfKnownCurves) {
    std::vector<float> noisy = line(12.0, -0.08);
    for (size_t i = 0; i < noisy.size(); ++i)
        noisy[i] += (i % 2 == 0 ? 0.3f : -0.3f);  // symmetric ripple: the slope stays near -80
    std::vector<float> gaps = line(10.0, -0.1);
    gaps[3] = kNan;
    gaps[7] = std::numeric_limits<float>::infinity();
    struct Row {
        const char* name;
        std::vector<float> levels;
        bool decays;
        double rate;  // dB/s
        double rt60;  // ms
        double tolerance;
    } rows[] = {
        {"straight fall of 100 dB/s", line(10.0, -0.1), true, -100.0, 600.0, 1e-4},
        {"straight fall of 20 dB/s", line(-3.0, -0.02), true, -20.0, 3000.0, 1e-3},
        {"rippled fall of about 80 dB/s", noisy, true, -80.0, 750.0, 2.0},
        {"gaps left out", gaps, true, -100.0, 600.0, 1e-4},
        {"three points are enough", line(0.0, -0.2, 3), true, -200.0, 300.0, 1e-6},
        {"flat", std::vector<float>(kTimePoints, 4.5f), false, 0, 0, 0},
        {"rising", line(-5.0, 0.05), false, 0, 0, 0},
        {"two points", line(0.0, -0.2, 2), false, 0, 0, 0},
        {"no points", {}, false, 0, 0, 0},
        {"only gaps", std::vector<float>(kTimePoints, kNan), false, 0, 0, 0},
    };
    for (const Row& row : rows) {
        const auto estimate = estimateDecay(row.levels);
        ASSERT_EQ(estimate.has_value(), row.decays) << row.name;
        if (!estimate)
            continue;
        EXPECT_NEAR(estimate->rate, row.rate, row.tolerance) << row.name;
        EXPECT_NEAR(estimate->rt60Ms, row.rt60, row.tolerance * 10) << row.name;
    }
}

TEST(DecayTable, ChangesAreTheDifferenceOfTheShownFigures) {
    DecayCell cell;
    cell.before = DecayEstimate{roundedRate(-81.24), roundedRt60(738.6)};
    cell.after = DecayEstimate{roundedRate(-85.66), roundedRt60(700.4)};
    EXPECT_EQ(cell.before->rt60Ms, 739.0);
    EXPECT_EQ(cell.rt60Change(), -39.0);
    EXPECT_DOUBLE_EQ(*cell.rateChange(), -4.5);
    cell.after = cell.before;
    EXPECT_FALSE(std::signbit(*cell.rateChange()));
}

std::vector<std::string> csvLines(const std::string& text) {
    std::vector<std::string> lines;
    size_t start = 0;
    for (size_t end; (end = text.find("\r\n", start)) != std::string::npos; start = end + 2)
        lines.push_back(text.substr(start, end - start));
    EXPECT_EQ(start, text.size()) << "every line ends in CR LF";
    return lines;
}

TEST(DecayTableCsv, SampleDocumentsMatchTheirGoldenFiles) {
    const MeasurementDocument five = loadSampleDocument("5");
    const MeasurementDocument seven = loadSampleDocument("7");
    const DecayTable groupsOfSeven = buildDecayTable(seven, true);
    const DecayTable groupsOfFive = buildDecayTable(five, true);
    expectMatchesGolden(testDataPath("decay/sample-layout-5.csv"),
                        csvLines(decayTableCsv(buildDecayTable(five, false))));
    // Groups of one document beside those of another: unmatched bands stay empty.
    expectMatchesGolden(testDataPath("decay/sample-layout-7-groups-reference-5.csv"),
                        csvLines(decayTableCsv(groupsOfSeven, &groupsOfFive)));
}

TEST(DecayTableCsv, NamesWithCommasOrQuotesAreQuoted) {
    DecayTable table;
    table.items = {"Left, near"};
    table.bands = {"1\"k"};
    table.cells = {{DecayCell{}}};
    EXPECT_EQ(csvLines(decayTableCsv(table)).at(1), "\"Left, near\",\"1\"\"k\",,,,,,");
}

}  // namespace
}  // namespace sonalyx::test
