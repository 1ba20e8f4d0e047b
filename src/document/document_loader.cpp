#include "document_loader.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <optional>
#include <unordered_map>

#include "channel_name.h"
#include "parameter_rows.h"
#include "speaker_layout.h"
#include "spreadsheet_text.h"
#include "text_format.h"

namespace sonalyx {

namespace {

constexpr std::string_view kGroupDelayTitle = "Group Delay Characteristics";
constexpr std::string_view kParametersTitle = "TORVE Parameters";
constexpr size_t kLongestField = 256;  // a field this long or longer reads as 0

constexpr int kGroupDelayDecimals = 6;  // ",%f" of the receive conversion
constexpr int kQualityDecimals = 1;     // the "Q" rows' ",%1.1f"

std::string_view trimmedBlanks(std::string_view text) {
    const size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

}  // namespace

bool isSectionTitle(std::string_view line, std::string_view title) {
    if (!line.empty() && (line[0] == ' ' || line[0] == '"'))
        return line.find(title) != std::string_view::npos;
    return trimmedBlanks(line) == title;
}

namespace {

bool isChannelName(std::string_view name) {
    return channelIdByAnyName(name) >= 0;
}

bool isGroupName(std::string_view name) {
    return groupIdByName(name) >= 0;
}

// First line of each bracketed marker. Every marker the reader looks for ends with its only
// ']', so "the first line that begins with the marker" is the first line whose text up to its
// first ']' equals the marker: one pass over the file answers every search.
class MarkerIndex {
  public:
    MarkerIndex(const std::vector<std::string>& lines, size_t begin, size_t end) {
        for (size_t i = begin; i < end; ++i) {
            const std::string& line = lines[i];
            if (line.empty() || line[0] != '[')
                continue;
            const size_t close = line.find(']');
            if (close == std::string::npos)
                continue;
            first_.emplace(std::string_view(line.data(), close + 1), i);
        }
    }
    // Index of the first line beginning with marker, or -1.
    long find(std::string_view marker) const {
        const auto it = first_.find(marker);
        return it == first_.end() ? -1 : static_cast<long>(it->second);
    }

  private:
    std::unordered_map<std::string_view, size_t> first_;
};

struct MemoEnd {
    std::initializer_list<std::string_view> prefixes;
    bool groupDelayTitle = false;

    bool matches(std::string_view line) const {
        for (std::string_view p : prefixes) {
            if (startsWith(line, p))
                return true;
        }
        return groupDelayTitle && isSectionTitle(line, kGroupDelayTitle);
    }
};

// Up to 20 lines after the marker, to the block's terminator; trailing commas and the block's
// trailing empty lines are not part of the memo.
Memo readMemo(const std::vector<std::string>& lines, long marker, size_t end, const MemoEnd& stop) {
    Memo memo;
    if (marker < 0)
        return memo;
    for (size_t i = static_cast<size_t>(marker) + 1; i < end && memo.size() < kMaxMemoLines; ++i) {
        const std::string& line = lines[i];
        if (stop.matches(line))
            break;
        if (line.empty() && i + 1 < end && stop.matches(lines[i + 1]))
            break;
        memo.emplace_back(trimTrailingCommas(line));
    }
    while (!memo.empty() && memo.back().empty())
        memo.pop_back();
    return memo;
}

std::string markerText(std::string_view prefix, int number, std::string_view suffix) {
    std::string marker(prefix);
    appendInt(marker, number);
    marker += suffix;
    return marker;
}

// Fields of a list line ([CHANNEL], [BAND]) without the padding a spreadsheet adds.
std::vector<std::string> listItems(const std::vector<std::string>& lines, long marker,
                                   size_t limit) {
    std::vector<std::string> items;
    if (marker < 0 || static_cast<size_t>(marker) + 1 >= lines.size())
        return items;
    const std::string_view line = trimTrailingCommas(lines[static_cast<size_t>(marker) + 1]);
    if (line.empty())
        return items;
    items = splitFields(line);
    if (items.size() > limit) {
        // The model holds `limit` items; the gaps at the end of those are dropped as the
        // trailing commas of a shorter line would be, so that the list reads back as written.
        items.resize(limit);
        while (!items.empty() && items.back().empty())
            items.pop_back();
    }
    return items;
}

// One decimal field of a data row: leading blanks, an optional sign, the number.
float readValue(const char* first, const char* last) {
    if (static_cast<size_t>(last - first) >= kLongestField)
        return 0.0f;
    while (first < last && *first == ' ')
        ++first;
    bool negative = false;
    if (first < last && (*first == '-' || *first == '+')) {
        negative = *first == '-';
        ++first;
    }
    double value = 0.0;
    const auto result = std::from_chars(first, last, value, std::chars_format::general);
    if (result.ec != std::errc() || value != value || value > 3.4e38 || value < -3.4e38) {
        return 0.0f;
    }
    return static_cast<float>(negative ? -value : value);
}

// A row of a label and values (32 reverb values or 64 group delay values); values missing at
// the end of the row stay 0, those past the last are ignored.
template <size_t N>
void readLabelledRow(std::string_view row, std::array<float, N>& values) {
    values.fill(0.0f);
    const size_t label = row.find(',');
    if (label == std::string_view::npos)
        return;
    const char* p = row.data() + label + 1;
    const char* const end = row.data() + row.size();
    for (size_t i = 0; i < N; ++i) {
        const char* comma = std::find(p, end, ',');
        values[i] = readValue(p, comma);
        if (comma == end)
            return;
        p = comma + 1;
    }
}

int reverbTypeFrom(const std::vector<std::string>& items) {
    if (items.size() < 2 || items[0] != "EQ ON")
        return 0;
    const std::string& word = items[1];
    if (word == "SYMMETRY")
        return 1;
    if (word == "ALL CH ADJUST")
        return 2;
    if (word == "FRONT ALIGN" || word == "FRONT ALIGN SYMMETRY")
        return 3;
    if (word == "CUSTOM")
        return 5;
    return 0;
}

class Loader {
  public:
    // The line after "[DATE]" is the date whatever it reads like: a date that looks like a
    // marker ("[DATA2A]") must not stand in for the block of that name, or the block moves at
    // every save.
    Loader(MeasurementDocument& doc, const std::vector<std::string>& lines)
        : doc_(doc),
          lines_(lines),
          index_(lines, std::min<size_t>(2, lines.size()), lines.size()) {}

