#include "foundation/filesys.h"

#include "foundation/text.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <dirent.h>
#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

// Files and folders on POSIX systems, with the outcomes that the program's logic knows from
// Windows: a missing folder is told apart from a path that names a file; a missing file counts as
// deleted while a missing folder doesn't. The special folders are $XDG_DATA_HOME (else
// ~/.local/share) for local application data, /opt for programs and $HOME for the profile.

namespace filesys::native {

namespace {

constexpr int localAppDataCsidl = 0x1C;
constexpr int programFilesCsidl = 0x26;
constexpr int profileCsidl = 0x28;

std::string text(std::string_view path) {
    return std::string(path);
}

bool isFolderPath(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isPresent(const std::string& path) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0;
}

// A name that is not a folder may be a symbolic link or of a type the folder doesn't record.
bool isFolderEntry(const std::string& folder, const dirent& entry) {
    if (entry.d_type == DT_DIR) {
        return true;
    }
    if (entry.d_type != DT_UNKNOWN && entry.d_type != DT_LNK) {
        return false;
    }
    return isFolderPath(folder + "/" + entry.d_name);
}

// ENOENT: the folder is missing. ENOTDIR: either the path itself is a file, which is a failure, or
// a folder on the way is a file, which makes the folder missing as on Windows.
ListOutcome outcomeOfOpenFailure(int error, const std::string& path) {
    if (error == ENOENT || (error == ENOTDIR && !isPresent(path))) {
        return ListOutcome::pathNotFound;
    }
    return ListOutcome::failed;
}

// The file is "not found" rather than its path when the folder that should hold it is there.
bool holdingFolderExists(const std::string& path) {
    const std::size_t at = path.find_last_of('/');
    if (at == std::string::npos) {
        return true;
    }
    return isFolderPath(at == 0 ? std::string("/") : path.substr(0, at));
}

std::string environmentFolder(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr && value[0] == '/' ? std::string(value) : std::string();
}

std::string homeFolder() {
    std::string home = environmentFolder("HOME");
    if (home.empty()) {
        if (const passwd* account = getpwuid(getuid()); account != nullptr && account->pw_dir) {
            home = account->pw_dir;
        }
    }
    return home;
}

std::string localDataFolder() {
    std::string folder = environmentFolder("XDG_DATA_HOME");
    if (folder.empty() && !homeFolder().empty()) {
        folder = homeFolder() + "/.local/share";
    }
    return folder;
}

} // namespace

ListOutcome listFolder(std::string_view path, std::vector<FolderEntry>& entries) {
    const std::string folder = text(path);
    DIR* listing = opendir(folder.c_str());
    if (listing == nullptr) {
        return outcomeOfOpenFailure(errno, folder);
    }
    while (const dirent* entry = readdir(listing)) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..") {
            entries.push_back({std::string(name), isFolderEntry(folder, *entry)});
        }
    }
    closedir(listing);
    return ListOutcome::listed;
}

// A folder opens as a stream on POSIX systems; on Windows it doesn't, and the program relies on
// that.
bool openInput(std::ifstream& stream, std::string_view path) {
    const std::string name = text(path);
    if (isFolderPath(name)) {
        return false;
    }
    stream.open(name, std::ios::in | std::ios::binary);
    return stream.is_open();
}

bool openOutput(std::ofstream& stream, std::string_view path) {
    stream.open(text(path), std::ios::out | std::ios::trunc | std::ios::binary);
    return stream.is_open();
}

bool flushToDisk(std::string_view path) {
    const int file = open(text(path).c_str(), O_WRONLY | O_CLOEXEC);
    if (file < 0) {
        return false;
    }
    const bool flushed = fsync(file) == 0;
    return close(file) == 0 && flushed;
}

bool moveOver(std::string_view from, std::string_view to) {
    return std::rename(text(from).c_str(), text(to).c_str()) == 0;
}

bool opensFile(std::string_view path) {
    std::ifstream stream;
    return openInput(stream, path);
}

bool removeFile(std::string_view path) {
    const std::string name = text(path);
    if (unlink(name.c_str()) == 0) {
        return true;
    }
    return errno == ENOENT && holdingFolderExists(name);
}

std::optional<std::string> systemFolder(int csidl) {
    std::string folder;
    if (csidl == localAppDataCsidl) {
        folder = localDataFolder();
    } else if (csidl == programFilesCsidl) {
        folder = "/opt";
    } else if (csidl == profileCsidl) {
        folder = homeFolder();
    }
    if (folder.empty()) {
        return std::nullopt;
    }
    return folder;
}

} // namespace filesys::native

// A backslash is an ordinary letter of a POSIX file name, so the path keeps its slashes.
std::string filesys::systemPathForm(std::string path) {
    return path;
}

std::optional<std::string> filesys::shortPathOf(std::string_view) {
    return std::nullopt;
}
