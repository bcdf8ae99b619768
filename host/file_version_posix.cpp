#include "host/file_version.h"

#include <sys/stat.h>

#include <exception>
#include <vector>

#include "foundation/filesys.h"
#include "foundation/text.h"

namespace {

constexpr unsigned long largestPart = 0xFFFF;

} // namespace

// An executable here carries no version resource. The installation may put the version beside it,
// in "<file>.version", as four numbers joined by "."; anything else counts as no version.
std::optional<FileVersion> readFileVersion(const std::string& path) {
    try {
        const std::vector<std::uint8_t> bytes = filesys::readFile(path + ".version", 0, 0);
        const std::string text = trim(std::string(bytes.begin(), bytes.end()));
        const std::vector<std::string> parts = splitText(text.c_str(), '.', false, false);
        if (parts.size() != 4) {
            return std::nullopt;
        }
        std::uint16_t numbers[4] = {};
        for (std::size_t i = 0; i < parts.size(); ++i) {
            const unsigned long number = readUnsigned(parts[i]);
            if (number > largestPart) {
                return std::nullopt;
            }
            numbers[i] = static_cast<std::uint16_t>(number);
        }
        return FileVersion{numbers[0], numbers[1], numbers[2], numbers[3]};
    } catch (const std::exception&) {
        return std::nullopt;
    }
}

std::optional<FileStamp> fileVersionStamp(const std::string& path) {
    return fileStamp(path + ".version");
}

std::optional<FileStamp> fileStamp(const std::string& path) {
    struct stat facts {};
    if (stat(path.c_str(), &facts) != 0) {
        return std::nullopt;
    }
    constexpr std::int64_t nanoseconds = 1000000000;
    return FileStamp{static_cast<std::uint64_t>(facts.st_size),
                     facts.st_mtim.tv_sec * nanoseconds + facts.st_mtim.tv_nsec};
}
