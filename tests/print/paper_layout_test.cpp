#include <gtest/gtest.h>

#include "print/paper_layout.h"

using sonalyx::Box;
using sonalyx::PaperLayout;
using sonalyx::PaperMetrics;
using sonalyx::ZoomMode;

namespace {

// US Letter across: 11 x 8.5 inches, printable area a little smaller.
PaperMetrics Letter(int dpi) {
    return {11 * dpi, 17 * dpi / 2, 11 * dpi - dpi / 2, 8 * dpi, dpi, dpi};
}

TEST(PaperLayout, PlacesThePaperOnTheDeskForEachZoomMode) {
    struct Row {
        const char* name;
        ZoomMode mode;
        int clientWidth, clientHeight, screenDpi;
        PaperMetrics metrics;
        int deskWidth, deskHeight;
        Box paper;
    };
    // clang-format off
    const Row rows[] = {
        // 96 pixels an inch against 600 dots: 0.16 of the printer units, close to a sixth.
        {"actual 96/600", ZoomMode::Actual, 700, 500, 96, Letter(600), 1076, 826, {10, 5, 1056, 816}},
        {"actual 96/1200", ZoomMode::Actual, 700, 500, 96, Letter(1200), 1076, 826, {10, 5, 1056, 816}},
        {"actual 100/600 is a sixth", ZoomMode::Actual, 1400, 1000, 100, Letter(600), 1400, 1000, {150, 75, 1100, 850}},
        {"fit width, taller than the client", ZoomMode::FitWidth, 760, 500, 96, Letter(600), 760, 587, {10, 8, 740, 571}},
        {"fit width, shorter than the client", ZoomMode::FitWidth, 400, 900, 96, Letter(600), 400, 900, {10, 303, 380, 293}},
        {"whole page", ZoomMode::WholePage, 780, 520, 96, Letter(600), 780, 520, {66, 10, 647, 500}},
        {"whole page on a wide window", ZoomMode::WholePage, 1600, 400, 96, Letter(600), 1600, 400, {554, 10, 491, 380}},
        {"whole page on a tall window", ZoomMode::WholePage, 600, 1200, 96, Letter(600), 600, 1200, {10, 376, 580, 448}},
    };
    // clang-format on
    for (const Row& row : rows) {
        const auto placement = PaperLayout::Place(row.mode, row.clientWidth, row.clientHeight,
                                                  row.metrics, row.screenDpi);
        EXPECT_EQ(placement.deskWidth, row.deskWidth) << row.name;
        EXPECT_EQ(placement.deskHeight, row.deskHeight) << row.name;
        EXPECT_EQ(placement.paper, row.paper)
            << row.name << ": " << placement.paper.left << ',' << placement.paper.top << ' '
            << placement.paper.width << 'x' << placement.paper.height;
    }
}

TEST(PaperLayout, FitsAPictureToThePageKeepingItsShapeAndCentresIt) {
    struct Row {
        const char* name;
        int width, height, pageWidth, pageHeight;
        Box expected;
    };
    const Row rows[] = {
        {"window capture", 1000, 700, 6000, 4000, {143, 0, 5714, 4000}},
        {"sheet page, 1310 tall", 647, 1310, 6000, 4000, {2012, 0, 1975, 4000}},
        {"wide strip fills the width", 2000, 500, 6000, 4000, {0, 1250, 6000, 1500}},
        {"same shape as the page", 600, 400, 6000, 4000, {0, 0, 6000, 4000}},
        {"empty picture", 0, 0, 6000, 4000, {0, 0, 0, 0}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(PaperLayout::FitToPage(row.width, row.height, row.pageWidth, row.pageHeight),
                  row.expected)
            << row.name;
    }
}

}  // namespace
