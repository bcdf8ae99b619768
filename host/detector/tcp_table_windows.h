#pragma once

#include <windows.h>

#include <cstdint>
#include <vector>

namespace detector::native {

// The family's table of GetExtendedTcpTable with the owners' pids, read again while it grows
// between the calls. Raises detector::InternalError.
std::vector<std::uint8_t> readExtendedTcpTableBlock(ULONG family);

} // namespace detector::native
