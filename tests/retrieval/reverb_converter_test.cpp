// What the emulator's receivers never send: extreme values, unknown codes, short and unnamed
// replies, by name; the rows they write are in tests/data/receive/converter_edge_cases.txt.
// Whole runs for every configuration are compared byte for byte in receive_document_test.cpp.
#include "retrieval/reverb_converter.h"

#include <gtest/gtest.h>

#include <cstdint>

#include "support/golden.h"

namespace sonalyx::test {
namespace {

using Lines = std::vector<std::string>;
using Bytes = std::vector<std::uint8_t>;

// Band 0 of a block holds these values at 5, 10, 15, ... ms.
Lines signedValues(const std::vector<std::uint16_t>& raw) {
    ReverbConverter converter;
    converter.setConfiguration(5, 0, 0);
    Bytes body(64, 0);
    for (size_t i = 0; i < raw.size(); ++i) {
        body[2 * i + 2] = static_cast<std::uint8_t>(raw[i] >> 8);
        body[2 * i + 3] = static_cast<std::uint8_t>(raw[i] & 0xFF);
    }
    Lines lines;
    converter.writeDataBlock(1, false, true, body, lines);
    return lines;
}

Lines shortBodies() {
    ReverbConverter converter;
    converter.setConfiguration(7, 2, 0);
    Lines lines;
    converter.writeDataBlock(4, false, true, Bytes(64 * 2 + 30, 0), lines);
    converter.writeDataBlock(4, true, true, {}, lines);
    return lines;
}

Lines unknownConfiguration() {
    ReverbConverter converter;
    converter.setConfiguration(8, 7, 2);
    Lines lines;
    converter.writeHeader(lines);
    return lines;
}

Bytes groupDelayBody(std::int8_t first, std::int8_t scale, std::int8_t base, std::int8_t offset) {
    Bytes body(131, 0);
    body[0] = body[64] = static_cast<std::uint8_t>(first);
    body[128] = static_cast<std::uint8_t>(scale);
    body[129] = static_cast<std::uint8_t>(base);
    body[130] = static_cast<std::uint8_t>(offset);
    return body;
}

// Blocks of (group, body); the section, or "no group delay".
Lines groupDelay(const std::vector<std::pair<int, Bytes>>& blocks) {
    ReverbConverter converter;
    converter.setConfiguration(10, 0, 0);
    for (const auto& [group, body] : blocks)
        converter.convertGroupDelay(group, body);
    Lines lines;
    converter.writeGroupDelaySection(lines);
    return converter.hasGroupDelay() ? lines : Lines{"no group delay"};
}

TEST(ReverbConversion, EdgeCasesMatchGolden) {
    expectSectionsMatchGolden(
        testDataPath("receive/converter_edge_cases.txt"),
        {{"reverb: signed hundredths, the sign outside the number",
          signedValues({0xFF38, 0x00C8, 0x8000, 0x7FFF, 0xFFFF, 0x0001, 0x0000, 0x04D2})},
         {"reverb: short or empty bodies write whole records only", shortBodies()},
         {"reverb: unknown configuration and band selector", unknownConfiguration()},
         // -51 / 255 x 2.5 = -0.5 before, + the offset 1.5 after; the base comes off every
         // value, and the offset line shows the last block's.
         {"group delay: scale, base and offset",
          groupDelay({{0, groupDelayBody(-51, 25, 0, 15)}, {3, groupDelayBody(51, 25, -10, -5)}})},
         {"group delay: unnamed groups",
          groupDelay({{4, groupDelayBody(10, 10, 0, 0)}, {6, groupDelayBody(10, 10, 0, 0)}})},
         {"group delay: a short body", groupDelay({{2, Bytes(10, 0x7F)}})}});
}

}  // namespace
}  // namespace sonalyx::test
