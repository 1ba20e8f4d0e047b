// Feeds arbitrary bytes to the parameter sheet: as a document when they load as one, otherwise
// as the parameters section itself. Every sheet and page must build, and parsing twice must
// leave the section and its grid as the first parse left them: a document shows and saves the
// same at every open.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "document/document_file.h"
#include "document/document_loader.h"
#include "sheets/parameter_sheet.h"
#include "sheets/sheet_text.h"

namespace {

using namespace sonalyx;

// Widths that depend on every byte, so wrapping and right alignment see odd texts too.
class ByteMetrics : public TextMetrics {
  public:
    int height(SheetFont font) const override { return font == SheetFont::Title ? 21 : 13; }
    int width(std::string_view text, SheetFont) const override {
        int width = 0;
        for (const char c : text)
            width += 1 + static_cast<unsigned char>(c) % 11;
        return width;
    }
};

void checkPicture(const SheetPicture& picture) {
    std::size_t rows = 0;
    for (const SheetOp& op : picture.ops) {
        rows += op.endsRow;
        if (op.width < 0 || op.y < 0)
            __builtin_trap();
    }
    if (sheetTextLines(picture.ops).size() !=
        rows + (picture.ops.empty() || picture.ops.back().endsRow ? 0 : 1))
        __builtin_trap();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view text(reinterpret_cast<const char*>(data), size);
    MeasurementDocument doc;
    std::vector<std::string> lines;
    Memo memo;
    if (DocumentLoader::load(doc, splitLines(text), "fuzz.csv", nullptr)) {
        lines = doc.parameterLines;
        memo = doc.fileMemos[kParametersSection];
    } else {
        lines = splitLines(text);
        memo.assign(lines.begin(),
                    lines.begin() + static_cast<long>(std::min<std::size_t>(lines.size(), 20)));
    }
    ByteMetrics metrics;
    ParameterSheet sheet(metrics);
    if (!sheet.Parse(lines))
        return 0;
    std::vector<std::string> again = lines;
    ParameterSheet second(metrics);
    second.Parse(again);
    if (again != lines || second.Grid().rows != sheet.Grid().rows ||
        second.Grid().longestDistanceText != sheet.Grid().longestDistanceText)
        __builtin_trap();
    for (int memory : {0, 1, ParameterSheet::kMemoryCount})
        checkPicture(sheet.BuildScreen(memory));
    checkPicture(sheet.BuildPage(2, 0, 1, memo));
    for (int count : {2, 3}) {
        for (int page = 0; page < count; ++page)
            checkPicture(sheet.BuildPage(0, page, count, memo));
    }
    return 0;
}
