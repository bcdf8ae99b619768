#include "foundation/filesys.h"

#include "foundation/text.h"

#include <algorithm>
#include <filesystem>
#include <windows.h>

#include <shlobj.h>

namespace filesys::native {

namespace {

std::filesystem::path wideName(std::string_view path) {
    return std::filesystem::path(utf8ToUtf16(path));
}

bool isFolder(const WIN32_FIND_DATAW& data) {
    return (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

// The 64-bit build sees the folders as the shipped 32-bit program does: its program files folder
// is the one for 32-bit programs.
int asSeenByThe32BitProgram(int csidl) {
    if (sizeof(void*) == 8 && csidl == CSIDL_PROGRAM_FILES) {
        return CSIDL_PROGRAM_FILESX86;
    }
    return csidl;
}

} // namespace

// The pattern "<path>/*" tells a missing folder (ERROR_PATH_NOT_FOUND) from every other failure,
// such as a file's path (ERROR_DIRECTORY, or ERROR_INVALID_NAME under Wine).
ListOutcome listFolder(std::string_view path, std::vector<FolderEntry>& entries) {
    const std::wstring pattern = utf8ToUtf16(path) + L"/*";
    WIN32_FIND_DATAW data{};
    const HANDLE search = FindFirstFileW(pattern.c_str(), &data);
    if (search == INVALID_HANDLE_VALUE) {
        return GetLastError() == ERROR_PATH_NOT_FOUND ? ListOutcome::pathNotFound
                                                      : ListOutcome::failed;
    }
    do {
        const std::wstring_view name = data.cFileName;
        if (name != L"." && name != L"..") {
            entries.push_back({utf16ToUtf8(name), isFolder(data)});
        }
    } while (FindNextFileW(search, &data));
    FindClose(search);
    return ListOutcome::listed;
}

// The runtime opens a wide name with _wfopen, which shares the file for reading and writing
// (_SH_DENYNO): the server may hold its logs open meanwhile.
bool openInput(std::ifstream& stream, std::string_view path) {
    stream.open(wideName(path), std::ios::in | std::ios::binary);
    return stream.is_open();
}

bool openOutput(std::ofstream& stream, std::string_view path) {
    stream.open(wideName(path), std::ios::out | std::ios::trunc | std::ios::binary);
    return stream.is_open();
}

bool flushToDisk(std::string_view path) {
    const HANDLE file = CreateFileW(utf8ToUtf16(path).c_str(), GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        return false;
    }
    const bool flushed = FlushFileBuffers(file) != 0;
    return CloseHandle(file) != 0 && flushed;
}

// Write-through: the call returns once the move itself is on the disk.
bool moveOver(std::string_view from, std::string_view to) {
    return MoveFileExW(utf8ToUtf16(from).c_str(), utf8ToUtf16(to).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
}

bool opensFile(std::string_view path) {
    std::ifstream stream;
    return openInput(stream, path);
}

bool removeFile(std::string_view path) {
    return DeleteFileW(utf8ToUtf16(path).c_str()) != 0 || GetLastError() == ERROR_FILE_NOT_FOUND;
}

std::optional<std::string> systemFolder(int csidl) {
    wchar_t folder[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathW(nullptr, asSeenByThe32BitProgram(csidl), nullptr, 0, folder))) {
        return std::nullopt;
    }
    return utf16ToUtf8(folder);
}

} // namespace filesys::native

std::string filesys::systemPathForm(std::string path) {
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::optional<std::string> filesys::shortPathOf(std::string_view path) {
    const std::wstring name = utf8ToUtf16(systemPathForm(std::string(path)));
    const DWORD size = GetShortPathNameW(name.c_str(), nullptr, 0);
    if (size == 0) {
        return std::nullopt;
    }
    std::wstring shortName(size, L'\0');
    const DWORD length = GetShortPathNameW(name.c_str(), shortName.data(), size);
    if (length == 0 || length >= size) {
        return std::nullopt;
    }
    shortName.resize(length);
    return utf16ToUtf8(shortName);
}
