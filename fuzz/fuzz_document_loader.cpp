// Feeds arbitrary bytes to the document loader; whatever it accepts must save and load again
// with the properties in round_trip_properties.h.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string_view>

#include "round_trip_properties.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    const sonalyx::fuzzing::RoundTripVerdict verdict = sonalyx::fuzzing::checkRoundTrip(text);
    if (!verdict.problem.empty()) {
        std::fprintf(stderr, "round trip: %s\n", verdict.problem.c_str());
        __builtin_trap();
    }
    return 0;
}
