#include "date_stamp.h"

#include "document/text_format.h"

namespace sonalyx {

namespace {
void appendPadded(std::string& out, int value, int width) {
    std::string digits;
    appendInt(digits, value);
    if (static_cast<int>(digits.size()) < width)
        out.append(static_cast<size_t>(width) - digits.size(), '0');
    out += digits;
}
}  // namespace

std::string formatDateStamp(int year, int month, int day, int hour, int minute) {
    std::string stamp;
    appendPadded(stamp, year, 4);
    stamp += '.';
    appendPadded(stamp, month, 2);
    stamp += '.';
    appendPadded(stamp, day, 2);
    stamp += ' ';
    appendPadded(stamp, hour, 2);
    stamp += ':';
    appendPadded(stamp, minute, 2);
    return stamp;
}

std::string formatDateStamp(const std::tm& when) {
    return formatDateStamp(when.tm_year + 1900, when.tm_mon + 1, when.tm_mday, when.tm_hour,
                           when.tm_min);
}

bool stampDate(std::vector<std::string>& lines, const std::string& stamp) {
    for (size_t i = 0; i + 1 < lines.size(); ++i) {
        if (!startsWith(lines[i], "[DATE]"))
            continue;
        if (!lines[i + 1].empty())
            return false;
        lines[i + 1] = stamp;
        return true;
    }
    return false;
}

}  // namespace sonalyx
