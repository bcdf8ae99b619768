#pragma once

#include <cstdint>

// The pid that the server wrote to "nginx.pid" in the installation folder: its master process.
// Raises filesys::ReadFileError for a missing file, std::invalid_argument "invalid stoul argument"
// for a text without digits, std::out_of_range "stoul argument out of range" for too large a number.
std::uint32_t readServerPid();

// True when the pid file names a living process, whatever its name. Never raises.
bool isServerRunning();
