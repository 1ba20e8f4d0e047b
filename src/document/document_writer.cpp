#include "document_writer.h"

#include "document_loader.h"
#include "speaker_layout.h"
#include "text_format.h"

namespace sonalyx {

namespace {

constexpr std::string_view kTimeRow =
    "Time[msec],5,10,15,20,25,30,35,40,45,50,55,60,65,70,75,80,85,90,95,100,105,110,115,120,"
    "125,130,135,140,145,150,155,160";

std::string numbered(std::string_view prefix, int number, std::string_view suffix) {
    std::string s(prefix);
    appendInt(s, number);
    s += suffix;
    return s;
}

std::string joined(const std::vector<std::string>& items) {
    std::string line;
    for (size_t i = 0; i < items.size(); ++i) {
        if (i)
            line += ',';
        line += items[i];
    }
    return line;
}

std::string reverbTypeLine(int type) {
    switch (type) {
        case 1:
            return "EQ ON,SYMMETRY";
        case 2:
            return "EQ ON,ALL CH ADJUST";
        case 3:
        case 4:
            return "EQ ON,FRONT ALIGN";  // type 4 reads back as 3
        case 5:
            return "EQ ON,CUSTOM";
        default:
            return "EQ OFF";
    }
}

class Writer {
  public:
    Writer(const MeasurementDocument& doc, std::vector<std::string>& out) : doc_(doc), out_(out) {}

    void write() {
        out_.reserve(out_.size() + 64 + static_cast<size_t>(doc_.channelCount) * 44 +
                     doc_.groupDelayLines.size() + doc_.parameterLines.size());
        out_.emplace_back("[DATE]");
        out_.push_back(doc_.date);
        out_.emplace_back();
        writeReverbSection();
        writeGroupDelaySection();
        writeParametersSection();
    }

  private:
    void memoBlock(std::string marker, const Memo& memo) {
        out_.push_back(std::move(marker));
        out_.insert(out_.end(), memo.begin(), memo.end());
        out_.emplace_back();
    }

    void writeReverbSection() {
        out_.emplace_back("  \"Reverb Characteristics\"");
        out_.emplace_back();
        memoBlock("[FILEMEMO]", doc_.fileMemos[kReverbSection]);
        out_.emplace_back("[CHANNEL]");
        out_.push_back(joined(doc_.channelNames));
        out_.emplace_back();
        out_.emplace_back("[BAND]");
        out_.push_back(joined(doc_.bandLabels));
        out_.emplace_back();
        out_.emplace_back("[REVERB TYPE]");
        out_.push_back(reverbTypeLine(doc_.reverbType));
        out_.emplace_back();
        for (int p = 0; p < doc_.channelCount && p < kMaxPositions; ++p)
            writeChannelBlock(p);
        // A group that holds only after-calibration data keeps its memo unwritten.
        for (int g = 0; g < doc_.groupCount && g < kMaxGroups; ++g) {
            if (doc_.groupHasData[0][g])
                memoBlock(numbered("[MEMOPAIR", g + 1, "]"), doc_.groupMemos[g]);
        }
        out_.emplace_back();
        out_.emplace_back();
    }

    void writeChannelBlock(int p) {
        const int number = p + 1;
        const bool v0 = doc_.positionHasData[0][p];
        const bool v1 = doc_.positionHasData[1][p];
        if (v0 || v1)
            memoBlock(numbered("[MEMO", number, "]"), doc_.channelMemos[p]);
        out_.push_back(numbered("[DATA", number, "]"));
        if (v0)
            writeMeasurement(p, 0);
        out_.emplace_back();
        if (!doc_.variant1BlocksPresent)
            return;
        out_.push_back(numbered("[DATA", number, "A]"));
        if (v1)
            writeMeasurement(p, 1);
        out_.emplace_back();
    }

    void writeMeasurement(int p, int variant) {
        std::string header = doc_.channelNames[p];
        for (int i = 0; i < kTimePoints; ++i) {
            header += ',';
            appendInt(header, i);
        }
        out_.push_back(std::move(header));
        out_.emplace_back(kTimeRow);
        const BandCurves& curves = doc_.reverbValues[variant][p];
        for (int band = 0; band < doc_.bandCount && band < kMaxBands; ++band) {
            std::string row;
            row.reserve(doc_.bandLabels[band].size() + 2 + kTimePoints * 8);
            row += doc_.bandLabels[band];
            row += "Hz";
            for (float value : curves[band]) {
                row += ',';
                appendFixed2(row, value);
            }
            out_.push_back(std::move(row));
        }
        out_.push_back(numbered("(Level[dB] = ", kLevelBase, " + Value)"));
    }

    void writeGroupDelaySection() {
        out_.emplace_back("  \"Group Delay Characteristics\"");
        out_.emplace_back();
        memoBlock("[FILEMEMO]", doc_.fileMemos[kGroupDelaySection]);
        out_.emplace_back("[CHANNEL]");
        out_.push_back(doc_.groupDelayChannelLine);
        out_.emplace_back();
        const auto& kept = doc_.groupDelayLines;
        // The memo and the channel line were written above; the blocks start where the loader
        // looks for them.
        size_t first = groupDelayBlocksStart(kept);
        while (first < kept.size() && !startsWith(kept[first], "[Before]"))
            ++first;
        for (size_t i = first; i < kept.size(); ++i) {
            if (i == first) {
                out_.emplace_back("[Before]");
            } else if (startsWith(kept[i], "[After]")) {
                out_.emplace_back("[After]");
            } else {
                out_.push_back(kept[i]);
            }
        }
    }

    void writeParametersSection() {
        out_.emplace_back("  \"TORVE Parameters\"");
        out_.emplace_back();
        memoBlock("[FILEMEMO]", doc_.fileMemos[kParametersSection]);
        const auto& kept = doc_.parameterLines;
        size_t first = 0;
        while (first < kept.size() && !startsWith(kept[first], "* Speaker Setting"))
            ++first;
        for (size_t i = first; i < kept.size(); ++i) {
            out_.emplace_back(trimTrailingCommas(kept[i]));
        }
    }

    const MeasurementDocument& doc_;
    std::vector<std::string>& out_;
};

}  // namespace

void DocumentWriter::write(const MeasurementDocument& doc, std::vector<std::string>& lines) {
    Writer(doc, lines).write();
}

}  // namespace sonalyx