    // Fields separated by semicolons in rows the loader reads: those rows are not read.
    bool separatedBySemicolons() const { return semicolons_; }

    void loadReverbSection() {
        if (!doc_.isNewData()) {
            doc_.fileMemos[kReverbSection] =
                memoAt(index_.find("[FILEMEMO]"), lines_.size(), {{"[MEMO", "[CHANNEL]"}});
        }
        readChannels();
        readBands();
        for (int k = 1; k <= doc_.channelCount; ++k)
            readDataBlocks(k);
        collectPositionsWithData();
        readReverbType();
        computeGroupValues(doc_, 0);
        computeGroupValues(doc_, 1);
        readGroupMemos();
        doc_.sectionLoaded[kReverbSection] = true;
    }

    void loadGroupDelaySection() {
        const size_t title = titleFrom(0, kGroupDelayTitle);
        if (title == lines_.size())
            return;
        groupDelayTitle_ = title;
        const size_t end = titleFrom(title + 1, kParametersTitle);
        doc_.groupDelayLines.assign(lines_.begin() + static_cast<long>(title) + 1,
                                    lines_.begin() + static_cast<long>(end));
        const auto& kept = doc_.groupDelayLines;
        const MarkerIndex keptIndex(kept, 0, kept.size());
        doc_.fileMemos[kGroupDelaySection] =
            readMemo(kept, keptIndex.find("[FILEMEMO]"), kept.size(), {{"[CHANNEL]"}});
        const long channel = keptIndex.find("[CHANNEL]");
        if (channel >= 0 && static_cast<size_t>(channel) + 1 < kept.size()) {
            doc_.groupDelayChannelLine = kept[static_cast<size_t>(channel) + 1];
        }
        restoreGroupDelayRows();
        parseGroupDelay(doc_);
        doc_.sectionLoaded[kGroupDelaySection] = true;
    }

    void loadParametersSection() {
        const size_t n = lines_.size();
        // The parameters follow the group delay section; a reverb memo line that reads like
        // their title is not taken for it while a title follows the group delay section.
        size_t title = titleFrom(groupDelayTitle_ ? *groupDelayTitle_ + 1 : 0, kParametersTitle);
        if (title == n)
            title = titleFrom(0, kParametersTitle);
        if (title == n)
            return;
        doc_.parameterLines.assign(lines_.begin() + static_cast<long>(title) + 1, lines_.end());
        const auto& kept = doc_.parameterLines;
        const MarkerIndex keptIndex(kept, 0, kept.size());
        doc_.fileMemos[kParametersSection] =
            readMemo(kept, keptIndex.find("[FILEMEMO]"), kept.size(), {{"* Speaker Setting"}});
        restoreParameterRows();
        ParameterGrid grid;
        doc_.sectionLoaded[kParametersSection] = ParseParameterRows(doc_.parameterLines, grid);
    }

