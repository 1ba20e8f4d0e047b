#include "save_target.h"

#include <system_error>

namespace sonalyx {

namespace fs = std::filesystem;

namespace {

// The same bound the kernel puts on nested links before it gives up with ELOOP.
constexpr int kMostLinksFollowed = 40;

}  // namespace

SaveTarget SaveTarget::resolve(const std::string& path) {
    const fs::path given(path);
    std::error_code ec;
    const fs::file_status followed = fs::status(given, ec);
    if (ec && followed.type() != fs::file_type::not_found)
        return {Kind::Refused, given};
    switch (followed.type()) {
        case fs::file_type::directory:
            return {Kind::Refused, given};
        case fs::file_type::regular:
        case fs::file_type::not_found:
            break;
        default:
            // Opened through the name as given: links such as /dev/stdout lead to names like
            // "pipe:[123]" that exist nowhere in the file system.
            return {Kind::SpecialFile, given};
    }
    // Follow the chain by hand: a link whose target does not exist yet still says where the
    // new file belongs.
    fs::path current = given;
    for (int hop = 0; hop < kMostLinksFollowed; ++hop) {
        if (!fs::is_symlink(fs::symlink_status(current, ec)))
            return {Kind::File, current};
        const fs::path next = fs::read_symlink(current, ec);
        if (ec)
            return {Kind::Refused, given};
        current = next.is_absolute() ? next : current.parent_path() / next;
    }
    return {Kind::Refused, given};
}

}  // namespace sonalyx
