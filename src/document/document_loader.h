#pragma once

#include <string>
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

// Reads the group delay rows of the kept group delay lines into doc.groupDelay, matching row
// names against the groups of doc's layout.
void parseGroupDelay(MeasurementDocument& doc);

}  // namespace sonalyx
