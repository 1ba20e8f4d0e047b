#pragma once

#include <QImage>
#include <QString>
#include <string>

class QPainter;
class TMDIChild;

namespace sonalyx {

namespace chart {
class JsonWriter;
}  // namespace chart

// What a document window's graph tab shows, written out: the window as a picture, the
// visible charts as vectors (SVG, PDF) through the charts' own paint(), or the view as chart
// data (JSON). The command line's render and the program's export share it.
class ViewExport {
  public:
    explicit ViewExport(const TMDIChild& window);

    // The formats save() knows by the file's suffix.
    static bool IsKnownSuffix(const QString& suffix);
    // Whether the window's current tab shows its "No Data" label.
    static bool TabHasNoData(const TMDIChild& window);
    // Writes the file atomically in the format of its suffix; false with error set on failure
    // (nothing is left behind then).
    bool Save(const QString& path, QString& error) const;

    QImage Grab() const;
    std::string TabJson() const;
    void WriteTabJson(chart::JsonWriter& json) const;
    // Size of the vector page: the tab's file memo when it holds text, the charts' visible
    // area, the Group Delay tab's statistics table, and a legend strip below them.
    QSize VectorPageSize() const;
    void PaintVector(QPainter& painter) const;

  private:
    QRect ChartArea() const;
    QString FileMemo() const;
    int MemoBandHeight() const;
    int TableBandHeight() const;
    void PaintCharts(QPainter& painter) const;
    void PaintFileMemo(QPainter& painter, const QRect& band) const;
    void PaintStatistics(QPainter& painter, const QRect& band) const;
    void PaintLegendStrip(QPainter& painter, const QRect& strip) const;

    const TMDIChild& window_;
};

}  // namespace sonalyx
