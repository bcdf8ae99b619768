#include "host/detector/port_facts.h"

#include <arpa/inet.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <cerrno>
#include <climits>

#include "host/detector/proc_files_posix.h"

namespace detector::native {

// The table's addresses hold four bytes: of an IPv6 row only the local port is read.
std::vector<TcpTableRow> readTcp6Table() {
    return procfs::readKernelTcpTable(
        "/proc/net/tcp6", [](const std::string& local, const std::string&, TcpTableRow& row) {
            const std::size_t colon = local.find(':');
            if (colon == std::string::npos) {
                return false;
            }
            row.localPort =
                htons(static_cast<std::uint16_t>(std::stoul(local.substr(colon + 1), nullptr, 16)));
            return true;
        });
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
