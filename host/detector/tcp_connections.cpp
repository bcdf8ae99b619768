#include "host/detector/tcp_connections.h"

#include <array>
#include <atomic>

#include "foundation/exceptions.h"
#include "foundation/text.h"

namespace detector {

namespace {

constexpr std::uint32_t listening = 2;

std::atomic<std::uint64_t> tableReads{0};

// Ports stand in network byte order in the low 16 bits of the row's word.
std::uint32_t hostOrderPort(std::uint32_t rowPort) {
    swapBytePairs(&rowPort, sizeof rowPort);
    return rowPort;
}

} // namespace

std::string tcpStateName(std::uint32_t state) {
    static const std::array<const char*, 12> names = {
        "CLOSED",     "LISTEN",     "SYN-SENT", "SYN-RECEIVED", "ESTABLISHED", "FIN-WAIT-1",
        "FIN-WAIT-2", "CLOSE-WAIT", "CLOSING",  "LAST-ACK",     "TIME-WAIT",   "DELETE-TCB"};
    if (state < 1 || state > names.size()) {
        return "UNKNOWN";
    }
    return names[state - 1];
}

std::string ipv4Text(std::uint32_t address) {
    if (address == 0) {
        return "";
    }
    std::string text;
    for (int octet = 0; octet < 4; ++octet) {
        if (octet > 0) {
            text += '.';
        }
        text += std::to_string((address >> (8 * octet)) & 0xFF);
    }
    return text;
}

TcpConnection connectionOfRow(const TcpTableRow& row) {
    TcpConnection connection;
    connection.processId = row.owningPid;
    connection.state = row.state;
    connection.stateName = tcpStateName(row.state);
    connection.localAddress = row.localAddress;
    connection.localPort = hostOrderPort(row.localPort);
    connection.remoteAddress = row.remoteAddress;
    connection.remotePort = row.state == listening ? 0 : hostOrderPort(row.remotePort);
    return connection;
}

std::vector<TcpConnection> connectionsOfRows(const std::vector<TcpTableRow>& rows) {
    std::vector<TcpConnection> connections;
    connections.reserve(rows.size());
    for (const TcpTableRow& row : rows) {
        connections.push_back(connectionOfRow(row));
    }
    return connections;
}

std::vector<TcpConnection> tcpConnections() {
    tableReads.fetch_add(1, std::memory_order_relaxed);
    return connectionsOfRows(native::readTcpTable());
}

std::uint64_t tableReadCount() {
    return tableReads.load(std::memory_order_relaxed);
}

TcpConnection connectionOfProcess(std::uint32_t processId,
                                  const std::function<std::vector<TcpConnection>()>& readTable) {
    if (processId == 0) {
        throw ConnectionNotFound();
    }
    for (const TcpConnection& connection : readTable()) {
        if (connection.processId == processId) {
            return connection;
        }
    }
    throw ConnectionNotFound();
}

TcpConnection connectionOfProcess(std::uint32_t processId) {
    return connectionOfProcess(processId, tcpConnections);
}

} // namespace detector
