#include <windows.h>

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>

std::string makeVersionTestKey() {
    static std::atomic<unsigned> counter{0};
    const std::string keyPath = "Software\\Corvanite Tests\\Uninstall " +
                                std::to_string(GetCurrentProcessId()) + "-" +
                                std::to_string(counter.fetch_add(1));
    HKEY key = nullptr;
    RegCreateKeyExA(HKEY_CURRENT_USER, keyPath.c_str(), 0, nullptr, 0, KEY_ALL_ACCESS, nullptr,
                    &key, nullptr);
    RegCloseKey(key);
    return keyPath;
}

void removeVersionTestKey(const std::string& keyPath) {
    RegDeleteTreeA(HKEY_CURRENT_USER, keyPath.c_str());
}

void setVersionTestBytes(const std::string& keyPath, const std::vector<std::uint8_t>& data) {
    HKEY key = nullptr;
    if (RegOpenKeyExA(HKEY_CURRENT_USER, keyPath.c_str(), 0, KEY_SET_VALUE, &key) ==
        ERROR_SUCCESS) {
        RegSetValueExA(key, "DisplayVersion", 0, REG_SZ, data.data(),
                       static_cast<DWORD>(data.size()));
        RegCloseKey(key);
    }
}
