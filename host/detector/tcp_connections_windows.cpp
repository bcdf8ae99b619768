#include "host/detector/tcp_connections.h"

#include <windows.h>
#include <winsock2.h>
#include <ws2tcpip.h>

#include <iphlpapi.h>

#include <cstdlib>

#include "foundation/exceptions.h"
#include "foundation/system_library_windows.h"
#include "host/detector/tcp_table_windows.h"

namespace detector::native {

namespace {

// The C allocator's block, freed on every way out.
struct BlockHolder {
    void* block;
    ~BlockHolder() { std::free(block); }
};

using TableFunction = DWORD(WINAPI*)(PVOID, PDWORD, BOOL, ULONG, TCP_TABLE_CLASS, ULONG);

DWORD readTable(void* block, DWORD& size) {
    return readExtendedTcpTable(block, size, AF_INET);
}

} // namespace

DWORD readExtendedTcpTable(void* block, DWORD& size, ULONG family) {
    static const auto read =
        systemFunctionAs<TableFunction>(L"iphlpapi.dll", "GetExtendedTcpTable");
    if (read == nullptr) {
        return ERROR_NOT_SUPPORTED;
    }
    return read(block, &size, TRUE, family, TCP_TABLE_OWNER_PID_ALL, 0);
}

std::vector<TcpTableRow> readTcpTable() {
    DWORD size = 0;
    if (readTable(nullptr, size) != ERROR_INSUFFICIENT_BUFFER) {
        throw InternalError();
    }
    const BlockHolder holder{std::malloc(size)};
    if (holder.block == nullptr) {
        throw InternalError();
    }
    // No second try: a table that grew between the two calls fails the whole read.
    if (readTable(holder.block, size) != NO_ERROR) {
        throw InternalError();
    }
    const auto* table = static_cast<const MIB_TCPTABLE_OWNER_PID*>(holder.block);
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
