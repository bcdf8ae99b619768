#include "foundation/filesys.h"

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"

#include <chrono>
#include <stdexcept>
#include <thread>

namespace filesys {

namespace {

constexpr const char* separators = "/\\";

constexpr int localAppDataCsidl = 0x1C;
constexpr int programFilesCsidl = 0x26;
constexpr int profileCsidl = 0x28;

// A file that another program holds open without letting it be deleted (a virus scanner, a reader
// of the server's configuration) can't be moved over until it is let go: the move is tried as
// often, and as far apart, as the server's configuration is read.
constexpr int moveTries = 4;
constexpr auto moveRetryDelay = std::chrono::milliseconds(500);

bool wanted(const native::FolderEntry& entry, bool files, bool folders) {
    return entry.isFolder ? folders : files;
}

std::vector<std::uint8_t> readOpenedFile(std::ifstream& stream, std::string_view path,
                                         std::uint32_t minSize, std::uint32_t maxSize) {
    stream.seekg(0, std::ios::end);
    const std::streamoff size = stream.tellg();
    stream.seekg(0, std::ios::beg);
    if (size < 0) {
        throw ReadFileError(path);
    }
    if (minSize != 0 && size < minSize) {
        throw FileIOError(path, commonMessages.text(commonmsg::fileTooSmall));
    }
    if (maxSize != 0 && size > maxSize) {
        throw FileIOError(path, commonMessages.text(commonmsg::fileTooLarge));
    }
    std::vector<std::uint8_t> bytes(static_cast<std::size_t>(size));
    if (!bytes.empty() &&
        !stream.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size))) {
        throw ReadFileError(path);
    }
    return bytes;
}

} // namespace

std::string fileNameOf(std::string_view path) {
    const std::size_t at = path.find_last_of(separators);
    return std::string(at == std::string_view::npos ? path : path.substr(at + 1));
}

std::string directoryOf(std::string_view path) {
    const std::size_t at = path.find_last_of(separators);
    return std::string(at == std::string_view::npos ? path : path.substr(0, at));
}

std::string joinPath(std::string_view base, const char* name) {
    std::string result(base);
    result += '/';
    result += name;
    return result;
}

bool exists(const char* path) {
    return native::opensFile(path);
}

std::vector<std::string> listDirectory(std::string_view path, bool files, bool folders,
                                       bool missingIsEmpty) {
    std::vector<native::FolderEntry> entries;
    const native::ListOutcome outcome = native::listFolder(path, entries);
    if (outcome == native::ListOutcome::pathNotFound && missingIsEmpty) {
        return {};
    }
    if (outcome != native::ListOutcome::listed) {
        throw ReadFolderError(path);
    }
    std::vector<std::string> names;
    for (native::FolderEntry& entry : entries) {
        if (wanted(entry, files, folders)) {
            names.push_back(std::move(entry.name));
        }
    }
    return names;
}

std::ifstream openForReading(std::string_view path) {
    std::ifstream stream;
    native::openInput(stream, path);
    return stream;
}

// Whatever goes wrong, limits included, the caller sees one failure: the file can't be read.
std::vector<std::uint8_t> readFile(std::string_view path, std::uint32_t minSize,
                                   std::uint32_t maxSize) {
    try {
        std::ifstream stream;
        if (!native::openInput(stream, path)) {
            throw ReadFileError(path);
        }
        return readOpenedFile(stream, path, minSize, maxSize);
    } catch (...) {
        throw ReadFileError(path);
    }
}

// The close flushes the runtime's buffer, so only the state after it tells a full disk.
void writeFile(std::string_view path, const std::vector<std::uint8_t>& bytes) {
    try {
        std::ofstream stream;
        if (!native::openOutput(stream, path)) {
            throw WriteFileError(path);
        }
        stream.write(reinterpret_cast<const char*>(bytes.data()),
                     static_cast<std::streamsize>(bytes.size()));
        stream.close();
        if (stream.fail()) {
            throw WriteFileError(path);
        }
    } catch (...) {
        throw WriteFileError(path);
    }
}

void writeFile(std::string_view base, const char* name, const std::vector<std::uint8_t>& bytes) {
    writeFile(joinPath(base, name), bytes);
}

std::string sideFileOf(std::string_view path) {
    return std::string(path) + ".new";
}

void writeSideFile(std::string_view path, const std::vector<std::uint8_t>& bytes) {
    const std::string side = sideFileOf(path);
    try {
        writeFile(side, bytes);
        if (!native::flushToDisk(side)) {
            throw WriteFileError(side);
        }
    } catch (...) {
        native::removeFile(side);
        throw WriteFileError(path);
    }
}

void moveSideFileOver(std::string_view path) {
    const std::string side = sideFileOf(path);
    for (int attempt = 1; !native::moveOver(side, path); ++attempt) {
        if (attempt == moveTries) {
            native::removeFile(side);
            throw WriteFileError(path);
        }
        std::this_thread::sleep_for(moveRetryDelay);
    }
}

void replaceFile(std::string_view path, const std::vector<std::uint8_t>& bytes) {
    writeSideFile(path, bytes);
    moveSideFileOver(path);
}

bool deleteFile(std::string_view path) {
    return native::removeFile(path);
}

std::string specialFolder(int csidl) {
    std::optional<std::string> folder = native::systemFolder(csidl);
    if (!folder) {
        throw std::runtime_error(commonMessages.text(commonmsg::systemFolderNotFound));
    }
    return std::move(*folder);
}

std::string localAppDataFolder() {
    return specialFolder(localAppDataCsidl);
}

std::string programFilesFolder() {
    return specialFolder(programFilesCsidl);
}

std::string profileFolder() {
    return specialFolder(profileCsidl);
}

} // namespace filesys
