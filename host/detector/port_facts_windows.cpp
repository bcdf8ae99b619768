#include "host/detector/port_facts.h"

#include <winsock2.h>
#include <ws2tcpip.h>

#include <windows.h>

#include <iphlpapi.h>

#include <cstdlib>
#include <vector>

#include "foundation/exceptions.h"
#include "foundation/text.h"
#include "host/detector/tcp_table_windows.h"

namespace detector::native {

std::vector<TcpTableRow> readTcp6Table() {
    const std::vector<std::uint8_t> block = readExtendedTcpTableBlock(AF_INET6);
    const auto* table = reinterpret_cast<const MIB_TCP6TABLE_OWNER_PID*>(block.data());
    std::vector<TcpTableRow> rows;
    for (DWORD index = 0; index < table->dwNumEntries; ++index) {
        const MIB_TCP6ROW_OWNER_PID& row = table->table[index];
        TcpTableRow each;
        each.state = row.dwState;
        each.localPort = row.dwLocalPort;
        each.owningPid = row.dwOwningPid;
        rows.push_back(each);
    }
    return rows;
}

std::optional<std::string> processImagePath(std::uint32_t pid) {
    HANDLE process = OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, pid);
    if (process == nullptr) {
        return std::nullopt;
    }
    wchar_t image[MAX_PATH * 4] = {};
    DWORD length = sizeof(image) / sizeof(image[0]);
    const BOOL found = QueryFullProcessImageNameW(process, 0, image, &length);
    CloseHandle(process);
    if (!found) {
        return std::nullopt;
    }
    return utf16ToUtf8(std::wstring(image, length));
}

std::map<std::uint32_t, std::string> serviceNamesByProcess() {
    std::map<std::uint32_t, std::string> names;
    SC_HANDLE manager = OpenSCManagerW(nullptr, nullptr, SC_MANAGER_ENUMERATE_SERVICE);
    if (manager == nullptr) {
        return names;
    }
    DWORD needed = 0;
    DWORD count = 0;
    DWORD resume = 0;
    EnumServicesStatusExW(manager, SC_ENUM_PROCESS_INFO, SERVICE_WIN32, SERVICE_ACTIVE, nullptr, 0,
                          &needed, &count, &resume, nullptr);
    std::vector<unsigned char> block(needed + 1024);
    resume = 0;
    if (EnumServicesStatusExW(manager, SC_ENUM_PROCESS_INFO, SERVICE_WIN32, SERVICE_ACTIVE,
                              block.data(), static_cast<DWORD>(block.size()), &needed, &count,
                              &resume, nullptr)) {
        const auto* services = reinterpret_cast<const ENUM_SERVICE_STATUS_PROCESSW*>(block.data());
        for (DWORD index = 0; index < count; ++index) {
            const DWORD pid = services[index].ServiceStatusProcess.dwProcessId;
            if (pid != 0 && services[index].lpDisplayName != nullptr) {
                names.emplace(pid, utf16ToUtf8(services[index].lpDisplayName));
            }
        }
    }
    CloseServiceHandle(manager);
    return names;
}

bool bindRefused(std::uint32_t port) {
    WSADATA data{};
    if (WSAStartup(MAKEWORD(2, 2), &data) != 0) {
        return false;
    }
    bool refused = false;
    SOCKET probe = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    if (probe != INVALID_SOCKET) {
        BOOL exclusive = TRUE;
        setsockopt(probe, SOL_SOCKET, SO_EXCLUSIVEADDRUSE,
                   reinterpret_cast<const char*>(&exclusive), sizeof(exclusive));
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<u_short>(port));
        address.sin_addr.s_addr = htonl(INADDR_ANY);
        if (bind(probe, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) ==
            SOCKET_ERROR) {
            refused = WSAGetLastError() == WSAEACCES;
        }
        closesocket(probe);
    }
    WSACleanup();
    return refused;
}

} // namespace detector::native
