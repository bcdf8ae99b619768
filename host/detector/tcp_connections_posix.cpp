#include "host/detector/tcp_connections.h"

#include <arpa/inet.h>

#include <algorithm>
#include <map>
#include <sstream>
#include <tuple>

#include "foundation/exceptions.h"
#include "host/detector/proc_files_posix.h"

namespace detector::native {

namespace {

// The kernel's TCP states (1 established ... 12 new SYN received) as the Windows table numbers
// them (1 closed ... 12 delete TCB).
std::uint32_t tableState(unsigned kernelState) {
    constexpr std::uint32_t states[] = {0, 5, 3, 4, 6, 7, 11, 1, 8, 10, 2, 9, 4};
    return kernelState < std::size(states) ? states[kernelState] : 0;
}

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

// Which process holds each socket: the first one, in the order of /proc, with a descriptor that
// points at it. Sockets of processes that we may not look into stay without an owner.
std::map<std::string, std::uint32_t> socketOwners() {
    std::map<std::string, std::uint32_t> owners;
    for (const std::uint32_t pid : procfs::processIds()) {
        const std::string folder = "/proc/" + std::to_string(pid) + "/fd/";
        for (const std::string& descriptor : procfs::folderEntries(folder)) {
            const std::optional<std::string> target = procfs::linkTarget(folder + descriptor);
            if (target && target->rfind("socket:[", 0) == 0) {
                owners.emplace(target->substr(8, target->size() - 9), pid);
            }
        }
    }
    return owners;
}

// The order of the Windows table: local address and port, then remote, each as a number.
auto sortKey(const TcpTableRow& row) {
    return std::make_tuple(ntohl(row.localAddress), ntohs(static_cast<uint16_t>(row.localPort)),
                           ntohl(row.remoteAddress), ntohs(static_cast<uint16_t>(row.remotePort)));
}

} // namespace

std::vector<TcpTableRow> readTcpTable() {
    const std::optional<std::string> text = procfs::readText("/proc/net/tcp");
    if (!text) {
        throw InternalError();
    }
    std::istringstream lines(*text);
    std::string line;
    std::getline(lines, line); // the column heads
    std::vector<std::pair<TcpTableRow, std::string>> rows;
    try {
        while (std::getline(lines, line)) {
            std::istringstream fields(line);
            std::string slot, local, remote, state, queues, timer, retransmits, uid, timeout, inode;
            if (!(fields >> slot >> local >> remote >> state >> queues >> timer >> retransmits >>
                  uid >> timeout >> inode)) {
                continue;
            }
            TcpTableRow row;
            if (!readEndpoint(local, row.localAddress, row.localPort) ||
                !readEndpoint(remote, row.remoteAddress, row.remotePort)) {
                continue;
            }
            row.state = tableState(static_cast<unsigned>(std::stoul(state, nullptr, 16)));
            rows.emplace_back(row, inode);
        }
    } catch (const std::logic_error&) {
        throw InternalError();
    }
    const std::map<std::string, std::uint32_t> owners =
        rows.empty() ? std::map<std::string, std::uint32_t>() : socketOwners();
    std::vector<TcpTableRow> table;
    for (auto& [row, inode] : rows) {
        const auto owner = owners.find(inode);
        row.owningPid = owner == owners.end() ? 0 : owner->second;
        table.push_back(row);
    }
    std::stable_sort(table.begin(), table.end(), [](const TcpTableRow& a, const TcpTableRow& b) {
        return sortKey(a) < sortKey(b);
    });
    return table;
}

} // namespace detector::native
