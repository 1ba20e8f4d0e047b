#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace sonalyx::platform {

// File names travel through the program as UTF-8 text (a document's name, a path typed or
// chosen in a dialog). These turn such text into a name the system opens and back: on Windows
// UTF-16, elsewhere the very same bytes, so that a Linux name that is not UTF-8 survives too.
std::filesystem::path pathFromUtf8(std::string_view text);
std::string utf8FromPath(const std::filesystem::path& path);

}  // namespace sonalyx::platform
