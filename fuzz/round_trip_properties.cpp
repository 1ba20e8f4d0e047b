#include "round_trip_properties.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <set>
#include <vector>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_writer.h"

namespace sonalyx::fuzzing {

namespace {

// The markers the loader looks for, as the prefixes it compares with.
constexpr std::array<std::string_view, 8> kMarkerPrefixes = {
    "[FILEMEMO]", "[CHANNEL]", "[BAND]", "[REVERB TYPE]", "[DATA", "[MEMO", "[Before]", "[After]"};

bool startsWithAnyMarker(std::string_view text) {
    return std::any_of(kMarkerPrefixes.begin(), kMarkerPrefixes.end(),
                       [&](std::string_view p) { return text.substr(0, p.size()) == p; });
}

bool readsAsSectionTitle(std::string_view text) {
    return isSectionTitle(text, "Group Delay Characteristics") ||
           isSectionTitle(text, "TORVE Parameters");
}

// A line the loader would take for part of the structure wherever it stands.
bool readsAsStructure(std::string_view text) {
    return startsWithAnyMarker(text) || readsAsSectionTitle(text) ||
           text.substr(0, 17) == "* Speaker Setting";
}

bool memoReadsAsStructure(const MeasurementDocument& doc) {
    const auto structural = [](const Memo& memo) {
        return std::any_of(memo.begin(), memo.end(),
                           [](const std::string& line) { return readsAsStructure(line); });
    };
    return std::any_of(doc.fileMemos.begin(), doc.fileMemos.end(), structural) ||
           std::any_of(doc.channelMemos.begin(), doc.channelMemos.end(), structural) ||
           std::any_of(doc.groupMemos.begin(), doc.groupMemos.end(), structural);
}

// Channel names and band labels begin the data block headers and rows, so each one is a line
// start of its own.
bool nameReadsAsStructure(const MeasurementDocument& doc) {
    const auto structural = [](const std::vector<std::string>& names) {
        return std::any_of(names.begin(), names.end(),
                           [](const std::string& name) { return readsAsStructure(name); });
    };
    return structural(doc.channelNames) || structural(doc.bandLabels);
}

// Data blocks find their position by name, so an empty name holds no data and a repeated one
// sends two blocks to the first of its positions.
bool channelNamesAmbiguous(const MeasurementDocument& doc) {
    std::set<std::string> seen;
    for (const std::string& name : doc.channelNames) {
        if (name.empty() || !seen.insert(name).second)
            return true;
    }
    return false;
}

std::string exemptionOf(const MeasurementDocument& doc) {
    if (memoReadsAsStructure(doc))
        return "a memo line reads as a marker or a section title";
    if (nameReadsAsStructure(doc))
        return "a channel name or band label reads as a marker or a section title";
    if (channelNamesAmbiguous(doc))
        return "the channel list has an empty or a repeated name";
    return {};
}

std::vector<std::string> saved(const MeasurementDocument& doc) {
    std::vector<std::string> lines;
    DocumentWriter::write(doc, lines);
    return lines;
}

}  // namespace

RoundTripVerdict checkRoundTrip(std::string_view text) {
    RoundTripVerdict verdict;
    MeasurementDocument doc;
    if (!DocumentLoader::load(doc, splitLines(text), "fuzz.csv", nullptr))
        return verdict;
    verdict.loaded = true;
    verdict.exemption = exemptionOf(doc);
    std::vector<std::string> previous = saved(doc);
    for (int save = 1; save <= kMostSavesToSettle; ++save) {
        // Read back the text as it lands in the file: joined, then split again.
        MeasurementDocument again;
        if (!DocumentLoader::load(again, splitLines(joinLines(previous)), "fuzz.csv", nullptr)) {
            verdict.problem =
                "the loader refused what the writer wrote (save " + std::to_string(save) + ")";
            return verdict;
        }
        std::vector<std::string> next = saved(again);
        if (next == previous) {
            verdict.savesToSettle = save;
            return verdict;
        }
        if (verdict.exemption.empty()) {
            verdict.problem = "a second save changed the text";
            return verdict;
        }
        previous = std::move(next);
    }
    verdict.problem = "saving again did not settle within " + std::to_string(kMostSavesToSettle) +
                      " saves (" + verdict.exemption + ")";
    return verdict;
}

void trapUnlessConvertedTextRoundTrips(const std::vector<std::string>& lines) {
    const RoundTripVerdict verdict = checkRoundTrip(joinLines(lines));
    if (!verdict.loaded || !verdict.problem.empty()) {
        std::fprintf(stderr, "converted text: %s\n",
                     verdict.loaded ? verdict.problem.c_str() : "not a document");
        __builtin_trap();
    }
}

}  // namespace sonalyx::fuzzing
