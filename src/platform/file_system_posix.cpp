#include "platform/file_system.h"

#include <system_error>

namespace sonalyx::platform {

namespace fs = std::filesystem;

namespace {

// The same bound the kernel puts on nested links before it gives up with ELOOP.
constexpr int kMostLinksFollowed = 40;

}  // namespace

NodeKind nodeKind(const fs::path& path) {
    std::error_code ec;
    const fs::file_status status = fs::status(path, ec);
    if (ec && status.type() != fs::file_type::not_found)
        return NodeKind::Unknown;
    switch (status.type()) {
        case fs::file_type::not_found:
            return NodeKind::Missing;
        case fs::file_type::regular:
            return NodeKind::File;
        case fs::file_type::directory:
            return NodeKind::Directory;
        default:
            return NodeKind::Device;
    }
}

std::optional<fs::path> followLinks(const fs::path& path) {
    // By hand: a link whose target does not exist yet still says where the new file belongs.
    std::error_code ec;
    fs::path current = path;
    for (int hop = 0; hop < kMostLinksFollowed; ++hop) {
        if (!fs::is_symlink(fs::symlink_status(current, ec)))
            return current;
        const fs::path next = fs::read_symlink(current, ec);
        if (ec)
            return std::nullopt;
        current = next.is_absolute() ? next : current.parent_path() / next;
    }
    return std::nullopt;
}

bool replaceFile(const fs::path& replacement, const fs::path& target) {
    std::error_code ec;
    const auto status = fs::status(target, ec);
    if (!ec && fs::exists(status))
        fs::permissions(replacement, status.permissions(), ec);
    fs::rename(replacement, target, ec);
    return !ec;
}

}  // namespace sonalyx::platform
