#pragma once

#include "document/measurement_document.h"
#include "views/chart/chart_model.h"

namespace sonalyx {

// The report's charts as plain models, drawn flat (2D) so that every curve reads on paper.
// Solid curves come from one document and variant, dashed ones from another document (shaped
// like the first, as the comparison overlay makes it) or from the other variant; the left axis
// is fitted to what is drawn, in whole steps.
class ReportCharts {
  public:
    struct Curves {
        const MeasurementDocument* document = nullptr;
        int variant = 0;
    };

    // One channel (groups false) or channel group of the document, one curve per band.
    static chart::ChartModel Reverb(Curves solid, Curves dashed, bool groups, int item);
    // Every channel group over the 64 bands.
    static chart::ChartModel GroupDelay(Curves solid, Curves dashed);

    // The left axis from the lowest to the highest drawn point, widened to whole steps of a
    // tenth of the range or so (1, 2, 5 times a power of ten).
    static void FitLeftAxis(chart::ChartModel& model, double minimumSpan);
};

}  // namespace sonalyx
