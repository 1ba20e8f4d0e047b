#include "emulator/measurement_replies.h"

#include <algorithm>
#include <cmath>

namespace sonalyx::emulator {

namespace {

constexpr int kTimePoints = 32;
constexpr int kGroupDelayBands = 64;

// Decay in dB per millisecond, lowest band first (low rooms modes ring longest).
constexpr double kNineBandDecay[] = {0.11, 0.14, 0.17, 0.20, 0.23, 0.26, 0.29, 0.33, 0.38};
constexpr double kSixBandDecay[] = {0.11, 0.14, 0.17, 0.23, 0.29, 0.35};

void appendBigEndian(std::vector<std::uint8_t>& body, int value) {
    const auto word = static_cast<std::uint16_t>(static_cast<std::int16_t>(value));
    body.push_back(static_cast<std::uint8_t>(word >> 8));
    body.push_back(static_cast<std::uint8_t>(word & 0xFF));
}

// A small, repeatable unevenness (in 0.01 dB) so that curves are not straight lines.
int ripple(int channelIndex, int band, int point) {
    return ((channelIndex * 7 + band * 3 + point * 5) % 11 - 5) * 9;
}

std::int8_t clampToByte(double value) {
    return static_cast<std::int8_t>(std::clamp(std::lround(value), -128L, 127L));
}

}  // namespace

std::vector<std::string> reverbChannelCodes(int configCode) {
    switch (configCode) {
        case 5:
            return {"FL", "CT", "FR", "SR", "SL"};
        case 6:
            return {"FL", "CT", "FR", "SR", "SBL", "SL"};
        case 7:
            return {"FL", "CT", "FR", "SR", "SBR", "SBL", "SL"};
        case 9:
            return {"FL", "CT", "FR", "SR", "SBR", "SBL", "SL", "SPBL", "SPBR"};
        case 10:
            return {"FL", "CT", "FR", "SR", "SBR", "SBL", "SL", "EXSL", "EXSR", "TS"};
        case 11:
            return {"FL", "CT", "FR", "SR", "SBR", "SBL", "SL", "EXSL", "EXSR"};
        default:
            return {"FL"};
    }
}

int groupDelayGroup(const std::string& code) {
    static const std::pair<const char*, int> kGroups[] = {{"F", 0}, {"S", 1},  {"C", 2},
                                                          {"B", 3}, {"ES", 5}, {"TS", 7}};
    for (const auto& [name, group] : kGroups) {
        if (code == name) {
            return group;
        }
    }
    return -1;
}

bool configurationHasGroup(int configCode, int group) {
    switch (group) {
        case 3:
            return configCode != 5;
        case 5:
            return configCode == 10 || configCode == 11;
        case 7:
            return configCode == 10;
        default:
            return group >= 0;
    }
}

std::vector<std::uint8_t> reverbBody(int channelIndex, int bandSelector, bool after) {
    const bool sixBands = bandSelector == 1 || bandSelector == 2;
    const double* decay = sixBands ? kSixBandDecay : kNineBandDecay;
    const int bands = sixBands ? 6 : 9;
    const double calibration = after ? 1.12 : 1.0;
    const double channelSpread = 1.0 + 0.015 * channelIndex;
    std::vector<std::uint8_t> body;
    body.reserve(static_cast<std::size_t>(bands) * 64);
    for (int band = 0; band < bands; ++band) {
        for (int point = 0; point < kTimePoints; ++point) {
            const double milliseconds = 5.0 * (point + 1);
            const double level = -decay[band] * calibration * channelSpread * milliseconds;
            appendBigEndian(body, static_cast<int>(std::lround(level * 100)) +
                                      ripple(channelIndex, band, point));
        }
    }
    return body;
}

std::vector<std::uint8_t> groupDelayBody(int group) {
    std::vector<std::uint8_t> body;
    body.reserve(2 * kGroupDelayBands + 3);
    for (int band = 0; band < kGroupDelayBands; ++band) {
        const double falling = 110.0 * std::exp(-band / 14.0) + 4 * std::sin(band * 0.7 + group);
        body.push_back(static_cast<std::uint8_t>(clampToByte(falling)));
    }
    for (int band = 0; band < kGroupDelayBands; ++band) {
        const double flattened = 30.0 * std::exp(-band / 10.0) + 2 * std::sin(band * 0.5 + group);
        body.push_back(static_cast<std::uint8_t>(clampToByte(flattened)));
    }
    body.push_back(50);                                          // scale 5.0 ms
    body.push_back(static_cast<std::uint8_t>(clampToByte(-4)));  // base -0.4 ms
    body.push_back(static_cast<std::uint8_t>(3 + group));        // offset 0.3 ms and up
    return body;
}

}  // namespace sonalyx::emulator
