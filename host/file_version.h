#pragma once

#include <cstdint>
#include <optional>
#include <string>

// The four numbers of a file's version: major, minor, build, revision.
struct FileVersion {
    std::uint16_t major = 0;
    std::uint16_t minor = 0;
    std::uint16_t build = 0;
    std::uint16_t revision = 0;
};

// The file version that the system records for a file (UTF-8 path), if any. On Windows this is
// the version resource. Elsewhere an executable has none, so the version is read from a side file
// "<path>.version" holding the four numbers joined by ".".
std::optional<FileVersion> readFileVersion(const std::string& path);

// What tells one state of a file from another: its size and last write time.
struct FileStamp {
    std::uint64_t size = 0;
    std::int64_t writeTime = 0;
    bool operator==(const FileStamp&) const = default;
};

// The stamp of a file (UTF-8 path); none when it is missing.
std::optional<FileStamp> fileStamp(const std::string& path);

// The stamp of the file that readFileVersion reads for a path; none when that file is missing.
// The version is read again only when the stamp changes, since reading it costs a whole file
// mapping at every tick of the window.
std::optional<FileStamp> fileVersionStamp(const std::string& path);
