#include <gtest/gtest.h>

#include <charconv>
#include <iterator>
#include <tuple>
#include <type_traits>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "document/document_writer.h"
#include "document/text_format.h"
#include "support/golden.h"
#include "test_documents.h"

namespace sonalyx::test {
namespace {

MeasurementDocument loadLines(const std::vector<std::string>& lines,
                              const std::string& name = "/tmp/doc.csv") {
    MeasurementDocument doc;
    EXPECT_TRUE(DocumentLoader::load(doc, lines, name, nullptr));
    return doc;
}

std::vector<std::string> writeLines(const MeasurementDocument& doc) {
    std::vector<std::string> lines;
    DocumentWriter::write(doc, lines);
    return lines;
}

// Lines of a document with just a date, a channel line and given extra lines.
std::vector<std::string> withChannels(const std::string& channels,
                                      std::vector<std::string> extra = {}) {
    std::vector<std::string> lines = {"[DATE]", "2020.01.02 03:04", "", "[CHANNEL]", channels, ""};
    lines.insert(lines.end(), extra.begin(), extra.end());
    return lines;
}

// A field as text: numbers with two decimals (whole ones without), lists joined by '|' (numbers
// by ','), lists of lists by " / ".
template <typename T>
std::string str(const T& value) {
    if constexpr (std::is_convertible_v<T, std::string>) {
        return value;
    } else if constexpr (std::is_arithmetic_v<T>) {
        return formatFixed(value, std::is_integral_v<T> ? 0 : 2);
    } else {
        using Item = std::decay_t<decltype(*std::begin(value))>;
        const char* between = std::is_arithmetic_v<Item>                 ? ","
                              : std::is_convertible_v<Item, std::string> ? "|"
                                                                         : " / ";
        std::string out;
        for (auto it = std::begin(value); it != std::end(value); ++it)
            out += (it == std::begin(value) ? "" : between) + str(*it);
        return out;
    }
}

template <typename... Parts>
std::string line(const Parts&... parts) {
    std::string out;
    ((out += (out.empty() ? "" : " ") + str(parts)), ...);
    return out;
}

// Everything the loader fills in; curves only where a block holds data.
std::vector<std::string> dump(const MeasurementDocument& d) {
    std::string label = d.reverbTypeLabel;
    if (const auto cr = label.find("\r\n"); cr != std::string::npos)
        label.replace(cr, 2, "\\r\\n");
    std::vector<std::string> out = {
        line("date", d.date, "modified", d.modified, "layout", d.layoutNumber, "channels",
             d.channelCount, "groups", d.groupCount, "bands", d.bandCount),
        line("channels", d.channelNames, d.channelLongNames, "bands", d.bandLabels),
        line("reverb type", d.reverbType, "symmetry", d.symmetry, "label", label),
        line("variant 1 blocks", d.variant1BlocksPresent, "any data", d.anyVariantData, "sections",
             d.sectionLoaded),
        line("positions", d.positionHasData, "groups", d.groupHasData),
        line("group list", d.groupsWithData.names, d.groupsWithData.abbreviations),
        line("group delay", d.groupDelayChannelLine, d.groupDelay.groupCount, d.groupDelay.span,
             d.groupDelay.hasData),
        line("memos", d.fileMemos, "channels", d.channelMemos, "groups", d.groupMemos),
    };
    for (const auto& list : d.positionsWithData)
        out.push_back(line("position list", list.shortNames, list.longNames));
    for (int v = 0; v < kVariants; ++v) {
        for (int p = 0; p < kMaxPositions; ++p) {
            for (int b = 0; d.positionHasData[v][p] && b < d.bandCount; ++b)
                out.push_back(line("reverb", v, p, b, d.reverbValues[v][p][b]));
        }
        for (int g = 0; g < kMaxGroups; ++g) {
            for (int b = 0; d.groupHasData[v][g] && b < d.bandCount; ++b)
                out.push_back(line("group", v, g, b, d.groupValues[v][g][b]));
            if (d.groupDelay.hasData[v][g])
                out.push_back(line("delay", v, g, d.groupDelay.values[v][g]));
        }
    }
    return out;
}

// What the loader reads from each kind of input, in tests/data/document/loaded.txt.
TEST(DocumentLoader, LoadedDocumentsMatchGolden) {
    std::vector<std::string> memoLines = {"[DATE]", "d", "", "[FILEMEMO]"};
    for (int i = 0; i < 25; ++i)  // only 20 are kept
        memoLines.push_back("line " + std::to_string(i));
    memoLines.insert(memoLines.end(),
                     {"", "[CHANNEL]", "L,C,R,SR A,SL A", "", "[MEMO1]", "abc,,,", "", "",
                      "keeps inner blank", "", "[DATA1]", headerRow("L"), kTimeRow});
    // One flat 63 Hz curve per block, for the groups' energy means.
    std::vector<std::string> groups = {"[BAND]", "63", ""};
    for (const auto& [marker, channel, value] : {std::tuple{"[DATA1]", "L", 60.0},
                                                 {"[DATA3]", "R", 50.0},
                                                 {"[DATA2]", "C", 60.0},
                                                 {"[DATA4A]", "SR A", -3.0}}) {
        groups.insert(groups.end(),
                      {marker, headerRow(channel), kTimeRow, bandRow("63Hz", value, 0.0), ""});
    }
    const MeasurementDocument grouped = loadLines(withChannels("L,C,R,SR A,SL A", groups));
    // The variant-1-only group's memo is read but not written back.
    const auto written = writeLines(grouped);
    EXPECT_EQ(std::count(written.begin(), written.end(), "[MEMOPAIR3]"), 0);
    EXPECT_EQ(std::count(written.begin(), written.end(), "[MEMOPAIR1]"), 1);
    MeasurementDocument received;
    EXPECT_TRUE(DocumentLoader::load(received, smallDocumentLines(), "New Data", nullptr));
    MeasurementDocument offset = loadLines(smallDocumentLines());
    offset.groupDelayLines = {"[Before]", "Front,1",           "[After]",
                              "Front,2",  "(Offset = +2.5ms)", "last line is not read"};
    parseGroupDelay(offset);
    MeasurementDocument foreignGroup = loadLines(smallDocumentLines());
    foreignGroup.groupDelayLines = {"[Before]", "Top Surr,1", "Surround A,3", "[After]", ""};
    parseGroupDelay(foreignGroup);
    std::vector<GoldenSection> sections = {
        {"small document", dump(loadLines(smallDocumentLines()))},
        {"received text: modified, no reverb memo", dump(received)},
        {"date only: the defaults", dump(loadLines({"[DATE]", "2001.02.03 04:05 and more"}))},
        {"header name, not marker number, places a block; unknown XX dropped",
         dump(loadLines(
             withChannels("L,C,R,SR A,SL A",
                          {"[BAND]", "63", "", "[MEMO1]", "the surround", "", "[DATA1]",
                           headerRow("SR A"), kTimeRow, bandRow("63Hz", 4.0, 0.5), "", "[DATA2]",
                           headerRow("XX"), kTimeRow, bandRow("63Hz", 9.0, 0.5)})))},
        // Text gives 0 or the number in front of it; a field of 256 characters is skipped.
        {"band rows read what is there",
         dump(loadLines(
             withChannels("L,C,R,SR A,SL A", {"[BAND]", "63,125", "", "[DATA1]", headerRow("L"),
                                              kTimeRow, "63Hz, 1.5,+2,-3.25,abc,7x,,8,9,10,11",
                                              "125Hz," + std::string(299, '0') + "7" + ",4"})))},
        {"memo rules", dump(loadLines(memoLines))},
        {"missing reverb markers fall back to the first in the file",
         dump(loadLines({"[DATE]", "d", "", "  \"Group Delay Characteristics\"", "", "[FILEMEMO]",
                         "group delay memo", "", "[CHANNEL]", "Front,Center", ""}))},
        {"group energy means", dump(grouped)},
        {"group delay offset line", dump(offset)},
        {"group delay name not of the layout", dump(foreignGroup)},
    };
    // Reverb types and their symmetry; only the exact upper-case words count.
    for (const char* type : {"EQ OFF", "EQ ON,SYMMETRY", "EQ ON,ALL CH ADJUST", "EQ ON,FRONT ALIGN",
                             "EQ ON,FRONT ALIGN SYMMETRY", "EQ ON,CUSTOM", "EQ ON",
                             "EQ ON,LOUDNESS", "eq on,SYMMETRY"}) {
        sections.push_back({std::string("reverb type ") + type,
                            dump(loadLines({"[DATE]", "d", "[REVERB TYPE]", type}))});
    }
    expectSectionsMatchGolden(testDataPath("document/loaded.txt"), sections);
}

// How a spreadsheet saves a document back: rows padded to the widest, numbers without their
// trailing zeros (-0.00 as 0), the section titles bare, cells that hold a quote (or every text
// cell) quoted; then the separator, the line ends and a byte order mark, as chosen.
struct SpreadsheetSave {
    const char* name;
    bool quoteAll, byteOrderMark, titlesLost;
    std::string lineEnd;
    std::string separator;
    std::string message;  // what the loader says, when it says anything
};

std::string savedBySpreadsheet(const std::vector<std::string>& lines, const SpreadsheetSave& how) {
    std::vector<std::vector<std::string>> rows;
    size_t width = 0;
    for (const std::string& line : lines) {
        const bool title = line.find("  \"") == 0;
        if (title && how.titlesLost && line.find("Reverb") == std::string::npos)
            continue;
        rows.push_back(title ? std::vector<std::string>{line.substr(3, line.size() - 4)}
                             : splitFields(line));
        width = std::max(width, rows.back().size());
    }
    std::string text = how.byteOrderMark ? "\xEF\xBB\xBF" : "";
    for (auto& cells : rows) {
        cells.resize(width);
        for (size_t c = 0; c < width; ++c) {
            std::string& cell = cells[c];
            double value = 0.0;
            const char* end = cell.data() + cell.size();
            if (!cell.empty() && std::from_chars(cell.data(), end, value).ptr == end) {
                char shortest[32];
                cell.assign(shortest, std::to_chars(shortest, shortest + 32, value + 0.0).ptr);
            } else if (!cell.empty() && (how.quoteAll || cell.find('"') != std::string::npos)) {
                for (size_t q = cell.find('"'); q != std::string::npos; q = cell.find('"', q + 2))
                    cell.insert(q, 1, '"');
                cell = '"' + cell + '"';
            }
            text += (c ? how.separator : "") + cell;
        }
        text += how.lineEnd;
    }
    return text;
}

// Each loads as the document it is and saves back in the program's own format (only -0.00 is
// lost, as the spreadsheet wrote it 0), or is refused as a whole with a message that says why.
TEST(DocumentLoader, SpreadsheetSavesReadAsTheDocumentTheyAre) {
    const std::string semicolons =
        "The fields of this file are separated by semicolons. Please save it with commas between "
        "the fields.";
    const SpreadsheetSave saves[] = {
        {"LF, padded", false, false, false, "\n", ",", ""},
        {"every text cell quoted", true, false, false, "\r\n", ",", ""},
        {"byte order mark", false, true, false, "\n", ",", ""},
        {"CR alone", false, false, false, "\r", ",", ""},
        {"semicolons", false, false, false, "\n", ";", semicolons},
        {"semicolons, quoted, byte order mark", true, true, false, "\r\n", ";", semicolons},
        {"titles lost", false, false, true, "\n", ",",
         "These sections were not read, as their title line is missing: Group Delay "
         "Characteristics, TORVE Parameters."},
    };
    const auto sample = readLinesOrFail(samplesPath("sample-layout-9.csv"));
    std::vector<std::string> expected;
    for (const std::string& line : sample) {
        std::string own;
        for (const std::string& cell : splitFields(line)) {
            const bool negativeZero = cell.size() > 2 && cell[0] == '-' &&
                                      cell.find_first_not_of("0.", 1) == std::string::npos;
            own += "," + (negativeZero ? cell.substr(1) : cell);
        }
        expected.push_back(own.substr(1));
    }
    for (const SpreadsheetSave& save : saves) {
        RecordingMessenger messenger;
        MeasurementDocument doc;
        const bool loaded = DocumentLoader::load(doc, splitLines(savedBySpreadsheet(sample, save)),
                                                 "x.csv", &messenger);
        EXPECT_EQ(loaded, save.message != semicolons) << save.name;
        EXPECT_EQ(messenger.texts(),
                  save.message.empty() ? std::vector<std::string>{} : std::vector{save.message})
            << save.name;
        if (save.message.empty()) {
            EXPECT_EQ(unifiedDiff(expected, writeLines(doc)), "") << save.name;
        }
    }
}

TEST(DocumentLoader, IllegalFirstLineIsRefusedWithTheFileName) {
    RecordingMessenger messenger;
    MeasurementDocument doc;
    EXPECT_FALSE(DocumentLoader::load(doc, {"DATE", "[DATE]"}, "/x/run.csv", &messenger));
    ASSERT_EQ(messenger.messages.size(), 1u);
    EXPECT_EQ(messenger.messages[0].text, "Illegal file format.");
    EXPECT_EQ(messenger.messages[0].secondLine, "/x/run.csv");
    EXPECT_EQ(messenger.messages[0].mode, MessageMode::Ok);
    EXPECT_FALSE(DocumentLoader::load(doc, {}, "/x/empty.csv", &messenger));
    EXPECT_EQ(messenger.messages.size(), 2u);
}

// Type 4 is written as front align and reads back as 3.
TEST(DocumentLoader, ReverbTypeFourIsWrittenAsFrontAlign) {
    MeasurementDocument doc = loadLines({"[DATE]", "d"});
    doc.reverbType = 4;
    const auto lines = writeLines(doc);
    const auto it = std::find(lines.begin(), lines.end(), "[REVERB TYPE]");
    ASSERT_NE(it, lines.end());
    EXPECT_EQ(*(it + 1), "EQ ON,FRONT ALIGN");
    EXPECT_EQ(loadLines(lines).reverbType, 3);
}

TEST(DocumentLoader, LayoutFollowsTheChannelList) {
    const struct {
        const char* channels;
        int layout;
        int groups;
    } rows[] = {
        {"L,C,R,SR A,SBR,SBL,SL A,SL B,SR B", 11, 5},  // no Top Surr group
        {"L,C,R,SR A,SBR,SBL,SL A,EXSL,EXSR", 11, 5},
        {"L,C,R,SR A,SBR,SBL,SL A,SPBL,SPBR", 9, 5},
        {"L,C,R,SR A,SBR,SBL,SL A,TS", 8, 6},
        {"L,C,R,SR A,SL A,,,", 5, 3},  // a spreadsheet's padding adds no channels
    };
    for (const auto& row : rows) {
        const auto doc = loadLines(withChannels(row.channels));
        EXPECT_EQ(doc.layoutNumber, row.layout) << row.channels;
        EXPECT_EQ(doc.groupCount, row.groups) << row.channels;
    }
}

TEST(DocumentLoader, PositionsWithoutDataAreWrittenAsBareMarkers) {
    const auto doc = loadLines(withChannels("L,C,R,SR A,SL A"));
    const auto lines = writeLines(doc);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[DATA5]"), 1);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[MEMO5]"), 0);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "[DATA5A]"), 0);
    EXPECT_EQ(std::count(lines.begin(), lines.end(), "  \"TORVE Parameters\""), 1);
}

}  // namespace
}  // namespace sonalyx::test
