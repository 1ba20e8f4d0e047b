#include "decay_table_csv.h"

#include <string_view>

#include "text_format.h"

namespace sonalyx {

namespace {

constexpr std::string_view kFigureHeadings =
    "Before rate [dB/s],Before RT60 [ms],After rate [dB/s],After RT60 [ms],"
    "Change rate [dB/s],Change RT60 [ms]";

void appendField(std::string& out, std::string_view text) {
    out += ',';
    if (text.find_first_of(",\"\r\n") == std::string_view::npos) {
        out += text;
        return;
    }
    out += '"';
    for (char c : text) {
        if (c == '"')
            out += '"';
        out += c;
    }
    out += '"';
}

void appendFigure(std::string& out, const std::optional<double>& value, int decimals) {
    out += ',';
    if (value)
        appendFixed(out, *value, decimals);
}

void appendFigures(std::string& out, const DecayCell* cell) {
    const DecayCell none;
    const DecayCell& c = cell != nullptr ? *cell : none;
    for (const auto* estimate : {&c.before, &c.after}) {
        appendFigure(out, *estimate ? std::optional((*estimate)->rate) : std::nullopt, 1);
        appendFigure(out, *estimate ? std::optional((*estimate)->rt60Ms) : std::nullopt, 0);
    }
    appendFigure(out, c.rateChange(), 1);
    appendFigure(out, c.rt60Change(), 0);
}

}  // namespace

std::string decayTableCsv(const DecayTable& table, const DecayTable* reference) {
    std::string out = "Item,Band,";
    out += kFigureHeadings;
    if (reference != nullptr) {
        std::string_view rest = kFigureHeadings;
        while (!rest.empty()) {
            const size_t comma = rest.find(',');
            out += ",Reference ";
            out += rest.substr(0, comma);
            rest = comma == std::string_view::npos ? std::string_view() : rest.substr(comma + 1);
        }
    }
    out += "\r\n";
    for (size_t i = 0; i < table.items.size(); ++i) {
        for (size_t b = 0; b < table.bands.size(); ++b) {
            std::string row;
            appendField(row, table.items[i]);
            appendField(row, table.bands[b]);
            out.append(row, 1);  // no comma before the first field
            appendFigures(out, &table.cells[i][b]);
            if (reference != nullptr)
                appendFigures(out, reference->find(table.items[i], table.bands[b]));
            out += "\r\n";
        }
    }
    return out;
}

}  // namespace sonalyx
