#include "host/detector/tcp_connections.h"

#include <arpa/inet.h>

#include <algorithm>
#include <tuple>

#include "host/detector/proc_files_posix.h"

namespace detector::native {

namespace {

// "0100007F:1F90": the address as the kernel keeps it in memory, the port in host order.
bool readEndpoint(const std::string& text, std::uint32_t& address, std::uint32_t& port) {
    const std::size_t colon = text.find(':');
    if (colon == std::string::npos) {
        return false;
    }
    address = static_cast<std::uint32_t>(std::stoul(text.substr(0, colon), nullptr, 16));
    port = htons(static_cast<std::uint16_t>(std::stoul(text.substr(colon + 1), nullptr, 16)));
    return true;
}

// The order of the Windows table: local address and port, then remote, each as a number.
auto sortKey(const TcpTableRow& row) {
    return std::make_tuple(ntohl(row.localAddress), ntohs(static_cast<uint16_t>(row.localPort)),
                           ntohl(row.remoteAddress), ntohs(static_cast<uint16_t>(row.remotePort)));
}

} // namespace

std::vector<TcpTableRow> readTcpTable() {
    std::vector<TcpTableRow> table = procfs::readKernelTcpTable(
        "/proc/net/tcp", [](const std::string& local, const std::string& remote, TcpTableRow& row) {
            return readEndpoint(local, row.localAddress, row.localPort) &&
                   readEndpoint(remote, row.remoteAddress, row.remotePort);
        });
    std::stable_sort(table.begin(), table.end(), [](const TcpTableRow& a, const TcpTableRow& b) {
        return sortKey(a) < sortKey(b);
    });
    return table;
}

} // namespace detector::native
