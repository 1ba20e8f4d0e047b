#include "sheets/parameter_tables.h"

#include <algorithm>
#include <array>

#include "document/text_format.h"
#include "sheets/memo_wrap.h"

namespace sonalyx {

namespace {

constexpr int kMemoWrapWidth = 500;
constexpr int kMemoMinLines = 3;
constexpr int kSettingLabelWidth = 80;
constexpr int kLevelLabelWidth = 80;
constexpr int kLevelValueWidth = 50;
constexpr int kDistanceLabelWidth = 100;
constexpr int kDistanceValueWidth = 50;
constexpr int kDistanceWideValueWidth = 75;
constexpr int kMemories = 6;

// Standing wave tables.
constexpr int kWaveMemoryWidth = 30;
constexpr int kWaveIndentWidth = 10;
constexpr int kWaveLabelWidth = 30;
constexpr int kWaveValueWidth = 50;
constexpr int kWaveGroupWidth = kWaveLabelWidth + 3 * kWaveValueWidth;
constexpr int kWaveGapWidth = 10;
constexpr int kWaveTrimIndent = 6 * kWaveValueWidth + 120;
constexpr int kWaveFullNameWidth = 80;

// Acoustic Cal EQ tables: bands in fields 2..10, the trim last in field 11.
constexpr int kEqLabelWidth = 80;
constexpr int kEqValueWidth = 50;
constexpr int kEqFirstField = 2;
constexpr int kEqLastField = 11;

struct WaveGroup {
    const char* name;
    int firstColumn;  // the group's label column; its three filters follow
};
constexpr std::array<WaveGroup, 3> kWaveGroups = {{{"Main", 0}, {"Center", 5}, {"Sub Woofer", 10}}};

// The rows of one memory's standing wave block, found by their labels: the filter numbers,
// then frequency, Q and attenuation of each filter.
constexpr std::array<std::string_view, 3> kWaveDataRows = {"Freq", "Q", "ATT"};
constexpr int kWaveTrimColumn = 13;  // "Main,,,,,Center,,,,,Sub Woofer,,Trim,<trim>"

// Attenuations are written as magnitudes; on the sheet they read as the cut they are, and a
// zero keeps the blank that the signed level form uses in place of a sign.
std::string withSign(const std::string& value) {
    if (value.empty() || value[0] == ' ' || value[0] == '-' || value[0] == '+')
        return value;
    return (parseNumber(value) == 0.0 ? " " : "-") + value;
}

const std::string& noText() {
    static const std::string empty;
    return empty;
}

std::string eqCellText(const std::string& text) {
    return text == "Trim" ? "TRIM" : text;
}

std::string eqLabelText(const std::string& text) {
    return text == "  Front Align Symmetry" ? "  Front Align" : text;
}

}  // namespace

std::string memoryLabel(int memory) {
    std::string label = "[M";
    appendInt(label, memory);
    label += ']';
    return label;
}

int ParameterTables::FindMarker(std::string_view marker) const {
    for (int r = 0; r < grid_.rowCount(); ++r) {
        if (cell(r, 0) == marker)
            return r;
    }
    return -1;
}

bool ParameterTables::IsMarker(int row) const {
    return startsWith(cell(row, 0), "* ");
}

bool ParameterTables::IsBlank(int row) const {
    for (int c = 0; c < kParameterColumns; ++c) {
        if (!cell(row, c).empty())
            return false;
    }
    return true;
}

bool ParameterTables::HasStandingWave() const {
    return FindMarker("* Standing Wave Control") >= 0;
}

int ParameterTables::FindMemoryRow(int marker, int memory) const {
    const std::string label = memoryLabel(memory);
    for (int r = marker + 1; r < grid_.rowCount() && !IsMarker(r); ++r) {
        if (cell(r, 0) == label)
            return r;
    }
    return -1;
}

// The row labelled label inside the block that starts at first (up to its blank line, the
// next memory or the next group); -1 when the block lacks it.
int ParameterTables::FindRowInBlock(int first, std::string_view label) const {
    for (int r = first + 1; r < grid_.rowCount(); ++r) {
        if (IsMarker(r) || IsBlank(r) || startsWith(cell(r, 0), "[M"))
            break;
        if (cell(r, 0) == label)
            return r;
    }
    return -1;
}

// Blank lines between a group line and its first row carry nothing.
int ParameterTables::FirstFilledRow(int row) const {
    while (row < grid_.rowCount() && IsBlank(row))
        ++row;
    return row;
}

void ParameterTables::FileMemo(const std::vector<std::string>& memo, int maxLines) {
    canvas_.DrawHeading("File Memo");
    const int left = canvas_.penX;
    const auto lines = wrapMemoLines(memo, kMemoWrapWidth, SheetFont::Memo, canvas_.metrics(),
                                     static_cast<std::size_t>(std::max(maxLines, 0)));
    for (const std::string& line : lines)
        canvas_.DrawMemoLine(line, left);
    for (int n = static_cast<int>(lines.size()); n < kMemoMinLines; ++n)
        canvas_.DrawLastCell("", left);
}

void ParameterTables::SpeakerSetting() {
    canvas_.DrawHeading("Speaker Setting");
    const int left = canvas_.penX;
    const int marker = FindMarker("* Speaker Setting");
    if (marker < 0)
        return;
    // The crossover row closes the group; a group cut short ends at the next one.
    for (int r = marker + 1; r < grid_.rowCount() && !IsMarker(r); ++r) {
        if (cell(r, 0).empty())
            continue;
        canvas_.DrawCell(cell(r, 0), kSettingLabelWidth);
        canvas_.DrawLastCell(cell(r, 2), left);
        if (cell(r, 0) == "Crossover")
            break;
    }
}

void ParameterTables::XCurve() {
    canvas_.DrawLastCell("", canvas_.penX);
    canvas_.DrawHeading("X-Curve");
    const int marker = FindMarker("* X-Curve");
    if (marker >= 0 && marker + 1 < grid_.rowCount() && !IsMarker(marker + 1))
        canvas_.DrawLine(cell(marker + 1, 2));
}

void ParameterTables::ChannelLevel(int memory) {
    canvas_.DrawHeading("Channel Level");
    MemoryColumnsTable("* Channel Level", memory, kLevelLabelWidth, kLevelValueWidth, true, true);
}

void ParameterTables::SpeakerDistance(int memory) {
    canvas_.DrawHeading("Speaker Distance");
    const int valueWidth = grid_.longestDistanceText >= kDistanceWideFrom ? kDistanceWideValueWidth
                                                                          : kDistanceValueWidth;
    MemoryColumnsTable("* Speaker Distance", memory, kDistanceLabelWidth, valueWidth, false, false);
}

// The level and distance groups: a memory heading ",,[M1],[M2].." two rows below the group
// line, then one row per channel with a value per memory in fields 2..7. Without the heading
// the rows follow the group line directly and hold one memory.
void ParameterTables::MemoryColumnsTable(std::string_view marker, int memory, int labelWidth,
                                         int valueWidth, bool rightAligned, bool setsNoMemoryFlag) {
    const int left = canvas_.penX;
    const int at = FindMarker(marker);
    if (at < 0)
        return;
    const auto value = [&](const std::string& text, bool last) {
        if (rightAligned && last)
            canvas_.DrawLastCellRight(text, valueWidth, left);
        else if (rightAligned)
            canvas_.DrawCellRight(text, valueWidth);
        else if (last)
            canvas_.DrawLastCell(text, left);
        else
            canvas_.DrawCell(text, valueWidth);
    };
    const bool memoryColumns = cell(at + 2, 2) == "[M1]";
    int first = at + 1;
    if (memoryColumns) {
        if (memory == 0) {
            canvas_.DrawCell("", labelWidth);
            for (int m = 1; m <= kMemories; ++m) {
                // The last label is written with two leading blanks; right-aligned, it still
                // lands where the others do.
                const std::string label =
                    (rightAligned && m == kMemories ? "  " : "") + memoryLabel(m);
                value(label, m == kMemories);
            }
        }
        first = at + 3;
    } else if (setsNoMemoryFlag) {
        noMemoryColumns_ = true;
    }
    for (int r = FirstFilledRow(first); r < grid_.rowCount() && !IsMarker(r); ++r) {
        canvas_.DrawCell(cell(r, 0), labelWidth);
        if (memory == 0) {
            for (int m = 1; m <= kMemories; ++m)
                value(cell(r, m + 1), m == kMemories);
        } else {
            value(cell(r, memory + 1), true);
        }
        if (cell(r + 1, 0).empty())
            break;
    }
}

bool ParameterTables::StandingWaveCompact(int memory) {
    const int marker = FindMarker("* Standing Wave Control");
    const int block = marker < 0 ? -1 : FindMemoryRow(marker, memory);
    if (block < 0)
        return false;
    const int left = canvas_.penX;
    canvas_.DrawCell(memoryLabel(memory), kWaveMemoryWidth);
    for (std::size_t g = 0; g < kWaveGroups.size(); ++g) {
        if (g + 1 == kWaveGroups.size()) {
            canvas_.DrawLastCell(kWaveGroups[g].name, left);
        } else {
            canvas_.DrawCell(kWaveGroups[g].name, kWaveGroupWidth);
            canvas_.DrawCell("", kWaveGapWidth);
        }
    }
    canvas_.DrawCell("", kWaveMemoryWidth);
    canvas_.DrawCell("", kWaveIndentWidth);
    for (std::size_t g = 0; g < kWaveGroups.size(); ++g) {
        canvas_.DrawCell("No.", kWaveLabelWidth);
        canvas_.DrawCell("1", kWaveValueWidth);
        canvas_.DrawCell("2", kWaveValueWidth);
        if (g + 1 == kWaveGroups.size()) {
            canvas_.DrawLastCell("3", left);
        } else {
            canvas_.DrawCell("3", kWaveValueWidth);
            canvas_.DrawCell("", kWaveGapWidth);
        }
    }
    for (const std::string_view label : kWaveDataRows) {
        const int row = FindRowInBlock(block, label);
        canvas_.DrawCell("", kWaveMemoryWidth);
        canvas_.DrawCell("", kWaveIndentWidth);
        for (std::size_t g = 0; g < kWaveGroups.size(); ++g) {
            canvas_.DrawCell(std::string(label), kWaveLabelWidth);
            const int column = kWaveGroups[g].firstColumn;
            for (int f = 1; f <= 3; ++f) {
                const std::string& raw = row < 0 ? noText() : cell(row, column + f);
                const std::string text = label == "ATT" ? withSign(raw) : raw;
                if (f == 3 && g + 1 == kWaveGroups.size())
                    canvas_.DrawLastCell(text, left);
                else
                    canvas_.DrawCell(text, kWaveValueWidth);
            }
            if (g + 1 < kWaveGroups.size())
                canvas_.DrawCell("", kWaveGapWidth);
        }
    }
    const int trimRow = FindRowInBlock(block, "Main");
    canvas_.DrawCell("", kWaveTrimIndent);
    canvas_.DrawCell("TRIM", kWaveValueWidth);
    canvas_.DrawLastCell(trimRow < 0 ? noText() : cell(trimRow, kWaveTrimColumn), left);
    canvas_.DrawLastCell("", left);
    return true;
}

// One memory on its own sheet: the three groups one below the other, each a small table whose
// first row carries the group's name over the filter numbers, followed by the frequency, Q and
// attenuation rows with their labels indented like the sub-rows of the EQ table; the trim
// closes the table under the first filter column.
bool ParameterTables::StandingWaveFull(int memory) {
    const int marker = FindMarker("* Standing Wave Control");
    const int block = marker < 0 ? -1 : FindMemoryRow(marker, memory);
    if (block < 0)
        return false;
    const int left = canvas_.penX;
    const auto filterRow = [&](const std::string& label, int row, int column, bool level) {
        canvas_.DrawCell(label, kWaveFullNameWidth);
        canvas_.DrawCell("", kWaveLabelWidth);
        for (int f = 1; f <= 3; ++f) {
            const std::string& raw = row < 0 ? noText() : cell(row, column + f);
            const std::string text = level ? withSign(raw) : raw;
            if (f == 3)
                canvas_.DrawLastCell(text, left);
            else
                canvas_.DrawCell(text, kWaveValueWidth);
        }
    };
    const int numbers = FindRowInBlock(block, "No.");
    for (const WaveGroup& group : kWaveGroups) {
        filterRow(group.name, numbers, group.firstColumn, false);
        for (const std::string_view label : kWaveDataRows) {
            filterRow("  " + std::string(label), FindRowInBlock(block, label), group.firstColumn,
                      label == "ATT");
        }
    }
    const int trimRow = FindRowInBlock(block, "Main");
    canvas_.DrawCell("TRIM", kWaveFullNameWidth);
    canvas_.DrawCell("", kWaveLabelWidth);
    canvas_.DrawLastCell(trimRow < 0 ? noText() : cell(trimRow, kWaveTrimColumn), left);
    return true;
}

// A memory's block as the receive conversion writes it: the band heading (which carries the
// memory label), the memory's curve row ("All Ch Adjust", "Front Ch Align", "Custom1",
// "Custom2") right under it, then one row per channel; a front-align sub-row
// ("  Front Align Symmetry") is drawn where the document has it, among the channel rows. The
// block ends at its blank line, the next memory or the next group.
bool ParameterTables::AcousticCalEq(int memory, bool compact) {
    const int marker = FindMarker("* Acoustic Cal EQ");
    if (marker < 0)
        return false;
    int first = -1;
    if (startsWith(cell(marker + 2, 0), "[M")) {
        first = FindMemoryRow(marker, memory);
    } else if (memory == 1) {
        // Data of a single memory: one block without a memory label, shown as memory 1.
        first = FirstFilledRow(marker + 1);
    }
    if (first < 0 || first >= grid_.rowCount() || IsMarker(first))
        return false;
    const int left = canvas_.penX;
    for (int r = first; r < grid_.rowCount() && !IsMarker(r); ++r) {
        if (r > first && (IsBlank(r) || startsWith(cell(r, 0), "[M")))
            break;
        // The band heading carries the memory label; the full form's title already names it.
        std::string label =
            r == first ? (compact ? memoryLabel(memory) : std::string()) : eqLabelText(cell(r, 0));
        canvas_.DrawCell(label, kEqLabelWidth);
        for (int c = kEqFirstField; c < kEqLastField; ++c)
            canvas_.DrawCellRight(eqCellText(cell(r, c)), kEqValueWidth);
        canvas_.DrawLastCellRight(eqCellText(cell(r, kEqLastField)), kEqValueWidth, left);
    }
    return true;
}

}  // namespace sonalyx
