#include "tests/support/foundation/test_file_lock.h"

#include <windows.h>

#include <shlobj.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace {

// The folder that every user of the prefix shares: a test process that runs as another user (to
// try a profile folder with letters of its own) takes the same locks as the others.
std::filesystem::path lockFolder() {
    wchar_t folder[MAX_PATH] = {};
    if (FAILED(SHGetFolderPathW(nullptr, CSIDL_COMMON_APPDATA, nullptr, 0, folder))) {
        return std::filesystem::temp_directory_path();
    }
    return folder;
}

} // namespace

TestFileLock::TestFileLock(const char* fileName, bool exclusive) {
    const std::wstring path = (lockFolder() / fileName).wstring();
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                    OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) {
        throw std::runtime_error(std::string("the tests' lock file can't be opened: ") + fileName);
    }
    OVERLAPPED whole{};
    if (!LockFileEx(file, exclusive ? LOCKFILE_EXCLUSIVE_LOCK : 0, 0, 1, 0, &whole)) {
        CloseHandle(file);
        throw std::runtime_error(std::string("the tests' lock can't be taken: ") + fileName);
    }
    handle_ = reinterpret_cast<std::intptr_t>(file);
}

TestFileLock::~TestFileLock() {
    if (handle_ != -1) {
        const HANDLE file = reinterpret_cast<HANDLE>(handle_);
        OVERLAPPED whole{};
        UnlockFileEx(file, 0, 1, 0, &whole);
        CloseHandle(file);
    }
}
