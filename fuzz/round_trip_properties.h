#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sonalyx::fuzzing {

// What saving a text twice and more showed. The document fuzz target traps on a problem; the
// unit tests replay the samples and the kept seeds through the same check.
struct RoundTripVerdict {
    bool loaded = false;    // the text is a document at all
    std::string exemption;  // why a second save may differ, when it may
    int savesToSettle = 0;  // saves until the written text stopped changing
    std::string problem;    // empty when every property held
};

// The properties every accepted document keeps: the loader accepts what the writer wrote; a
// second save writes the same text as the first unless the document holds one of the named
// constructs the format cannot tell from its own structure; and those settle within a few saves.
RoundTripVerdict checkRoundTrip(std::string_view text);

// The converter targets' property: the text a conversion wrote loads as a document and keeps
// every round-trip property. Otherwise says why on stderr and traps, which is a finding.
void trapUnlessConvertedTextRoundTrips(const std::vector<std::string>& lines);

// Saves after which a document with an exempted construct must have stopped changing.
inline constexpr int kMostSavesToSettle = 8;

}  // namespace sonalyx::fuzzing
