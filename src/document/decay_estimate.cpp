#include "decay_estimate.h"

#include <cmath>
#include <vector>

namespace sonalyx {

std::optional<DecayEstimate> estimateDecay(std::span<const float> levels, double firstMs,
                                           double stepMs) {
    if (!(stepMs > 0.0))
        return std::nullopt;
    struct Sample {
        double ms;
        double db;
    };
    std::vector<Sample> samples;
    samples.reserve(levels.size());
    for (size_t i = 0; i < levels.size(); ++i) {
        if (std::isfinite(levels[i]))
            samples.push_back({firstMs + stepMs * static_cast<double>(i), levels[i]});
    }
    if (samples.size() < static_cast<size_t>(kMinDecayPoints))
        return std::nullopt;

    // Sums about the means: no cancellation between large totals.
    double meanMs = 0;
    double meanDb = 0;
    for (const Sample& s : samples) {
        meanMs += s.ms;
        meanDb += s.db;
    }
    meanMs /= static_cast<double>(samples.size());
    meanDb /= static_cast<double>(samples.size());
    double sxx = 0;
    double sxy = 0;
    for (const Sample& s : samples) {
        sxx += (s.ms - meanMs) * (s.ms - meanMs);
        sxy += (s.ms - meanMs) * (s.db - meanDb);
    }
    const double rate = sxy / sxx * 1000.0;  // dB/ms -> dB/s
    if (!(rate < 0.0))
        return std::nullopt;
    return DecayEstimate{rate, 60.0 / -rate * 1000.0};
}

}  // namespace sonalyx