  private:
    // The rows of groups get back the decimals a spreadsheet cut off.
    void restoreGroupDelayRows() {
        auto& kept = doc_.groupDelayLines;
        for (size_t i = groupDelayBlocksStart(kept); i < kept.size(); ++i) {
            std::string& line = kept[i];
            semicolons_ = semicolons_ || SpreadsheetText::separatedBySemicolon(line, isGroupName);
            if (isGroupName(std::string_view(line).substr(0, line.find(','))))
                SpreadsheetText::restoreDecimals(line, kGroupDelayDecimals);
        }
    }

    // The same for the "Q" rows of the standing wave filters; every row of the section has a
    // heading and at least two more cells.
    void restoreParameterRows() {
        auto& kept = doc_.parameterLines;
        auto row = std::find_if(kept.begin(), kept.end(), [](const std::string& line) {
            return startsWith(line, "* Speaker Setting");
        });
        for (; row != kept.end(); ++row) {
            const std::string_view first = std::string_view(*row).substr(0, row->find(','));
            semicolons_ = semicolons_ || std::count(first.begin(), first.end(), ';') >= 2;
            if (startsWith(*row, "Q,"))
                SpreadsheetText::restoreDecimals(*row, kQualityDecimals);
        }
    }

    // A memo of the reverb section, whose lines are then no section title while another line
    // is: a memo line may read like one, and the text a save writes keeps the memo before the
    // real title.
    Memo memoAt(long marker, size_t end, const MemoEnd& stop) {
        Memo memo = readMemo(lines_, marker, end, stop);
        if (!memo.empty()) {
            const size_t first = static_cast<size_t>(marker) + 1;
            memoLines_.emplace_back(first, first + memo.size());
        }
        return memo;
    }

    // The first title line at or after `first`, preferring lines outside the reverb memos;
    // the number of lines when there is none.
    size_t titleFrom(size_t first, std::string_view title) const {
        size_t any = lines_.size();
        for (size_t i = first; i < lines_.size(); ++i) {
            if (!isSectionTitle(lines_[i], title))
                continue;
            const bool inMemo =
                std::any_of(memoLines_.begin(), memoLines_.end(),
                            [i](const auto& r) { return i >= r.first && i < r.second; });
            if (!inMemo)
                return i;
            any = std::min(any, i);
        }
        return any;
    }

    void readChannels() {
        const long marker = index_.find("[CHANNEL]");
        if (marker < 0) {
            const SpeakerLayout& layout = defaultLayout();
            for (int id : layout.channelIds)
                doc_.channelNames.emplace_back(channelName(id).shortName);
        } else {
            doc_.channelNames = listItems(lines_, marker, kMaxPositions);
        }
        for (const std::string& name : doc_.channelNames) {
            const int id = channelIdByAnyName(name);
            doc_.channelLongNames.emplace_back(id >= 0 ? channelName(id).longName : name);
            channelIds_.push_back(id);
        }
        for (const std::string& name : doc_.channelNames)
            semicolons_ = semicolons_ || name.find(';') != std::string::npos;
        doc_.channelCount = static_cast<int>(doc_.channelNames.size());
        doc_.groupCount = groupCountForChannelCount(doc_.channelCount);
        doc_.layoutNumber = layoutNumberFor(doc_.channelNames);
    }

    void readBands() {
        const long marker = index_.find("[BAND]");
        if (marker < 0) {
            doc_.bandLabels = {"63", "125", "250", "500", "1k", "2k", "4k", "8k", "16k"};
        } else {
            doc_.bandLabels = listItems(lines_, marker, kMaxBands);
        }
        for (const std::string& label : doc_.bandLabels)
            semicolons_ = semicolons_ || label.find(';') != std::string::npos;
        doc_.bandCount = static_cast<int>(doc_.bandLabels.size());
    }

    // Position of a data block's header name in the channel list, or -1.
    int positionOf(std::string_view name) const {
        if (name.empty())
            return -1;  // an empty row is no header, whatever the channel list
        for (int p = 0; p < doc_.channelCount; ++p) {
            if (doc_.channelNames[p] == name)
                return p;
        }
        const int id = channelIdByAnyName(name);
        if (id < 0)
            return -1;
        for (int p = 0; p < doc_.channelCount; ++p) {
            if (channelIds_[p] == id)
                return p;
        }
        return -1;
    }

