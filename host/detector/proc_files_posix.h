#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

// Reading the kernel's process files under /proc, shared by the POSIX bodies of the detector.
namespace detector::procfs {

// The pids of /proc in the order the kernel lists them. Raises detector::InternalError when /proc
// can't be read.
std::vector<std::uint32_t> processIds();

// The whole of a small file, or no value when it can't be read.
std::optional<std::string> readText(const std::string& path);

// The fields of /proc/<pid>/stat behind the command name: the state letter first, so that the
// kernel's field n is element n - 3. No value when the process is gone.
std::optional<std::vector<std::string>> statFields(std::uint32_t pid);

// The command name between the parentheses of /proc/<pid>/stat.
std::string commandName(const std::string& statText);

// The names in a folder but "." and "..", in the kernel's order; empty when it can't be read.
std::vector<std::string> folderEntries(const std::string& path);

// Where a symbolic link points, or no value.
std::optional<std::string> linkTarget(const std::string& path);

} // namespace detector::procfs
