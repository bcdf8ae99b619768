#include "host/detector/token_information_windows.h"

#include <windows.h>

#include <stdexcept>
#include <string>

#include "host/detector/scoped_handle_windows.h"

namespace detector {

namespace {

// The system's words for a failure here are its error code in decimal.
std::runtime_error lastError() {
    return std::runtime_error(std::to_string(GetLastError()));
}

} // namespace

std::vector<std::uint8_t> tokenInformation(std::uint32_t tokenClass, std::uint32_t processId) {
    const HANDLE process = processId == 0
                               ? GetCurrentProcess()
                               : OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, processId);
    if (process == nullptr) {
        throw lastError();
    }
    // The pseudo handle of this process needs no closing.
    const ScopedHandle processHolder(processId == 0 ? nullptr : process);
    HANDLE token = nullptr;
    if (!OpenProcessToken(process, TOKEN_QUERY, &token)) {
        throw lastError();
    }
    const ScopedHandle tokenHolder(token);
    const auto informationClass = static_cast<TOKEN_INFORMATION_CLASS>(tokenClass);
    DWORD size = 0;
    if (!GetTokenInformation(token, informationClass, nullptr, 0, &size) &&
        GetLastError() != ERROR_INSUFFICIENT_BUFFER) {
        throw lastError();
    }
    std::vector<std::uint8_t> bytes(size, 0);
    if (!GetTokenInformation(token, informationClass, bytes.data(), size, &size)) {
        throw lastError();
    }
    return bytes;
}

} // namespace detector
