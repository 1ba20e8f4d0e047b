// Feeds arbitrary reply bodies to the reverb and group delay conversion, as a receiver we do
// not control might send them, and checks that what it writes is a document that saves stably.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <string>
#include <vector>

#include "retrieval/reverb_converter.h"
#include "round_trip_properties.h"

namespace {

using namespace sonalyx;

std::vector<std::uint8_t> body(FuzzedDataProvider& in) {
    return in.ConsumeBytes<std::uint8_t>(in.ConsumeIntegralInRange<std::size_t>(0, 2048));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    ReverbConverter converter;
    converter.reset();
    // Any configuration byte the information reply can carry, not only the known ones; the
    // engine refuses a zero.
    converter.setConfiguration(in.ConsumeIntegralInRange<int>(1, 255),
                               in.ConsumeIntegral<std::uint8_t>(),
                               in.ConsumeIntegral<std::uint8_t>());
    std::vector<std::string> lines = {
        "[DATE]", "2009.05.17 14:03", "", "  \"Reverb Characteristics\"", "", "[FILEMEMO]", ""};
    converter.writeHeader(lines);
    const int blocks = in.ConsumeIntegralInRange(0, 40);
    for (int i = 0; i < blocks && in.remaining_bytes() > 0; ++i) {
        const int number = in.ConsumeIntegralInRange(1, 16);
        const bool after = in.ConsumeBool();
        const bool valid = in.ConsumeBool();
        const std::vector<std::uint8_t> reply = body(in);
        converter.writeDataBlock(number, after, valid, reply, lines);
    }
    lines.emplace_back();
    while (in.remaining_bytes() > 0) {
        // The engine passes on the attributes below 0xF0 only.
        const int attribute = in.ConsumeIntegralInRange<int>(0, 0xEF);
        const std::vector<std::uint8_t> reply = body(in);
        converter.convertGroupDelay(attribute, reply);
    }
    if (converter.hasGroupDelay()) {
        lines.emplace_back("  \"Group Delay Characteristics\"");
        lines.emplace_back();
        converter.writeGroupDelaySection(lines);
    }
    fuzzing::trapUnlessConvertedTextRoundTrips(lines);
    return 0;
}
