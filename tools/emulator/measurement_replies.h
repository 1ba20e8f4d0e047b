#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Reply bodies of the measurement queries, with plausible values: decays that fall over
// 160 ms, faster at high frequencies and after calibration; group delays that shrink with
// frequency and flatten after calibration.
namespace sonalyx::emulator {

// The reverb channel codes a receiver of this configuration answers, front left first.
std::vector<std::string> reverbChannelCodes(int configCode);
// The group a "?FB" code asks for (its reply attribute), -1 for an unknown code.
int groupDelayGroup(const std::string& code);
// True when a receiver of this configuration has the speakers of that group.
bool configurationHasGroup(int configCode, int group);

// 64 bytes per band record (32 big-endian values in 0.01 dB): 9 records, or 6 when the
// receiver measures six bands.
std::vector<std::uint8_t> reverbBody(int channelIndex, int bandSelector, bool after);
// 64 before bytes, 64 after bytes, then scale, base and offset (131 bytes).
std::vector<std::uint8_t> groupDelayBody(int group);

}  // namespace sonalyx::emulator
