#pragma once

#include <string>
#include <vector>

// Hands an archive file to ZIP readers that are not ours: python3's zipfile module and unzip, each
// testing every member's data and CRC. Each reader that can be reached on this system runs; a
// refusal is a test failure. unzip is left out on request: it truncates names longer than its own
// path limit of a few KiB and says so with a warning status. Returns the names of the readers that
// ran.
std::vector<std::string> testWithExternalReaders(const std::string& archivePath, bool hasMembers,
                                                 bool withUnzip = true);
