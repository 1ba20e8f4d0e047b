#pragma once

#include <string_view>

namespace sonalyx {

// The four faces a parameter sheet is drawn in.
enum class SheetFont { Title, Heading, Cell, Memo };

// How the sheet measures text: the GUI answers with real font metrics, tests with fixed ones,
// so the layout itself needs no toolkit.
class TextMetrics {
  public:
    virtual ~TextMetrics() = default;
    // The absolute font height in pixels; rows advance by it.
    virtual int height(SheetFont font) const = 0;
    // The advance width of text (document bytes) in pixels.
    virtual int width(std::string_view text, SheetFont font) const = 0;
};

}  // namespace sonalyx
