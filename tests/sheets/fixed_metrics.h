#pragma once

#include <string>
#include <vector>

#include "document/text_format.h"
#include "sheets/sheet_canvas.h"
#include "sheets/text_metrics.h"

namespace sonalyx::test {

// Heights as the real fonts have them (21, 16, 13 pixels); every byte 6 pixels wide, so each
// position in a sheet is a number a reader can work out.
class FixedMetrics : public TextMetrics {
  public:
    static constexpr int kCharWidth = 6;
    int height(SheetFont font) const override {
        switch (font) {
            case SheetFont::Title:
                return 21;
            case SheetFont::Heading:
                return 16;
            default:
                return 13;
        }
    }
    int width(std::string_view text, SheetFont) const override {
        return kCharWidth * static_cast<int>(text.size());
    }
};

}  // namespace sonalyx::test
