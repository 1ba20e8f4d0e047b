#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sonalyx {

// Splits text into lines at CR LF, LF or a lone CR (what spreadsheets write on other systems);
// a final line ending does not start another line.
std::vector<std::string> splitLines(std::string_view text);
// Joins lines, each ended by CR LF.
std::string joinLines(const std::vector<std::string>& lines);

// Reads a file as lines; nullopt when it cannot be read.
std::optional<std::vector<std::string>> readDocumentLines(const std::filesystem::path& path);

// Writes lines (CR LF) so that the file is either wholly replaced or left as it was: the text
// goes to a temporary file beside it which is then renamed over the target. A symbolic link is
// followed and kept; a pipe or device is written directly. False when nothing could be written
// whole, a directory included.
bool writeDocumentLinesAtomically(const std::filesystem::path& path,
                                  const std::vector<std::string>& lines);

}  // namespace sonalyx
