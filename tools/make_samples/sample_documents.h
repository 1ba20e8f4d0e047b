#pragma once

#include <string>
#include <vector>

namespace sonalyx {

// The speaker layouts the shipped samples cover.
inline constexpr int kSampleLayouts[] = {5, 7, 9, 10, 11};

// The text of a plausible measurement document for a layout: decays falling over 160 ms in
// both variants, group delay before and after calibration, and the parameter rows the
// receiver would give. Built through the document writer, so it is valid by construction;
// the same layout always gives the same text.
std::vector<std::string> makeSampleDocument(int layout);

// "sample-layout-10.csv"
std::string sampleFileName(int layout);

}  // namespace sonalyx
