#pragma once

#include <QString>
#include <string>
#include <vector>

namespace sonalyx {

// Memo text crosses between the 8-bit document and the editors here: bytes that are valid
// UTF-8 are shown as UTF-8, anything else as Windows-1252 (what older files were written in);
// edited text is written back as UTF-8.
class MemoCodec {
  public:
    static QString decodeLine(const std::string& bytes);
    static std::string encodeLine(const QString& text);
    // The memo's lines joined for an editor.
    static QString decode(const std::vector<std::string>& lines);
    // The editor's text as memo lines: at most maxLines, a trailing empty line dropped.
    static std::vector<std::string> encode(const QString& text, int maxLines);
};

}  // namespace sonalyx
