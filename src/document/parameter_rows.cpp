#include "parameter_rows.h"

#include <algorithm>
#include <cmath>

#include "text_format.h"

namespace sonalyx {

namespace {

constexpr size_t kDistanceFieldLength = 30;  // only this much of a cell is looked at
constexpr int kDistanceLengthColumns = 7;    // columns 1..7 count toward the longest text

bool endsWith(std::string_view text, std::string_view suffix) {
    return text.size() >= suffix.size() &&
           text.compare(text.size() - suffix.size(), suffix.size(), suffix) == 0;
}

// Whole units from a measured value: a fraction beyond 0.9 first, then one of a half or more,
// rounds away from zero; anything between -1 and 0 is 0.
long long roundDistance(double value) {
    if (!std::isfinite(value))
        return 0;
    value = std::clamp(value, -1e12, 1e12);
    if (value > -1.0 && value < 0.0)
        return 0;
    double whole = std::trunc(value);
    double fraction = value - whole;
    if (fraction > 0.9) {
        whole += 1.0;
        fraction -= 1.0;
    } else if (fraction < -0.9) {
        whole -= 1.0;
        fraction += 1.0;
    }
    if (fraction >= 0.5) {
        whole += 1.0;
    } else if (fraction <= -0.5) {
        whole -= 1.0;
    }
    return static_cast<long long>(whole);
}

// "%d<sep>%02d<unit>" of a split value, with the sign in front.
std::string twoPartText(long long total, long long perUnit, std::string_view separator,
                        std::string_view unit) {
    std::string text;
    if (total < 0)
        text += '-';
    const long long magnitude = total < 0 ? -total : total;
    appendInt(text, magnitude / perUnit);
    text += separator;
    const long long rest = magnitude % perUnit;
    if (rest < 10)
        text += '0';
    appendInt(text, rest);
    text += unit;
    return text;
}

// A feet-and-inches text with one blank after its apostrophe, without surrounding quotes.
std::string normalisedFeetAndInches(std::string text) {
    if (!text.empty() && text.front() == '"') {
        text.erase(0, 1);
        const size_t close = text.find('"');
        if (close != std::string::npos)
            text.resize(close + 1);
    }
    const size_t apostrophe = text.find('\'');
    if (apostrophe != std::string::npos &&
        (apostrophe + 1 >= text.size() || text[apostrophe + 1] != ' ')) {
        text.insert(apostrophe + 1, 1, ' ');
    }
    return text;
}

}  // namespace

const std::string& ParameterGrid::cell(int row, int column) const {
    static const std::string empty;
    if (row < 0 || row >= rowCount() || column < 0 || column >= kParameterColumns)
        return empty;
    return rows[static_cast<size_t>(row)][static_cast<size_t>(column)];
}

bool convertDistanceCell(const std::string& field, std::string& out) {
    const std::string text = field.substr(0, kDistanceFieldLength);
    if (endsWith(text, "cm")) {
        out = twoPartText(roundDistance(parseNumber(text)), 100, ".", "m");
        return true;
    }
    const bool feet = endsWith(text, "feet");
    if (feet || endsWith(text, "inch")) {
        const double inches = parseNumber(text) * (feet ? 12.0 : 1.0);
        out = twoPartText(roundDistance(inches), 12, "' ", "\"");
        return true;
    }
    if (endsWith(text, "\"") && text.find('\'') != std::string::npos) {
        // A text that the blank would push past the characters read is left alone: read back,
        // it would be cut and rewritten again at every open and save.
        std::string normalised = normalisedFeetAndInches(text);
        if (normalised.size() > kDistanceFieldLength || normalised == field)
            return false;
        out = std::move(normalised);
        return true;
    }
    return false;
}

bool ParseParameterRows(std::vector<std::string>& lines, ParameterGrid& grid) {
    grid.rows.clear();
    grid.longestDistanceText = 0;
    if (lines.empty())
        return false;
    grid.rows.resize(lines.size());
    bool inDistanceBlock = false;
    for (size_t r = 0; r < lines.size(); ++r) {
        auto& row = grid.rows[r];
        const std::string_view line = lines[r];
        size_t start = 0;
        for (int c = 0; c < kParameterColumns; ++c) {
            const size_t comma = line.find(',', start);
            row[c] = line.substr(
                start, comma == std::string_view::npos ? std::string_view::npos : comma - start);
            if (comma == std::string_view::npos)
                break;
            start = comma + 1;
        }
        if (row[0] == "* Channel Level")
            inDistanceBlock = false;
        if (inDistanceBlock) {
            bool converted = false;
            for (int c = 1; c < kParameterColumns; ++c) {
                std::string text;
                if (!row[c].empty() && convertDistanceCell(row[c], text)) {
                    row[c] = std::move(text);
                    converted = true;
                }
                if (c <= kDistanceLengthColumns) {
                    grid.longestDistanceText =
                        std::max(grid.longestDistanceText, static_cast<int>(row[c].size()));
                }
            }
            // The section keeps the display text from now on, so a later save writes it.
            if (converted) {
                std::string joined;
                for (int c = 0; c < kParameterColumns; ++c) {
                    if (c)
                        joined += ',';
                    joined += row[c];
                }
                lines[r] = std::move(joined);
            }
        }
        if (row[0] == "* Speaker Distance")
            inDistanceBlock = true;
    }
    return true;
}

}  // namespace sonalyx
