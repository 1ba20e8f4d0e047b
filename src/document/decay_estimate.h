#pragma once

#include <optional>
#include <span>

namespace sonalyx {

// How fast a level curve falls, and the reverberation time that rate implies.
struct DecayEstimate {
    double rate = 0;    // dB per second; negative, since only a falling curve has one
    double rt60Ms = 0;  // time to fall by 60 dB at that rate, in milliseconds
};

// A slope through fewer points says more about the noise than about the room.
inline constexpr int kMinDecayPoints = 3;

// The least-squares slope of levels (dB) taken every stepMs from firstMs, and the time 60 dB
// take at it. Levels that are not finite are left out. None when fewer than kMinDecayPoints
// remain or the curve does not fall (rate >= 0).
std::optional<DecayEstimate> estimateDecay(std::span<const float> levels, double firstMs = 5.0,
                                           double stepMs = 5.0);

}  // namespace sonalyx
