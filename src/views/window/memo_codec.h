#pragma once

#include <QString>
#include <string>
#include <string_view>
#include <vector>

namespace sonalyx {

// The 8-bit encodings document text arrives in: UTF-8, Shift-JIS (documents written on Japanese
// systems), Windows-1252 (what older files elsewhere were written in).
enum class MemoEncoding { Utf8, ShiftJis, Windows1252 };

// Memo text crosses between the 8-bit document and the editors here: bytes that are valid UTF-8
// are shown as UTF-8, else bytes that read as Shift-JIS as Shift-JIS, anything else as
// Windows-1252. An edited memo is written back in the encoding it came in.
class MemoCodec {
  public:
    static MemoEncoding encodingOf(std::string_view bytes);
    // One encoding for all lines of a memo, so that a line of plain ASCII or one that happens to
    // be valid in two encodings reads like the rest.
    static MemoEncoding encodingOf(const std::vector<std::string>& lines);

    static QString decodeLine(const std::string& bytes);
    // The memo's lines joined for an editor.
    static QString decode(const std::vector<std::string>& lines);

    // The memo's lines in UTF-8, for code that measures and wraps text by its bytes.
    static std::vector<std::string> asUtf8(const std::vector<std::string>& lines);

    // The editor's text as memo lines: at most maxLines, a trailing empty line dropped, in
    // `encoding` when that can hold every character of the text, else in UTF-8.
    static std::vector<std::string> encode(const QString& text, int maxLines,
                                           MemoEncoding encoding = MemoEncoding::Utf8);
    // What an editor holding a memo stores back: the memo's own lines, byte for byte, while its
    // text is unchanged; otherwise the text encoded as the memo came in.
    static std::vector<std::string> store(const QString& text, int maxLines,
                                          const std::vector<std::string>& cameIn);
};

}  // namespace sonalyx
