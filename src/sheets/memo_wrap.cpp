#include "sheets/memo_wrap.h"

#include <string_view>

namespace sonalyx {

namespace {

bool isContinuationByte(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return byte >= 0x80 && byte < 0xC0;
}

// The nearest character boundary at or below position (never splits a UTF-8 sequence).
std::size_t boundaryAtOrBelow(std::string_view text, std::size_t position) {
    while (position > 0 && position < text.size() && isContinuationByte(text[position]))
        --position;
    return position;
}

std::size_t firstCharacterEnd(std::string_view text) {
    std::size_t end = 1;
    while (end < text.size() && isContinuationByte(text[end]))
        ++end;
    return end;
}

// The longest prefix length (at a character boundary) that fits the width; widths grow with
// the prefix, so a binary search needs only a few measurements even for a very long line.
std::size_t longestFittingPrefix(std::string_view text, int width, SheetFont font,
                                 const TextMetrics& metrics) {
    std::size_t low = 0;
    std::size_t high = text.size();
    while (low < high) {
        const std::size_t middle = boundaryAtOrBelow(text, low + (high - low + 1) / 2);
        if (middle <= low) {
            // No boundary between low and high other than low itself: try the next character.
            const std::size_t next = low + firstCharacterEnd(text.substr(low));
            if (next <= high && metrics.width(text.substr(0, next), font) <= width)
                low = next;
            break;
        }
        if (metrics.width(text.substr(0, middle), font) <= width)
            low = middle;
        else
            high = middle - 1;
    }
    return low;
}

}  // namespace

std::vector<std::string> wrapMemoLines(const std::vector<std::string>& memo, int width,
                                       SheetFont font, const TextMetrics& metrics,
                                       std::size_t maxLines) {
    std::vector<std::string> out;
    for (const std::string& line : memo) {
        if (out.size() >= maxLines)
            break;
        std::string_view rest = line;
        if (rest.empty()) {
            out.emplace_back();
            continue;
        }
        while (!rest.empty() && out.size() < maxLines) {
            if (metrics.width(rest, font) <= width) {
                out.emplace_back(rest);
                break;
            }
            const std::size_t fits = longestFittingPrefix(rest, width, font, metrics);
            // Break at the last blank that fits (a blank just past the fit counts too).
            std::size_t blank = rest.substr(0, fits + 1).rfind(' ');
            if (blank != std::string_view::npos && blank > 0) {
                out.emplace_back(rest.substr(0, blank));
                rest.remove_prefix(blank + 1);
                continue;
            }
            const std::size_t cut = fits > 0 ? fits : firstCharacterEnd(rest);
            out.emplace_back(rest.substr(0, cut));
            rest.remove_prefix(cut);
        }
    }
    return out;
}

}  // namespace sonalyx
