#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include "host/detector/tcp_connections.h"

// What the system tells about who may hold a port, beside the IPv4 table: the IPv6 table, the
// path of a process's executable, the services and the processes they run in, and whether a bind
// is refused. Each system provides them.
namespace detector::native {

// The IPv6 table with owners; of each row only the state, the local port (in network byte order,
// as in readTcpTable) and the owner are filled. Raises detector::InternalError.
std::vector<TcpTableRow> readTcp6Table();

// The full path of the process's executable, UTF-8; no value when the system doesn't tell.
std::optional<std::string> processImagePath(std::uint32_t pid);

// The display name (UTF-8) of every running service, by the pid of its process; empty where the
// system has no services or doesn't tell.
std::map<std::uint32_t, std::string> serviceNamesByProcess();

// True when a listening socket on every IPv4 interface at the port is refused for want of
// permission (the port is kept by the system), not because another socket has it.
bool bindRefused(std::uint32_t port);

} // namespace detector::native
