#pragma once

#include <string>
#include <string_view>
#include <vector>

// Locale-free number formatting and parsing: documents always use a full stop.
namespace sonalyx {

// printf("%.Nf") without the C locale: appends value with `decimals` decimals to out.
void appendFixed(std::string& out, double value, int decimals);
std::string formatFixed(double value, int decimals);
// The same as appendFixed(out, value, 2) for a float, without the general conversion: a float
// times 100 is exact in double, so rounding it to an integer (ties to even) gives printf's digits.
void appendFixed2(std::string& out, float value);
void appendInt(std::string& out, long long value);

// Reads a leading decimal number the way the document reader does: leading blanks allowed,
// an optional sign, digits with an optional fraction and exponent; anything that is not a
// number reads as 0.
double parseNumber(std::string_view text);

// Splits at every ','.
std::vector<std::string> splitFields(std::string_view line);
bool startsWith(std::string_view text, std::string_view prefix);
// Removes trailing commas.
std::string_view trimTrailingCommas(std::string_view text);

}  // namespace sonalyx
