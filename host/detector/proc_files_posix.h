#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "host/detector/tcp_connections.h"

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

// Reads the local and remote "address:port" fields of a kernel TCP table line into a row; false
// for a line to leave out.
using ReadEndpoints =
    std::function<bool(const std::string& local, const std::string& remote, TcpTableRow& row)>;

// The rows of a kernel TCP table (/proc/net/tcp, /proc/net/tcp6) in the file's order: the state as
// the Windows table numbers it, the endpoints as readEndpoints reads them, and the pid of the
// first process, in the order of /proc, that holds the row's socket (0 when none that we may look
// into does). Raises detector::InternalError when the file can't be read or a number in it isn't
// one.
std::vector<TcpTableRow> readKernelTcpTable(const std::string& path,
                                            const ReadEndpoints& readEndpoints);

} // namespace detector::procfs
