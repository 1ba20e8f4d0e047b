#pragma once

#include <string>
#include <vector>

#include "sheets/text_metrics.h"

namespace sonalyx {

enum class SheetAlign { Left, Right };

// One text the sheet draws. x and width describe the cell; textX is where the text starts
// (the cell's left edge, or right-aligned inside the cell by the builder's measurement).
struct SheetOp {
    std::string text;
    int x = 0;
    int y = 0;
    int width = 0;  // 0: the text runs on freely (titles, headings, lines, last cells)
    SheetAlign align = SheetAlign::Left;
    SheetFont font = SheetFont::Cell;
    int textX = 0;
    bool endsRow = false;  // the call that closes a text row (sheet text breaks the line here)

    bool operator==(const SheetOp&) const = default;
};

// The pen and the drawing primitives of a sheet. Every call records one SheetOp at the pen and
// moves the pen the way a row-by-row table writer expects.
class SheetCanvas {
  public:
    static constexpr int kTitleX = 16;
    static constexpr int kTitleY = 2;
    static constexpr int kLeftMargin = 28;
    static constexpr int kTopAfterTitle = 40;

    explicit SheetCanvas(const TextMetrics& metrics) : metrics_(metrics) {}

    // Draws at (16, 2); the pen then starts the first table at (28, 40).
    void DrawTitle(const std::string& text);
    // Underlined heading at the pen; the next row starts its height + 8 lower.
    void DrawHeading(const std::string& text);
    void DrawCell(const std::string& text, int width);
    void DrawCellRight(const std::string& text, int width);
    // A whole line at the pen; the pen moves down, not back.
    void DrawLine(const std::string& text);
    // Ends the row: the pen goes back to left and one row down. An empty text is a blank line.
    void DrawLastCell(const std::string& text, int left);
    void DrawLastCellRight(const std::string& text, int width, int left);
    void DrawMemoLine(const std::string& text, int left);

    int penX = kLeftMargin;
    int penY = kTopAfterTitle;

    const TextMetrics& metrics() const { return metrics_; }
    const std::vector<SheetOp>& ops() const { return ops_; }
    std::vector<SheetOp> takeOps() { return std::move(ops_); }

  private:
    void record(const std::string& text, int width, SheetAlign align, SheetFont font, bool endsRow);
    void endRow(SheetFont font, int left);

    const TextMetrics& metrics_;
    std::vector<SheetOp> ops_;
};

}  // namespace sonalyx
