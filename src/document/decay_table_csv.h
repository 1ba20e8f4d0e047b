#pragma once

#include <string>

#include "decay_table.h"

namespace sonalyx {

// The decay table as CSV text for a spreadsheet: a heading row, then one row per item and
// band in table order with the rate (dB/s) and the time (ms) before and after calibration and
// their changes; an empty field where there is no figure. With a reference table, its six
// figures for the same item and band follow. CR LF line ends, full stops in numbers.
std::string decayTableCsv(const DecayTable& table, const DecayTable* reference = nullptr);

}  // namespace sonalyx
