#include "sheets/sheet_comparison.h"

#include <map>
#include <string>
#include <tuple>

#include "document/text_format.h"

namespace sonalyx {

namespace {

struct CellPlace {
    std::string table;
    std::string block;
    std::string row;
    int occurrence = 0;
    int column = 0;

    auto operator<=>(const CellPlace&) const = default;
};

struct PlacedCell {
    std::size_t op;
    CellPlace place;
};

bool isMemoryLabel(const std::string& text) {
    return text.size() > 3 && startsWith(text, "[M") && text.back() == ']';
}

// Walks a sheet row by row and gives each value cell its place.
class CellPlacer {
  public:
    explicit CellPlacer(const std::vector<SheetOp>& ops) : ops_(ops) {}

    std::vector<PlacedCell> Place() {
        std::size_t start = 0;
        for (std::size_t i = 0; i < ops_.size(); ++i) {
            if (ops_[i].endsRow || i + 1 == ops_.size()) {
                Row(start, i + 1);
                start = i + 1;
            }
        }
        return std::move(cells_);
    }

  private:
    void Row(std::size_t begin, std::size_t end) {
        const SheetOp& first = ops_[begin];
        if (first.font == SheetFont::Title || first.font == SheetFont::Heading) {
            table_ = first.font == SheetFont::Heading ? first.text : std::string();
            block_.clear();
            return;
        }
        if (first.font == SheetFont::Memo)
            return;
        // A row of one text is a line of its own (the X-Curve, a blank line): all value.
        if (end - begin == 1) {
            Add(begin, std::string(), Occurrence(std::string()), 0);
            return;
        }
        // The label is the first filled cell; empty cells before it are indents.
        std::size_t label = begin;
        while (label < end && ops_[label].text.empty())
            ++label;
        if (label + 1 >= end)
            return;
        if (label == begin && isMemoryLabel(first.text))
            block_ = first.text;
        const std::string& row = ops_[label].text;
        const int occurrence = Occurrence(row);
        for (std::size_t i = label + 1; i < end; ++i)
            Add(i, row, occurrence, static_cast<int>(i - label - 1));
    }

    int Occurrence(const std::string& row) { return rows_[{table_, block_, row}]++; }

    void Add(std::size_t op, const std::string& row, int occurrence, int column) {
        cells_.push_back({op, {table_, block_, row, occurrence, column}});
    }

    const std::vector<SheetOp>& ops_;
    std::string table_;
    std::string block_;
    // Rows of a label seen so far in a table's block, for labels that repeat.
    std::map<std::tuple<std::string, std::string, std::string>, int> rows_;
    std::vector<PlacedCell> cells_;
};

}  // namespace

SheetComparison::SheetComparison(const SheetPicture& sheet, const SheetPicture& reference) {
    struct Counterpart {
        const std::string* text;
        bool matched = false;
    };
    std::map<CellPlace, Counterpart> theirs;
    for (const PlacedCell& cell : CellPlacer(reference.ops).Place())
        theirs.emplace(cell.place, Counterpart{&reference.ops[cell.op].text});
    for (const PlacedCell& cell : CellPlacer(sheet.ops).Place()) {
        const std::string& mine = sheet.ops[cell.op].text;
        const auto it = theirs.find(cell.place);
        if (it == theirs.end()) {
            if (!mine.empty()) {
                differences_.push_back({cell.op, cell.place.table, false, {}});
                ++withoutCounterpart_;
            }
            continue;
        }
        it->second.matched = true;
        if (*it->second.text != mine)
            differences_.push_back({cell.op, cell.place.table, true, *it->second.text});
    }
    for (const auto& [place, counterpart] : theirs) {
        if (!counterpart.matched && !counterpart.text->empty())
            ++referenceOnly_;
    }
}

std::vector<std::size_t> SheetComparison::DifferingOps() const {
    std::vector<std::size_t> ops;
    ops.reserve(differences_.size());
    for (const CellDifference& difference : differences_)
        ops.push_back(difference.op);
    return ops;
}

}  // namespace sonalyx
