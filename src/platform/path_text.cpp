#include "platform/path_text.h"

#include <system_error>

namespace sonalyx::platform {

// Windows converts between UTF-8 and UTF-16 and throws on text that is neither; such a name
// becomes an empty path (which nothing opens) or an empty text, not an exception in a caller
// that expects none.
std::filesystem::path pathFromUtf8(std::string_view text) {
    try {
        return std::filesystem::path(
            std::u8string_view(reinterpret_cast<const char8_t*>(text.data()), text.size()));
    } catch (const std::system_error&) {
        return {};
    }
}

std::string utf8FromPath(const std::filesystem::path& path) {
    try {
        const std::u8string text = path.u8string();
        return std::string(text.begin(), text.end());
    } catch (const std::system_error&) {
        return {};
    }
}

}  // namespace sonalyx::platform
