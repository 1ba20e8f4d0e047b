#include "print/report_content.h"

#include <QObject>
#include <cmath>

#include "document/decay_table.h"
#include "document/document_comparison.h"
#include "print/report_chart_block.h"
#include "print/report_charts.h"
#include "print/report_sheet_block.h"
#include "print/report_table_block.h"
#include "print/report_text_block.h"
#include "sheets/parameter_tables.h"
#include "sheets/sheet_comparison.h"
#include "views/group_delay/group_delay_view.h"
#include "views/reverb/reverb_filler.h"
#include "views/window/memo_codec.h"

namespace sonalyx {

namespace {

constexpr double kReverbChartHeight = 170;
constexpr double kGroupDelayChartHeight = 250;
constexpr int kTableRowsPerBlock = 40;
const QString kNone = QStringLiteral("\u2014");

using Kind = ReportTextBlock::Kind;

void Text(ReportBlocks& blocks, Kind kind, const QString& text) {
    blocks.push_back(std::make_unique<ReportTextBlock>(kind, text));
}

void Table(ReportBlocks& blocks, const ReportTableBlock& table) {
    for (ReportTableBlock& part : ReportTableBlock::Split(table, kTableRowsPerBlock)) {
        blocks.push_back(std::make_unique<ReportTableBlock>(std::move(part)));
    }
}

QString Decode(const std::string& bytes) {
    return MemoCodec::decodeLine(bytes);
}

QString Joined(const std::vector<std::string>& texts) {
    QStringList parts;
    for (const std::string& text : texts) {
        parts << Decode(text);
    }
    return parts.join(QStringLiteral(", "));
}

QString Milliseconds(const std::optional<double>& value, bool signedChange = false) {
    if (!value) {
        return kNone;
    }
    const long rounded = std::lround(*value);
    return (signedChange && rounded > 0 ? QStringLiteral("+") : QString()) +
           QString::number(rounded);
}

QString Rate(const std::optional<double>& value, bool signedChange = false) {
    if (!value) {
        return kNone;
    }
    return (signedChange && *value > 0 ? QStringLiteral("+") : QString()) +
           QString::number(*value, 'f', 1);
}

std::optional<double> Rt60(const std::optional<DecayEstimate>& estimate) {
    return estimate ? std::optional<double>(estimate->rt60Ms) : std::nullopt;
}

std::optional<double> RateOf(const std::optional<DecayEstimate>& estimate) {
    return estimate ? std::optional<double>(estimate->rate) : std::nullopt;
}

// A part of the parameter sheet drawn on its own canvas from the top left, so that it can be
// placed as one piece.
template <typename Draw>
SheetPicture SheetPart(const SheetFonts& fonts, const ParameterGrid& grid, const Draw& draw) {
    SheetCanvas canvas(fonts);
    canvas.penX = 0;
    canvas.penY = 0;
    ParameterTables tables(grid, canvas);
    const bool drawn = draw(canvas, tables);
    SheetPicture picture;
    if (!drawn) {
        return picture;
    }
    picture.height = canvas.penY;
    picture.noMemoryColumns = tables.NoMemoryColumns();
    picture.ops = canvas.takeOps();
    for (const SheetOp& op : picture.ops) {
        picture.width =
            std::max(picture.width, op.textX + std::max(op.width, fonts.width(op.text, op.font)));
    }
    return picture;
}

}  // namespace

ReportContent::ReportContent(const MeasurementDocument& document, QString name,
                             const SheetFonts& fonts)
    : document_(document), name_(std::move(name)), fonts_(fonts) {}

void ReportContent::SetReference(const MeasurementDocument* shaped, const MeasurementDocument* raw,
                                 QString name) {
    shaped_ = shaped;
    raw_ = raw;
    referenceName_ = std::move(name);
}

ReportBlocks ReportContent::Build() const {
    ReportBlocks blocks;
    Summary(blocks);
    Reverb(blocks);
    DecayTimes(blocks);
    GroupDelay(blocks);
    Parameters(blocks);
    return blocks;
}

void ReportContent::Summary(ReportBlocks& blocks) const {
    Text(blocks, Kind::Heading, QObject::tr("Summary"));
    ReportTableBlock table({QObject::tr("Document"), name_}, {1, 3.5});
    table.SetTextColumns();
    table.AddRow({QObject::tr("Date"), QString::fromStdString(document_.date)});
    table.AddRow({QObject::tr("Speaker layout"), QString::number(document_.layoutNumber)});
    table.AddRow({QObject::tr("Channels"), QStringLiteral("%1: %2")
                                               .arg(document_.channelCount)
                                               .arg(Joined(document_.channelLongNames))});
    table.AddRow(
        {QObject::tr("Bands"),
         QStringLiteral("%1: %2").arg(document_.bandCount).arg(Joined(document_.bandLabels))});
    table.AddRow(
        {QObject::tr("EQ type"), QString::fromStdString(document_.reverbTypeLabel).simplified()});
    if (raw_ != nullptr) {
        table.AddRow(
            {QObject::tr("Reference"),
             QStringLiteral("%1, %2").arg(referenceName_, QString::fromStdString(raw_->date))});
    }
    Table(blocks, table);
    if (raw_ != nullptr) {
        // What has no counterpart draws nothing in the comparison: say so here.
        const std::string unmatched = DocumentComparison(document_, *raw_).UnmatchedText();
        if (!unmatched.empty()) {
            Text(blocks, Kind::Note, Decode(unmatched));
        }
    }
    Text(blocks, Kind::Subheading, QObject::tr("File memo"));
    static const char* const kSections[] = {"Reverb", "Group delay", "Parameters"};
    bool any = false;
    for (int s = 0; s < 3; ++s) {
        const QString memo = MemoCodec::decode(document_.fileMemos[s]).trimmed();
        if (!memo.isEmpty()) {
            Text(blocks, Kind::Paragraph,
                 QStringLiteral("%1: %2").arg(QObject::tr(kSections[s]), memo));
            any = true;
        }
    }
    if (!any) {
        Text(blocks, Kind::Note, QObject::tr("No file memo."));
    }
}

void ReportContent::Reverb(ReportBlocks& blocks) const {
    Text(blocks, Kind::Heading, QObject::tr("Reverb"));
    if (!document_.anyVariantData[0] && !document_.anyVariantData[1]) {
        Text(blocks, Kind::Note, QObject::tr("No reverb data."));
        return;
    }
    Text(blocks, Kind::Paragraph,
         QObject::tr("Level decay of every band, before calibration (solid) and after it "
                     "(dashed)%1.")
             .arg(raw_ != nullptr ? QObject::tr("; then after calibration against %1 (dashed)")
                                        .arg(referenceName_)
                                  : QString()));
    ReverbItems(blocks, false);
    Text(blocks, Kind::Subheading, QObject::tr("Channel groups"));
    ReverbItems(blocks, true);
}

void ReportContent::ReverbItems(ReportBlocks& blocks, bool groups) const {
    ReverbSelection selection;
    selection.pairMode = groups ? 1 : 0;
    const ReverbFiller filler(document_, selection);
    const ReverbFiller after(document_, [&] {
        ReverbSelection s = selection;
        s.variant = 1;
        return s;
    }());
    for (int item = 0; item < filler.ListLength(); ++item) {
        if (!filler.ItemHasData(item) && !after.ItemHasData(item)) {
            continue;
        }
        const QString caption =
            QStringLiteral("%1 (%2)").arg(filler.ItemLongName(item), filler.ItemShortName(item));
        auto block = std::make_unique<ReportChartBlock>(
            caption, ReportCharts::Reverb({&document_, 0}, {&document_, 1}, groups, item),
            kReverbChartHeight);
        block->SetLineKey(QObject::tr("before calibration"), QObject::tr("after calibration"));
        const Memo& memo = groups ? document_.groupMemos[item] : document_.channelMemos[item];
        block->SetMemo(MemoCodec::decode(memo).trimmed());
        blocks.push_back(std::move(block));
        if (shaped_ != nullptr) {
            auto compared = std::make_unique<ReportChartBlock>(
                QObject::tr("%1 against %2").arg(caption, referenceName_),
                ReportCharts::Reverb({&document_, 1}, {shaped_, 1}, groups, item),
                kReverbChartHeight);
            compared->SetLineKey(QObject::tr("after calibration"),
                                 QObject::tr("%1, after calibration").arg(referenceName_));
            blocks.push_back(std::move(compared));
        }
    }
}

void ReportContent::DecayTimes(ReportBlocks& blocks) const {
    const DecayTable table = buildDecayTable(document_, false);
    Text(blocks, Kind::Heading, QObject::tr("Decay times"));
    if (table.empty()) {
        Text(blocks, Kind::Note, QObject::tr("No decay times: the document holds no reverb data."));
        return;
    }
    Text(blocks, Kind::Paragraph,
         QObject::tr("RT60 in ms (60 dB over the decay rate) and the decay rate in dB/s (the "
                     "least-squares slope of the 5-160 ms curve), before and after calibration."));
    const DecayTable reference = raw_ != nullptr ? buildDecayTable(*raw_, false) : DecayTable();
    QStringList header = {QObject::tr("Band"),        QObject::tr("RT60 before"),
                          QObject::tr("RT60 after"),  QObject::tr("Change"),
                          QObject::tr("Rate before"), QObject::tr("Rate after"),
                          QObject::tr("Change")};
    if (raw_ != nullptr) {
        header << QObject::tr("Ref. after") << QObject::tr("Against ref.");
    }
    for (std::size_t i = 0; i < table.items.size(); ++i) {
        Text(blocks, Kind::Subheading, Decode(table.items[i]));
        ReportTableBlock part(header, {});
        for (std::size_t b = 0; b < table.bands.size(); ++b) {
            const DecayCell& cell = table.cells[i][b];
            QStringList cells = {
                Decode(table.bands[b]),         Milliseconds(Rt60(cell.before)),
                Milliseconds(Rt60(cell.after)), Milliseconds(cell.rt60Change(), true),
                Rate(RateOf(cell.before)),      Rate(RateOf(cell.after)),
                Rate(cell.rateChange(), true)};
            if (raw_ != nullptr) {
                const DecayCell* other = reference.find(table.items[i], table.bands[b]);
                const auto theirs = other != nullptr ? Rt60(other->after) : std::nullopt;
                const auto ours = Rt60(cell.after);
                cells << Milliseconds(theirs)
                      << Milliseconds(
                             ours && theirs ? std::optional<double>(*ours - *theirs) : std::nullopt,
                             true);
            }
            part.AddRow(cells);
        }
        Table(blocks, part);
    }
}

void ReportContent::GroupDelay(ReportBlocks& blocks) const {
    const auto statistics = GroupDelayView::Statistics(document_);
    Text(blocks, Kind::Heading, QObject::tr("Group Delay"));
    if (statistics.empty()) {
        Text(blocks, Kind::Note, QObject::tr("No group delay data."));
        return;
    }
    const QString captions[kVariants] = {QObject::tr("Before calibration"),
                                         QObject::tr("After calibration")};
    for (int v = 0; v < kVariants; ++v) {
        auto block = std::make_unique<ReportChartBlock>(
            captions[v], ReportCharts::GroupDelay({&document_, v}, {shaped_, v}),
            kGroupDelayChartHeight);
        if (shaped_ != nullptr) {
            block->SetLineKey(name_, referenceName_);
        }
        blocks.push_back(std::move(block));
    }
    Text(blocks, Kind::Subheading, QObject::tr("Statistics"));
    ReportTableBlock table(
        {QObject::tr("Group"), QObject::tr("Before min"), QObject::tr("Before max"),
         QObject::tr("Before mean"), QObject::tr("After min"), QObject::tr("After max"),
         QObject::tr("After mean")},
        {1.6, 1, 1, 1, 1, 1, 1});
    for (const auto& row : statistics) {
        QStringList cells = {row.name};
        for (int v = 0; v < kVariants; ++v) {
            for (const double value : {row.minimum[v], row.maximum[v], row.mean[v]}) {
                cells << (row.has[v] ? GroupDelayView::FigureText(value) : kNone);
            }
        }
        table.AddRow(cells, row.colour);
    }
    Table(blocks, table);
}

void ReportContent::Parameters(ReportBlocks& blocks) const {
    std::vector<std::string> lines = document_.parameterLines;
    ParameterSheet sheet(fonts_);
    Text(blocks, Kind::Heading, QObject::tr("Parameters"));
    if (!hasParameterRows(lines) || !sheet.Parse(lines)) {
        Text(blocks, Kind::Note, QObject::tr("No parameters."));
        return;
    }
    const ParameterGrid& grid = sheet.Grid();
    const auto add = [&](const SheetPicture& picture) {
        if (!picture.ops.empty()) {
            blocks.push_back(std::make_unique<ReportSheetBlock>(fonts_, picture));
        }
    };
    const SheetPicture settings =
        SheetPart(fonts_, grid, [](SheetCanvas& canvas, ParameterTables& t) {
            t.SpeakerSetting();
            t.XCurve();
            const int bottom = canvas.penY;
            canvas.penX = 200;
            canvas.penY = 0;
            t.ChannelLevel(ParameterSheet::kAllMemories);
            canvas.penY = std::max(bottom, canvas.penY);
            return true;
        });
    add(settings);
    add(SheetPart(fonts_, grid, [](SheetCanvas&, ParameterTables& t) {
        t.SpeakerDistance(ParameterSheet::kAllMemories);
        return true;
    }));
    if (!settings.noMemoryColumns) {
        for (int m = 1; m <= ParameterSheet::kMemoryCount; ++m) {
            add(SheetPart(fonts_, grid, [m](SheetCanvas& canvas, ParameterTables& t) {
                if (m == 1) {
                    canvas.DrawHeading("Standing Wave Control");
                }
                return t.StandingWaveCompact(m) || m == 1;
            }));
        }
    }
    for (int m = 1; m <= ParameterSheet::kMemoryCount; ++m) {
        add(SheetPart(fonts_, grid, [m](SheetCanvas& canvas, ParameterTables& t) {
            if (m == 1) {
                canvas.DrawHeading("Acoustic Cal EQ");
            }
            return t.AcousticCalEq(m, true) || m == 1;
        }));
    }
    if (raw_ != nullptr) {
        ParameterDifferences(blocks);
    }
}

void ReportContent::ParameterDifferences(ReportBlocks& blocks) const {
    std::vector<std::string> own = document_.parameterLines;
    std::vector<std::string> theirs = raw_->parameterLines;
    ParameterSheet ownSheet(fonts_);
    ParameterSheet theirSheet(fonts_);
    Text(blocks, Kind::Subheading, QObject::tr("Cells that differ from %1").arg(referenceName_));
    if (!hasParameterRows(theirs) || !ownSheet.Parse(own) || !theirSheet.Parse(theirs)) {
        Text(blocks, Kind::Note,
             QObject::tr("%1 has no parameters to compare with.").arg(referenceName_));
        return;
    }
    const SheetPicture sheet = ownSheet.BuildScreen(ParameterSheet::kAllMemories);
    const SheetComparison comparison(sheet, theirSheet.BuildScreen(ParameterSheet::kAllMemories));
    if (comparison.Differences().empty()) {
        Text(blocks, Kind::Note, QObject::tr("No cells differ."));
        return;
    }
    ReportTableBlock table(
        {QObject::tr("Table"), QObject::tr("Row"), QObject::tr("This document"), referenceName_},
        {1.6, 1.6, 1, 1});
    table.SetTextColumns();
    for (const CellDifference& difference : comparison.Differences()) {
        // The row's label is its first cell: the one after the previous row's end.
        std::size_t first = difference.op;
        while (first > 0 && !sheet.ops[first - 1].endsRow) {
            --first;
        }
        table.AddRow(
            {Decode(difference.table), Decode(sheet.ops[first].text).trimmed(),
             Decode(sheet.ops[difference.op].text),
             difference.inReference ? Decode(difference.referenceText) : QObject::tr("(none)")});
    }
    Table(blocks, table);
}

}  // namespace sonalyx
