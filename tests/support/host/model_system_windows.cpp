#include "tests/support/host/model_system.h"

#include <windows.h>
#include <winsock2.h>

#include <cstdlib>
#include <filesystem>
#include <stdexcept>

namespace {

constexpr const wchar_t* productKey = L"Software\\Ormal Co\\CorvaniteHost";
// Shared by every test process of the prefix that changes the product's key.
constexpr const wchar_t* registryLockName = L"CorvaniteTestRegistryLock";

} // namespace

void hostModelSetEnvironment(const char* name, const std::string& value) {
    _putenv_s(name, value.c_str());
}

void hostModelCreateProductKey() {
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_CURRENT_USER, productKey, 0, nullptr, 0, KEY_WRITE | KEY_WOW64_64KEY,
                        nullptr, &key, nullptr) != ERROR_SUCCESS) {
        throw std::runtime_error("the product's registry key can't be made");
    }
    RegCloseKey(key);
}

bool hostModelDeleteProductValue(const char* name) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, productKey, 0, KEY_SET_VALUE | KEY_WOW64_64KEY, &key) !=
        ERROR_SUCCESS) {
        return true;
    }
    const std::wstring wideName(name, name + std::char_traits<char>::length(name));
    const LSTATUS result = RegDeleteValueW(key, wideName.c_str());
    RegCloseKey(key);
    return result == ERROR_SUCCESS || result == ERROR_FILE_NOT_FOUND;
}

std::uint32_t hostModelCurrentProcessId() {
    return GetCurrentProcessId();
}

std::uint16_t hostModelFreePort() {
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
    const SOCKET s = socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    address.sin_port = 0;
    int length = sizeof(address);
    const bool ok = s != INVALID_SOCKET &&
                    bind(s, reinterpret_cast<sockaddr*>(&address), sizeof(address)) == 0 &&
                    getsockname(s, reinterpret_cast<sockaddr*>(&address), &length) == 0;
    if (s != INVALID_SOCKET) {
        closesocket(s);
    }
    WSACleanup();
    if (!ok) {
        throw std::runtime_error("no free port");
    }
    return ntohs(address.sin_port);
}

HostModelRegistryLock::HostModelRegistryLock()
    : handle_(CreateMutexW(nullptr, FALSE, registryLockName)) {
    if (handle_ != nullptr) {
        WaitForSingleObject(handle_, INFINITE);
    }
}

HostModelRegistryLock::~HostModelRegistryLock() {
    if (handle_ != nullptr) {
        ReleaseMutex(handle_);
        CloseHandle(handle_);
    }
}
