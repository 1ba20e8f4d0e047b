#include "text_format.h"

#include <charconv>
#include <cmath>

namespace sonalyx {

void appendFixed(std::string& out, double value, int decimals) {
    char buf[64];
    auto [end, ec] =
        std::to_chars(buf, buf + sizeof buf, value, std::chars_format::fixed, decimals);
    if (ec == std::errc()) {
        out.append(buf, end);
        return;
    }
    // Only a value too large for the buffer gets here; keep the text short and readable.
    auto [end2, ec2] = std::to_chars(buf, buf + sizeof buf, value);
    out.append(buf, ec2 == std::errc() ? end2 : buf);
}

void appendFixed2(std::string& out, float value) {
    const double scaled = static_cast<double>(value) * 100.0;
    if (!(std::fabs(scaled) < 1e15)) {
        appendFixed(out, value, 2);
        return;
    }
    long long hundredths = static_cast<long long>(std::nearbyint(std::fabs(scaled)));
    if (std::signbit(value))
        out += '-';
    appendInt(out, hundredths / 100);
    out += '.';
    const int cents = static_cast<int>(hundredths % 100);
    out += static_cast<char>('0' + cents / 10);
    out += static_cast<char>('0' + cents % 10);
}

std::string formatFixed(double value, int decimals) {
    std::string s;
    appendFixed(s, value, decimals);
    return s;
}

void appendInt(std::string& out, long long value) {
    char buf[24];
    auto [end, ec] = std::to_chars(buf, buf + sizeof buf, value);
    out.append(buf, end);
}

double parseNumber(std::string_view text) {
    size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t'))
        ++i;
    bool negative = false;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) {
        negative = text[i] == '-';
        ++i;
    }
    // from_chars takes no sign of its own beyond '-', so the sign is applied here.
    double value = 0.0;
    auto [ptr, ec] = std::from_chars(text.data() + i, text.data() + text.size(), value,
                                     std::chars_format::general);
    if (ec != std::errc() || !std::isfinite(value))
        return 0.0;
    (void)ptr;
    return negative ? -value : value;
}

std::vector<std::string> splitFields(std::string_view line) {
    std::vector<std::string> fields;
    size_t start = 0;
    while (true) {
        size_t comma = line.find(',', start);
        if (comma == std::string_view::npos) {
            fields.emplace_back(line.substr(start));
            return fields;
        }
        fields.emplace_back(line.substr(start, comma - start));
        start = comma + 1;
    }
}

bool startsWith(std::string_view text, std::string_view prefix) {
    return text.size() >= prefix.size() && text.compare(0, prefix.size(), prefix) == 0;
}

std::string_view trimTrailingCommas(std::string_view text) {
    size_t end = text.size();
    while (end > 0 && text[end - 1] == ',')
        --end;
    return text.substr(0, end);
}

}  // namespace sonalyx
