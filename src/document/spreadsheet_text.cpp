#include "spreadsheet_text.h"

#include <algorithm>
#include <charconv>

#include "text_format.h"

namespace sonalyx {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// A quoted cell ("a ""b"" c") as its text; what follows the closing quote up to the next comma
// is kept as it stands, and a quote that is never closed runs to the end of the line.
std::string unquoted(std::string_view line) {
    std::string out;
    out.reserve(line.size());
    size_t i = 0;
    while (true) {
        if (i < line.size() && line[i] == '"') {
            for (++i; i < line.size(); ++i) {
                if (line[i] != '"') {
                    out += line[i];
                } else if (i + 1 < line.size() && line[i + 1] == '"') {
                    out += '"';
                    ++i;
                } else {
                    ++i;
                    break;
                }
            }
        }
        const size_t comma = line.find(',', i);
        out += line.substr(i, comma == std::string_view::npos ? comma : comma - i);
        if (comma == std::string_view::npos)
            return out;
        out += ',';
        i = comma + 1;
    }
}

bool isPlainNumber(std::string_view cell) {
    const size_t i = cell.empty() || cell[0] != '-' ? 0 : 1;
    if (i >= cell.size() || !((cell[i] >= '0' && cell[i] <= '9') || cell[i] == '.'))
        return false;  // from_chars would take "inf" and "nan"
    double value = 0.0;
    const auto [end, ec] = std::from_chars(cell.data() + i, cell.data() + cell.size(), value,
                                           std::chars_format::general);
    return ec == std::errc() && end == cell.data() + cell.size();
}

}  // namespace

bool SpreadsheetText::restore(const std::vector<std::string>& lines,
                              std::vector<std::string>& restored) {
    if (lines.empty())
        return false;
    std::string_view first = lines[0];
    const bool marked = startsWith(first, kByteOrderMark);
    if (marked)
        first.remove_prefix(kByteOrderMark.size());
    // A spreadsheet pads the first row as it pads every other one, or quotes its text.
    const bool spreadsheet =
        marked || startsWith(first, "\"[DATE]\"") || startsWith(first, "[DATE],");
    bool padded = false;
    for (const std::string& line : lines)
        padded = padded || (!line.empty() && line.back() == ',');
    if (!spreadsheet && !padded)
        return false;
    restored.clear();
    restored.reserve(lines.size());
    for (size_t i = 0; i < lines.size(); ++i) {
        const std::string_view line = i == 0 ? first : std::string_view(lines[i]);
        std::string text = spreadsheet ? unquoted(line) : std::string(line);
        text.resize(trimTrailingCommas(text).size());
        restored.push_back(std::move(text));
    }
    return true;
}

void SpreadsheetText::restoreDecimals(std::string& row, int decimals) {
    std::string out;  // stays empty while every cell is as the document writes it
    size_t start = row.find(',');
    while (start != std::string::npos) {
        const size_t end = std::min(row.find(',', start + 1), row.size());
        const std::string_view cell(row.data() + start + 1, end - start - 1);
        const size_t point = cell.find('.');
        const bool written = point != std::string_view::npos &&
                             cell.size() - point - 1 == static_cast<size_t>(decimals) &&
                             cell.find_first_of("eE") == std::string_view::npos;
        if (!written && isPlainNumber(cell)) {
            if (out.empty())
                out.assign(row, 0, start);
            out += ',';
            appendFixed(out, parseNumber(cell), decimals);
        } else if (!out.empty()) {
            out.append(row, start, end - start);
        }
        start = end < row.size() ? end : std::string::npos;
    }
    if (!out.empty())
        row = std::move(out);
}

}  // namespace sonalyx
