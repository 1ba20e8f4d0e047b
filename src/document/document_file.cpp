#include "document_file.h"

#include "platform/file_system.h"
#include "save_target.h"

#include <filesystem>
#include <fstream>
#include <random>
#include <system_error>

namespace sonalyx {

namespace fs = std::filesystem;

std::vector<std::string> splitLines(std::string_view text) {
    std::vector<std::string> lines;
    size_t start = 0;
    while (start < text.size()) {
        const size_t end = text.find_first_of("\r\n", start);
        if (end == std::string_view::npos) {
            lines.emplace_back(text.substr(start));
            break;
        }
        lines.emplace_back(text.substr(start, end - start));
        const bool crLf = text[end] == '\r' && end + 1 < text.size() && text[end + 1] == '\n';
        start = end + (crLf ? 2 : 1);
    }
    return lines;
}

std::string joinLines(const std::vector<std::string>& lines) {
    size_t size = 0;
    for (const auto& line : lines)
        size += line.size() + 2;
    std::string text;
    text.reserve(size);
    for (const auto& line : lines) {
        text += line;
        text += "\r\n";
    }
    return text;
}

std::optional<std::vector<std::string>> readDocumentLines(const fs::path& path) {
    std::error_code ec;
    if (!fs::is_regular_file(path, ec))
        return std::nullopt;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        return std::nullopt;
    std::string text;
    const auto size = fs::file_size(path, ec);
    if (!ec)
        text.reserve(static_cast<size_t>(size));
    text.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    if (in.bad())
        return std::nullopt;
    return splitLines(text);
}

namespace {

fs::path temporaryPathBeside(const fs::path& target) {
    std::random_device rd;
    const auto tag = std::to_string(rd() % 1000000);
    // Joined as paths: on Windows the name is UTF-16 and must not pass through a narrow string.
    fs::path name = ".";
    name += target.filename();
    name += ".saving-" + tag;
    return target.parent_path() / name;
}

bool writeText(const fs::path& path, const std::string& text) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    if (!out)
        return false;
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.flush();
    out.close();  // a device reports a full disk as late as here
    return !out.fail();
}

bool replaceAtomically(const fs::path& target, const std::string& text) {
    std::error_code ec;
    const fs::path temp = temporaryPathBeside(target);
    if (!writeText(temp, text) || !platform::replaceFile(temp, target)) {
        fs::remove(temp, ec);
        return false;
    }
    return true;
}

}  // namespace

bool writeDocumentLinesAtomically(const fs::path& path, const std::vector<std::string>& lines) {
    const SaveTarget target = SaveTarget::resolve(path);
    switch (target.kind()) {
        case SaveTarget::Kind::File:
            return replaceAtomically(target.path(), joinLines(lines));
        case SaveTarget::Kind::SpecialFile:
            return writeText(target.path(), joinLines(lines));
        case SaveTarget::Kind::Refused:
            break;
    }
    return false;
}

}  // namespace sonalyx
