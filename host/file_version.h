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

// The version of the server's executable in the installation folder, four numbers joined by ".";
// "0.0.0.0" when the file is missing or tells no version.
std::string fileVersionText();

// What stands behind the first ".": "1.2.3.4" gives "2.3.4". "-" for an empty text or one without ".".
std::string versionTail(const std::string& version);

// The tail without its last number: "1.2.3.4" gives "2.3". "-" when the tail is "-".
std::string versionMiddle(const std::string& version);

// The platform half: the file version that the system records for the file, if any.
// On Windows this is the version resource. Elsewhere an executable has none, so the version is
// read from a side file "<path>.version" holding the four numbers joined by ".".
std::optional<FileVersion> readFileVersion(const std::string& path);