    // Reads the block at marker into variant v; returns its position, or -1.
    int readDataBlock(long marker, int variant) {
        if (marker < 0 || static_cast<size_t>(marker) + 1 >= lines_.size())
            return -1;
        const std::string& header = lines_[static_cast<size_t>(marker) + 1];
        const int p = positionOf(std::string_view(header).substr(0, header.find(',')));
        if (p < 0) {
            semicolons_ =
                semicolons_ || SpreadsheetText::separatedBySemicolon(header, isChannelName);
            return -1;
        }
        BandCurves& curves = doc_.reverbValues[variant][p];
        for (int band = 0; band < doc_.bandCount; ++band) {
            const size_t row = static_cast<size_t>(marker) + 3 + static_cast<size_t>(band);
            if (row >= lines_.size())
                break;
            readLabelledRow(lines_[row], curves[band]);
        }
        doc_.positionHasData[variant][p] = true;
        doc_.anyVariantData[variant] = true;
        return p;
    }

    void readDataBlocks(int k) {
        const int p0 = readDataBlock(index_.find(markerText("[DATA", k, "]")), 0);
        const long afterMarker = index_.find(markerText("[DATA", k, "A]"));
        if (afterMarker >= 0)
            doc_.variant1BlocksPresent = true;
        const int p1 = readDataBlock(afterMarker, 1);
        const int p = p0 >= 0 ? p0 : p1;
        if (p < 0)
            return;
        doc_.channelMemos[p] =
            memoAt(index_.find(markerText("[MEMO", k, "]")), lines_.size(), {{"[DATA"}});
    }

    void collectPositionsWithData() {
        for (int p = 0; p < doc_.channelCount; ++p) {
            const bool v0 = doc_.positionHasData[0][p];
            const bool v1 = doc_.positionHasData[1][p];
            const bool has[3] = {v0 || v1, v0, v1};
            for (int list = 0; list < 3; ++list) {
                if (!has[list])
                    continue;
                auto& l = doc_.positionsWithData[list];
                l.shortNames.push_back(doc_.channelNames[p]);
                l.longNames.push_back(doc_.channelLongNames[p]);
                ++l.count;
            }
        }
    }

    void readReverbType() {
        const long marker = index_.find("[REVERB TYPE]");
        doc_.reverbType = marker < 0 ? 0 : reverbTypeFrom(listItems(lines_, marker, lines_.size()));
        doc_.symmetry = doc_.reverbType == 1 || doc_.reverbType == 3;
        doc_.reverbTypeLabel = reverbTypeLabelFor(doc_.reverbType);
    }

    void readGroupMemos() {
        for (int g = 0; g < doc_.groupCount && g < kMaxGroups; ++g) {
            if (!doc_.groupHasData[0][g] && !doc_.groupHasData[1][g])
                continue;
            doc_.groupMemos[g] = memoAt(index_.find(markerText("[MEMOPAIR", g + 1, "]")),
                                        lines_.size(), {{"[MEMOPAIR"}, true});
            const int id = doc_.groupIdAt(g);
            doc_.groupsWithData.names.emplace_back(id >= 0 ? groupName(id) : "");
            doc_.groupsWithData.abbreviations.emplace_back(id >= 0 ? groupAbbreviation(id) : "");
            ++doc_.groupsWithData.count;
        }
    }

