#include "platform/file_system.h"

#include <windows.h>

#include <array>
#include <cwctype>
#include <string>
#include <string_view>

namespace sonalyx::platform {

namespace fs = std::filesystem;

namespace {

// Another program (a virus scanner, a search indexer) may hold the file for a moment; a file
// that a spreadsheet keeps open stays refused after these few tries.
constexpr int kReplaceAttempts = 4;
constexpr DWORD kPauseBetweenAttemptsMs = 50;

// "nul", "COM3" or "con.csv" name a device in every folder, and "\\.\" opens the device space.
bool isDeviceName(const fs::path& path) {
    const std::wstring& text = path.native();
    if (text.starts_with(L"\\\\.\\"))
        return true;
    std::wstring stem = path.filename().native();
    stem = stem.substr(0, stem.find(L'.'));
    while (!stem.empty() && stem.back() == L' ')
        stem.pop_back();
    for (wchar_t& c : stem)
        c = static_cast<wchar_t>(std::towupper(c));
    constexpr std::array<std::wstring_view, 6> kPlain = {L"CON", L"PRN",    L"AUX",
                                                         L"NUL", L"CONIN$", L"CONOUT$"};
    for (const auto name : kPlain) {
        if (stem == name)
            return true;
    }
    const bool numbered =
        stem.size() == 4 && (stem.starts_with(L"COM") || stem.starts_with(L"LPT"));
    return numbered && stem[3] >= L'1' && stem[3] <= L'9';
}

// Whether the file may go: not while another program holds it open without leave to delete
// it. Asked before ReplaceFileW, which can leave a copy of its own behind when it fails there.
bool mayBeReplaced(const fs::path& target) {
    for (int attempt = 1;; ++attempt) {
        const HANDLE handle = CreateFileW(
            target.c_str(), DELETE, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
            OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
        if (handle != INVALID_HANDLE_VALUE) {
            CloseHandle(handle);
            return true;
        }
        const DWORD error = GetLastError();
        const bool mayPass = error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
        if (!mayPass || attempt == kReplaceAttempts)
            return false;
        Sleep(kPauseBetweenAttemptsMs);
    }
}

bool moveOver(const fs::path& replacement, const fs::path& target) {
    return MoveFileExW(replacement.c_str(), target.c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

}  // namespace

NodeKind nodeKind(const fs::path& path) {
    if (path.empty())
        return NodeKind::Unknown;
    if (isDeviceName(path))
        return NodeKind::Device;
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES) {
        const DWORD error = GetLastError();
        return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ? NodeKind::Missing
                                                                              : NodeKind::Unknown;
    }
    if (attributes & FILE_ATTRIBUTE_DEVICE)
        return NodeKind::Device;
    if (attributes & FILE_ATTRIBUTE_DIRECTORY)
        return NodeKind::Directory;
    return NodeKind::File;
}

std::optional<fs::path> followLinks(const fs::path& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_REPARSE_POINT))
        return path;
    // The system resolves the whole chain when it opens the name; asking the open handle for its
    // name gives the file at the end. A link to nothing (or a loop) cannot be opened: refused.
    const HANDLE handle =
        CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                    nullptr, OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        return std::nullopt;
    std::wstring name(MAX_PATH, L'\0');
    DWORD length = 0;
    while (true) {
        length = GetFinalPathNameByHandleW(handle, name.data(), static_cast<DWORD>(name.size()),
                                           FILE_NAME_NORMALIZED | VOLUME_NAME_DOS);
        if (length < name.size())
            break;
        name.resize(length + 1);
    }
    CloseHandle(handle);
    if (length == 0)
        return std::nullopt;
    name.resize(length);
    return fs::path(name);
}

bool replaceFile(const fs::path& replacement, const fs::path& target) {
    const DWORD attributes = GetFileAttributesW(target.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return moveOver(replacement, target);  // nothing to replace yet
    if (attributes & FILE_ATTRIBUTE_READONLY)
        return false;  // the user protected it; Windows programs leave such a file alone
    if (!mayBeReplaced(target))
        return false;
    // ReplaceFileW keeps the old file's attributes, security and creation time.
    if (ReplaceFileW(target.c_str(), replacement.c_str(), nullptr,
                     REPLACEFILE_IGNORE_MERGE_ERRORS | REPLACEFILE_IGNORE_ACL_ERRORS, nullptr,
                     nullptr))
        return true;
    // Gone meanwhile, or already moved aside by ReplaceFileW with only the move left to do.
    const DWORD error = GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_UNABLE_TO_MOVE_REPLACEMENT)
        return moveOver(replacement, target);
    return false;
}

}  // namespace sonalyx::platform
