#pragma once

#include <string>
#include <vector>

#include "measurement_document.h"

namespace sonalyx {

// Turns a MeasurementDocument back into the lines of its file.
class DocumentWriter {
  public:
    // Appends the document's whole text to lines.
    static void write(const MeasurementDocument& doc, std::vector<std::string>& lines);
};

}  // namespace sonalyx
