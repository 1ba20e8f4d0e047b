#pragma once

#include <filesystem>
#include <optional>

namespace sonalyx::platform {

// What a name stands for once its links are followed.
enum class NodeKind {
    Missing,    // nothing there yet
    File,       // a regular file
    Directory,  //
    Device,     // a pipe, terminal, serial port, socket or other device: written in place
    Unknown,    // cannot be examined: no right to look, a loop of links, a name the system refuses
};

NodeKind nodeKind(const std::filesystem::path& path);

// The name a chain of symbolic links ends at: the path itself when it is no link, and the name
// a link points to when nothing is there yet (where the system can say). nullopt for a loop or a
// link that cannot be read.
std::optional<std::filesystem::path> followLinks(const std::filesystem::path& path);

// Puts `replacement` in the place of `target` in one step, so that a reader finds the old file
// or the new one, never a part of either; the target's permissions carry over. False when the
// target may not be replaced (read-only on Windows, opened elsewhere without leave to delete,
// a folder that may not be written); `replacement` is then left for the caller to remove.
bool replaceFile(const std::filesystem::path& replacement, const std::filesystem::path& target);

}  // namespace sonalyx::platform
