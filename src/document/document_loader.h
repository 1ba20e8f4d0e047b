#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "measurement_document.h"
#include "messenger.h"

namespace sonalyx {

// Fills a MeasurementDocument from the lines of a document file or of received text.
class DocumentLoader {
  public:
    // Returns false, after telling the user "Illegal file format.", when the first line does
    // not begin with "[DATE]". messenger may be null (no one to tell).
    static bool load(MeasurementDocument& doc, const std::vector<std::string>& lines,
                     const std::string& fileName, Messenger* messenger);
};

// Whether a line is the section title `title` ("Group Delay Characteristics"): as written, two
// blanks and the title in quotes (any line that starts with a blank or a quote and holds the
// title), or the bare title that a spreadsheet leaves of it.
bool isSectionTitle(std::string_view line, std::string_view title);

// Reads the group delay rows of the kept group delay lines into doc.groupDelay, matching row
// names against the groups of doc's layout.
void parseGroupDelay(MeasurementDocument& doc);

// Where the "[Before]" and "[After]" blocks of the kept group delay lines are looked for: past
// the "[CHANNEL]" line and the line after it, when there is one. The section's file memo comes
// before, so a memo or channel line reading "[Before]" starts no block, when read or written.
size_t groupDelayBlocksStart(const std::vector<std::string>& kept);

}  // namespace sonalyx