    MeasurementDocument& doc_;
    const std::vector<std::string>& lines_;
    MarkerIndex index_;
    std::vector<int> channelIds_;
    std::optional<size_t> groupDelayTitle_;
    std::vector<std::pair<size_t, size_t>> memoLines_;  // [first, end) of each reverb memo
    bool semicolons_ = false;
};

// Rows of a section whose title is missing are not read (the format says where a section
// starts); the user hears of it rather than losing them on the next save unawares.
void tellOfUnreadSections(const MeasurementDocument& doc, const std::vector<std::string>& lines,
                          Messenger* messenger) {
    const auto holds = [&](std::string_view prefix) {
        return std::any_of(lines.begin(), lines.end(),
                           [&](const std::string& line) { return startsWith(line, prefix); });
    };
    std::string unread;
    if (!doc.sectionLoaded[kGroupDelaySection] && (holds("[Before]") || holds("[After]")))
        unread = kGroupDelayTitle;
    if (!doc.sectionLoaded[kParametersSection] && holds("* Speaker Setting"))
        unread += (unread.empty() ? "" : ", ") + std::string(kParametersTitle);
    if (!unread.empty() && messenger) {
        messenger->show(
            "These sections were not read, as their title line is missing: " + unread + ".",
            doc.fileName, MessageMode::OkFitted);
    }
}

}  // namespace

size_t groupDelayBlocksStart(const std::vector<std::string>& kept) {
    for (size_t i = 0; i + 1 < kept.size(); ++i) {
        if (startsWith(kept[i], "[CHANNEL]"))
            return i + 2;
    }
    return 0;
}

void parseGroupDelay(MeasurementDocument& doc) {
    GroupDelayData& gd = doc.groupDelay;
    gd = GroupDelayData();
    const auto& kept = doc.groupDelayLines;
    const long n = static_cast<long>(kept.size());
    long before = -1;
    long after = -1;
    for (long i = static_cast<long>(groupDelayBlocksStart(kept));
         i < n && (before < 0 || after < 0); ++i) {
        if (before < 0 && startsWith(kept[i], "[Before]"))
            before = i;
        if (after < 0 && startsWith(kept[i], "[After]"))
            after = i;
    }
    const auto groupOf = [&](const std::string& line) {
        const std::string_view name = std::string_view(line).substr(0, line.find(','));
        for (int g = 0; g < doc.groupCount && g < kMaxGroups; ++g) {
            const int id = doc.groupIdAt(g);
            if (id >= 0 && groupName(id) == name)
                return g;
        }
        return -1;
    };
    if (before >= 0 && (after < 0 || before < after)) {
        const long stop = after < 0 ? n : after;
        for (long i = before; i < stop; ++i) {
            const int g = groupOf(kept[i]);
            if (g < 0)
                continue;
            gd.hasData[0][g] = true;
            readLabelledRow(kept[i], gd.values[0][g]);
            ++gd.groupCount;
        }
    }
    if (after >= 0) {
        // The last kept line is not read; a line without the offset text after the offset line
        // sets the span back to its default.
        for (long i = after; i < n - 1; ++i) {
            const int g = groupOf(kept[i]);
            if (g >= 0) {
                gd.hasData[1][g] = true;
                readLabelledRow(kept[i], gd.values[1][g]);
                continue;
            }
            const size_t at = kept[i].find("Offset = ");
            gd.span = at == std::string::npos
                          ? kDefaultGroupDelaySpan
                          : parseNumber(std::string_view(kept[i]).substr(at + 9));
        }
    }
}

bool DocumentLoader::load(MeasurementDocument& doc, const std::vector<std::string>& lines,
                          const std::string& fileName, Messenger* messenger) {
    doc.reset();
    doc.fileName = fileName;
    std::vector<std::string> restored;
    const std::vector<std::string>& text =
        SpreadsheetText::restore(lines, restored) ? restored : lines;
    const auto refuse = [&](const std::string& message, MessageMode mode) {
        doc.reset();
        doc.fileName = fileName;
        if (messenger)
            messenger->show(message, fileName, mode);
        return false;
    };
    if (text.empty() || !startsWith(text[0], "[DATE]"))
        return refuse("Illegal file format.", MessageMode::Ok);
    if (text.size() > 1)  // without the padding of a date shorter than its 16 characters
        doc.date = trimTrailingCommas(std::string_view(text[1]).substr(0, 16));

    // The first two rows are the program's own in every text it writes, so semicolons there
    // (the padding of the date row, or past its 16 characters) say the whole file is so.
    constexpr std::string_view kSemicolons =
        "The fields of this file are separated by semicolons. Please save it with commas between "
        "the fields.";
    if (startsWith(text[0], "[DATE];") ||
        (text.size() > 1 && text[1].find(';', 16) != std::string::npos))
        return refuse(std::string(kSemicolons), MessageMode::OkFitted);

    Loader loader(doc, text);
    loader.loadReverbSection();
    loader.loadGroupDelaySection();
    loader.loadParametersSection();
    if (loader.separatedBySemicolons() && messenger) {
        // Rows elsewhere may be a memo's text that reads like a row; they are named, not refused.
        messenger->show(
            "Some rows of this file are separated by semicolons and were not read. "
            "Please save it with commas between the fields.",
            fileName, MessageMode::OkFitted);
    }

    const bool anyLoaded = std::any_of(doc.sectionLoaded.begin(), doc.sectionLoaded.end(),
                                       [](bool loaded) { return loaded; });
    if (!anyLoaded)
        return false;
    tellOfUnreadSections(doc, text, messenger);
    doc.modified = doc.isNewData();
    return true;
}

}  // namespace sonalyx
