#pragma once

#include <string>
#include <vector>

#include "document/document_loader.h"
#include "support/recording_messenger.h"

namespace sonalyx::test {

// "L,0,1,...,31" style header and 32 values starting at start, falling by step.
std::string headerRow(const std::string& name);
std::string bandRow(const std::string& label, double start, double step, int count = 32);
extern const char* const kTimeRow;

// A small layout-5 document with both variants on two positions (tests/data/document/small.csv).
std::vector<std::string> smallDocumentLines();

}  // namespace sonalyx::test
