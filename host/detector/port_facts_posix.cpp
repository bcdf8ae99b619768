#include "host/detector/port_facts.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <climits>
#include <sstream>

#include "foundation/exceptions.h"
#include "host/detector/proc_files_posix.h"

namespace detector::native {

namespace {

// The kernel's TCP states as the Windows table numbers them (see tcp_connections_posix.cpp).
std::uint32_t tableState(unsigned kernelState) {
    constexpr std::uint32_t states[] = {0, 5, 3, 4, 6, 7, 11, 1, 8, 10, 2, 9, 4};
    return kernelState < std::size(states) ? states[kernelState] : 0;
}

} // namespace

std::vector<TcpTableRow> readTcp6Table() {
    const std::optional<std::string> text = procfs::readText("/proc/net/tcp6");
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
            const std::size_t colon = local.find(':');
            if (colon == std::string::npos) {
                continue;
            }
            TcpTableRow row;
            row.localPort =
                htons(static_cast<std::uint16_t>(std::stoul(local.substr(colon + 1), nullptr, 16)));
            row.state = tableState(static_cast<unsigned>(std::stoul(state, nullptr, 16)));
            rows.emplace_back(row, inode);
        }
    } catch (const std::logic_error&) {
        throw InternalError();
    }
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
    std::vector<TcpTableRow> table;
    for (auto& [row, inode] : rows) {
        const auto owner = owners.find(inode);
        row.owningPid = owner == owners.end() ? 0 : owner->second;
        table.push_back(row);
    }
    return table;
}

std::optional<std::string> processImagePath(std::uint32_t pid) {
    return procfs::linkTarget("/proc/" + std::to_string(pid) + "/exe");
}

std::map<std::uint32_t, std::string> serviceNamesByProcess() {
    return {};
}

bool bindRefused(std::uint32_t port) {
    const int probe = socket(AF_INET, SOCK_STREAM, 0);
    if (probe < 0) {
        return false;
    }
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_ANY);
    const bool refused =
        bind(probe, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 &&
        errno == EACCES;
    close(probe);
    return refused;
}

} // namespace detector::native
