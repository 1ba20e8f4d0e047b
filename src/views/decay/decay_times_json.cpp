#include "views/decay/decay_times_json.h"

#include "views/chart/json_writer.h"
#include "views/window/memo_codec.h"

namespace sonalyx {

namespace {

void writeEstimate(chart::JsonWriter& json, const std::optional<DecayEstimate>& estimate) {
    if (!estimate) {
        json.null();
        return;
    }
    json.beginObject(chart::JsonWriter::Layout::Inline);
    json.key("rate").value(estimate->rate);
    json.key("rt60").value(estimate->rt60Ms);
    json.endObject();
}

}  // namespace

void writeDecayTimesJson(chart::JsonWriter& json, const DecayTable& table) {
    json.beginArray();
    for (size_t i = 0; i < table.items.size(); ++i) {
        for (size_t b = 0; b < table.bands.size(); ++b) {
            const DecayCell& cell = table.cells[i][b];
            json.beginObject(chart::JsonWriter::Layout::Inline);
            json.key("item").value(MemoCodec::decodeLine(table.items[i]));
            json.key("band").value(MemoCodec::decodeLine(table.bands[b]));
            json.key("before");
            writeEstimate(json, cell.before);
            json.key("after");
            writeEstimate(json, cell.after);
            json.endObject();
        }
    }
    json.endArray();
}

}  // namespace sonalyx
