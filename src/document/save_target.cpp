#include "save_target.h"

#include "platform/file_system.h"

namespace sonalyx {

namespace fs = std::filesystem;

SaveTarget SaveTarget::resolve(const fs::path& given) {
    switch (platform::nodeKind(given)) {
        case platform::NodeKind::Unknown:
        case platform::NodeKind::Directory:
            return {Kind::Refused, given};
        case platform::NodeKind::Device:
            // Opened through the name as given: links such as /dev/stdout lead to names like
            // "pipe:[123]" that exist nowhere in the file system.
            return {Kind::SpecialFile, given};
        case platform::NodeKind::File:
        case platform::NodeKind::Missing:
            break;
    }
    const std::optional<fs::path> end = platform::followLinks(given);
    if (!end)
        return {Kind::Refused, given};
    return {Kind::File, *end};
}

}  // namespace sonalyx
