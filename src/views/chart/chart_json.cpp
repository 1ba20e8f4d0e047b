#include "views/chart/chart_json.h"

#include "views/chart/json_writer.h"

namespace sonalyx::chart {

namespace {

using Layout = JsonWriter::Layout;

void writeAxis(JsonWriter& json, const Axis& axis) {
    json.beginObject(Layout::Inline);
    json.key("min").value(axis.minimum);
    json.key("max").value(axis.maximum);
    json.key("increment").value(axis.increment);
    json.key("title").value(axis.title);
    json.endObject();
}

void writeSeries(JsonWriter& json, const Series& series, bool reference) {
    json.beginObject();
    json.key("title").value(series.title);
    json.key("colour").colour(series.colour);
    json.key("kind").value(series.kind == SeriesKind::Bar ? "bar" : "line");
    json.key("points").beginArray(series.points.empty() ? Layout::Inline : Layout::Block);
    for (const Point& p : series.points) {
        json.beginArray(Layout::Inline).value(p.x).value(p.y).value(p.label).endArray();
    }
    json.endArray();
    if (reference) {
        json.key("reference").value(true);
    }
    json.endObject();
}

}  // namespace

void writeChartJson(JsonWriter& json, const ChartModel& model, const QRect& rect) {
    json.beginObject();
    json.key("name").value(model.name);
    json.key("visible").value(model.visible);
    json.key("rect").beginArray(Layout::Inline);
    json.value(rect.left()).value(rect.top()).value(rect.width()).value(rect.height());
    json.endArray();
    json.key("view3d").value(model.view.enabled);
    json.key("orthogonal").value(model.view.orthogonal);
    json.key("elevation").value(model.view.elevation);
    json.key("rotation").value(model.view.rotation);
    json.key("perspective").value(model.view.perspective);
    json.key("axes").beginObject();
    json.key("left");
    writeAxis(json, model.left);
    json.key("bottom");
    writeAxis(json, model.bottom);
    json.key("depth").beginObject(Layout::Inline);
    json.key("increment").value(model.depth.increment);
    json.key("title").value(model.depth.title);
    json.endObject();
    json.endObject();
    json.key("series").beginArray();
    for (const Series& s : model.series) {
        writeSeries(json, s, false);
    }
    for (const Series& s : model.referenceSeries) {
        writeSeries(json, s, true);
    }
    json.endArray();
    json.endObject();
}

}  // namespace sonalyx::chart
