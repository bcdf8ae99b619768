#pragma once

#include <windows.h>

namespace detector::native {

// GetExtendedTcpTable of IP Helper, loaded from the system folder, for the family given: the
// connections with their owners' pids. ERROR_NOT_SUPPORTED when the library lacks it.
DWORD readExtendedTcpTable(void* block, DWORD& size, ULONG family);

} // namespace detector::native
