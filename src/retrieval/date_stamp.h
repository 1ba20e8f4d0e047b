#pragma once

#include <ctime>
#include <string>
#include <vector>

namespace sonalyx {

// "yyyy.mm.dd hh:mm", the date form of a document's "[DATE]" block.
std::string formatDateStamp(int year, int month, int day, int hour, int minute);
// The same from a broken-down local time (tm_year counts from 1900, tm_mon from 0).
std::string formatDateStamp(const std::tm& when);

// Writes the date into received text: the first of the two empty lines after "[DATE]"
// becomes the stamp. False (and nothing changed) when the text has no such place.
bool stampDate(std::vector<std::string>& lines, const std::string& stamp);

}  // namespace sonalyx
