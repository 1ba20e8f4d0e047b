// Feeds arbitrary reply bodies to the parameter conversion in any order the receive engine
// could call it, and checks that the rows it writes make a document that saves stably.
#include <fuzzer/FuzzedDataProvider.h>

#include <cstdint>
#include <string>
#include <vector>

#include "retrieval/parameter_conversion.h"
#include "round_trip_properties.h"

namespace {

using namespace sonalyx;

std::vector<std::uint8_t> body(FuzzedDataProvider& in) {
    return in.ConsumeBytes<std::uint8_t>(in.ConsumeIntegralInRange<std::size_t>(0, 2048));
}

ReplyItem item(FuzzedDataProvider& in) {
    ReplyItem reply;
    reply.attribute = in.ConsumeIntegral<std::uint8_t>();
    reply.body = body(in);
    return reply;
}

std::vector<ReplyItem> items(FuzzedDataProvider& in) {
    std::vector<ReplyItem> list(in.ConsumeIntegralInRange<std::size_t>(0, 16));
    for (ReplyItem& reply : list)
        reply = item(in);
    return list;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzedDataProvider in(data, size);
    ParameterConverter converter;
    converter.reset();
    const int configCode = in.ConsumeIntegralInRange<int>(1, 255);
    converter.setConfiguration(configCode, in.ConsumeIntegral<std::uint8_t>());
    std::vector<std::string> lines = {
        "[DATE]", "2009.05.17 14:03", "", "", "", "  \"TORVE Parameters\"", "", "[FILEMEMO]", ""};
    converter.convertSystemInfo(body(in));
    converter.convertSpeakerSetting(in.ConsumeIntegral<std::uint8_t>(), body(in), lines);
    if (in.ConsumeBool()) {
        // The list replies, as the engine collects them.
        converter.convertDistanceList(items(in), lines);
        converter.convertLevelList(items(in), lines);
        converter.convertStandingWaveList(items(in), lines);
        // The engine reads a memory byte, then the memory's records, for each memory.
        const int recordsPerGroup = configCode == 11 ? 9 : configCode;
        std::vector<int> memories(in.ConsumeIntegralInRange<std::size_t>(0, 6));
        std::vector<ReplyItem> records;
        for (int& memory : memories) {
            memory = in.ConsumeIntegral<std::uint8_t>();
            for (int r = 0; r < recordsPerGroup; ++r)
                records.push_back(item(in));
        }
        converter.convertEqList(records, recordsPerGroup, memories, lines);
    } else {
        // The single-channel fallback of a receiver that refuses the lists.
        converter.convertSingleDistance(item(in), lines);
        converter.convertSingleLevel(item(in), lines);
        for (int channel = 0; channel < ParameterConverter::kFallbackChannelCount; ++channel) {
            if (converter.fallbackChannelPresent(channel))
                converter.convertSingleEq(channel, item(in), lines);
        }
        converter.finishFallback(lines);
    }
    fuzzing::trapUnlessConvertedTextRoundTrips(lines);
    return 0;
}
