#pragma once

#include <cstdint>
#include <string>
#include <vector>

// The monitor trace lines of the serial session. Lines grow with the data; only a receive of
// more than 2000 bytes is shortened, as the trace has always done.
namespace sonalyx {

// "<? E I 0d >": '?' and capital letters as characters, every other byte as two hex digits.
std::string sendTraceLine(const std::vector<std::uint8_t>& bytes);
// "<45 30 34 >", or for more than 2000 bytes "<xx  Too many data.>".
std::string receiveTraceLine(const std::vector<std::uint8_t>& bytes);

}  // namespace sonalyx
