#pragma once

#include <filesystem>

namespace sonalyx {

// Where a save really lands. A symbolic link (or a chain of them) is followed to the file it
// names, so that the file is replaced beside its target and the link stays a link; a pipe,
// device or socket is written in place, since renaming over it would replace the node itself.
class SaveTarget {
  public:
    enum class Kind {
        File,         // a regular file, or none yet: written beside it and renamed over it
        SpecialFile,  // a pipe, device or socket: written directly
        Refused,      // a directory, a link loop, or a path that cannot be examined
    };

    static SaveTarget resolve(const std::filesystem::path& path);

    Kind kind() const { return kind_; }
    // The file to write: the end of the link chain for File, the path as given otherwise.
    const std::filesystem::path& path() const { return path_; }

  private:
    SaveTarget(Kind kind, std::filesystem::path path) : kind_(kind), path_(std::move(path)) {}

    Kind kind_;
    std::filesystem::path path_;
};

}  // namespace sonalyx
