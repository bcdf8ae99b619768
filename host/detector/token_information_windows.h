#pragma once

#include <cstdint>
#include <vector>

namespace detector {

// The bytes that GetTokenInformation gives for this class of the process's token; a processId of
// 0 means this process. Raises std::runtime_error whose text is the system's error code in
// decimal, such as "5" for a process that may not be opened.
std::vector<std::uint8_t> tokenInformation(std::uint32_t tokenClass, std::uint32_t processId);

} // namespace detector
