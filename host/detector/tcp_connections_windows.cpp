#include "host/detector/tcp_connections.h"

#include <windows.h>
#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>

#include <atomic>
#include <cstdint>

#include "foundation/exceptions.h"
#include "foundation/system_library_windows.h"
#include "host/detector/growing_table.h"
#include "host/detector/tcp_table_windows.h"

namespace detector::native {

namespace {

using TableFunction = DWORD(WINAPI*)(PVOID, PDWORD, BOOL, ULONG, TCP_TABLE_CLASS, ULONG);

// Room for some two hundred rows at the first read of the program, so that the table of an
// ordinary machine comes in one call; after that the size that fitted last.
constexpr std::uint32_t firstBlockSize = 4096;

std::atomic<std::uint32_t>& lastTableSize(ULONG family) {
    static std::atomic<std::uint32_t> ipv4{firstBlockSize};
    static std::atomic<std::uint32_t> ipv6{firstBlockSize};
    return family == AF_INET6 ? ipv6 : ipv4;
}

// GetExtendedTcpTable of IP Helper, loaded from the system folder: the connections of the family
// with their owners' pids. ERROR_NOT_SUPPORTED when the library lacks it.
DWORD readExtendedTcpTable(void* block, DWORD& size, ULONG family) {
    static const auto read =
        systemFunctionAs<TableFunction>(L"iphlpapi.dll", "GetExtendedTcpTable");
    if (read == nullptr) {
        return ERROR_NOT_SUPPORTED;
    }
    return read(block, &size, TRUE, family, TCP_TABLE_OWNER_PID_ALL, 0);
}

} // namespace

std::vector<std::uint8_t> readExtendedTcpTableBlock(ULONG family) {
    std::atomic<std::uint32_t>& lastSize = lastTableSize(family);
    std::vector<std::uint8_t> block = readGrowingTable(
        lastSize.load(std::memory_order_relaxed),
        [family](std::vector<std::uint8_t>& into, std::uint32_t& needed) {
            DWORD size = static_cast<DWORD>(into.size());
            const DWORD result = readExtendedTcpTable(into.data(), size, family);
            needed = size;
            if (result == NO_ERROR) {
                return TableRead::done;
            }
            return result == ERROR_INSUFFICIENT_BUFFER ? TableRead::tooSmall : TableRead::failed;
        });
    lastSize.store(static_cast<std::uint32_t>(block.size()), std::memory_order_relaxed);
    return block;
}

std::vector<TcpTableRow> readTcpTable() {
    const std::vector<std::uint8_t> block = readExtendedTcpTableBlock(AF_INET);
    const auto* table = reinterpret_cast<const MIB_TCPTABLE_OWNER_PID*>(block.data());
    std::vector<TcpTableRow> rows;
    rows.reserve(table->dwNumEntries);
    for (DWORD index = 0; index < table->dwNumEntries; ++index) {
        const MIB_TCPROW_OWNER_PID& row = table->table[index];
        rows.push_back({row.dwState, row.dwLocalAddr, row.dwLocalPort, row.dwRemoteAddr,
                        row.dwRemotePort, row.dwOwningPid});
    }
    return rows;
}

} // namespace detector::native
