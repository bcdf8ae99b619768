#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

// The machine's IPv4 TCP table, read anew on every call.
namespace detector {

// One connection. Addresses have their first octet in the lowest byte; ports are in host order.
struct TcpConnection {
    std::uint32_t processId = 0;
    std::uint32_t state = 0;
    std::string stateName;
    std::uint32_t localAddress = 0;
    std::uint32_t localPort = 0;
    std::uint32_t remoteAddress = 0;
    std::uint32_t remotePort = 0; // 0 for a listening socket
};

// The whole table in the system's order. Raises detector::InternalError.
std::vector<TcpConnection> tcpConnections();

// How many times tcpConnections has read the table in this process, for the tests of what a
// refresh costs.
std::uint64_t tableReadCount();

// The first connection of the process in table order, whatever its state. Raises
// detector::ConnectionNotFound for process 0, without reading the table, and when the process
// has none.
TcpConnection connectionOfProcess(std::uint32_t processId);
TcpConnection connectionOfProcess(std::uint32_t processId,
                                  const std::function<std::vector<TcpConnection>()>& readTable);

// The four bytes in decimal joined by ".", lowest byte first; an address of 0 gives "".
std::string ipv4Text(std::uint32_t address);

// "LISTEN", "ESTABLISHED" and the rest by the system's state number; "UNKNOWN" otherwise.
std::string tcpStateName(std::uint32_t state);

// One row as the system's table holds it: state numbers 1 (closed) to 12 (delete TCB), addresses
// with the first octet in the lowest byte, ports in network byte order in the low 16 bits.
struct TcpTableRow {
    std::uint32_t state = 0;
    std::uint32_t localAddress = 0;
    std::uint32_t localPort = 0;
    std::uint32_t remoteAddress = 0;
    std::uint32_t remotePort = 0;
    std::uint32_t owningPid = 0;
};

// The connection of one row: the state's word, the ports in host order, and a remote port of 0
// for a listening row whatever the row holds.
TcpConnection connectionOfRow(const TcpTableRow& row);
std::vector<TcpConnection> connectionsOfRows(const std::vector<TcpTableRow>& rows);

namespace native {

// The system's IPv4 table with owners, sorted by local address. Raises detector::InternalError.
std::vector<TcpTableRow> readTcpTable();

} // namespace native

} // namespace detector
