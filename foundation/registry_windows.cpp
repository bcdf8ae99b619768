#include "foundation/registry.h"

#include <windows.h>

#include <algorithm>
#include <cwchar>

#include "foundation/text.h"

namespace registry::native {

namespace {

HKEY handleOf(RegistryHive hive) {
    return hive == RegistryHive::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

// Owns one opened key for the length of one call.
class RegKeySession {
public:
    RegKeySession() = default;
    RegKeySession(const RegKeySession&) = delete;
    RegKeySession& operator=(const RegKeySession&) = delete;
    virtual ~RegKeySession() { RegCloseKey(key); }

    HKEY key = nullptr;
};

// The result of opening isn't looked at: a key that didn't open makes the value call that follows
// fail, and that is the failure reported. KEY_WOW64_64KEY shows the 32-bit program the registry
// that 64-bit programs see.
class RegKeyReadSession : public RegKeySession {
public:
    RegKeyReadSession(RegistryHive hive, const std::string& path) {
        RegOpenKeyExA(handleOf(hive), path.c_str(), 0, KEY_READ | KEY_WOW64_64KEY, &key);
    }
};

class RegKeyWriteSession : public RegKeySession {
public:
    RegKeyWriteSession(RegistryHive hive, const std::string& path) {
        RegOpenKeyExA(handleOf(hive), path.c_str(), 0, KEY_WRITE | KEY_WOW64_64KEY, &key);
    }
};

} // namespace

std::optional<std::vector<std::uint8_t>> readValue(RegistryHive hive, const std::string& keyPath,
                                                   const char* valueName) {
    const RegKeyReadSession session(hive, keyPath);
    DWORD size = 0;
    if (RegQueryValueExA(session.key, valueName, nullptr, nullptr, nullptr, &size) != 0) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> data(size, 0);
    if (size == 0) {
        return data;
    }
    if (RegQueryValueExA(session.key, valueName, nullptr, nullptr, data.data(), &size) != 0) {
        return std::nullopt;
    }
    data.resize(size);
    return data;
}

std::optional<std::string> readTextValue(RegistryHive hive, const std::string& keyPath,
                                         const std::string& valueName) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(handleOf(hive), utf8ToUtf16(keyPath).c_str(), 0, KEY_READ | KEY_WOW64_64KEY,
                      &key) != ERROR_SUCCESS) {
        return std::nullopt;
    }
    const std::wstring name = utf8ToUtf16(valueName);
    DWORD type = 0;
    DWORD size = 0;
    std::vector<std::uint8_t> data;
    LSTATUS status = RegQueryValueExW(key, name.c_str(), nullptr, &type, nullptr, &size);
    if (status == ERROR_SUCCESS) {
        // Room for a terminating zero the value may lack.
        data.assign(size + sizeof(wchar_t), 0);
        status = RegQueryValueExW(key, name.c_str(), nullptr, &type, data.data(), &size);
    }
    RegCloseKey(key);
    if (status != ERROR_SUCCESS) {
        return std::nullopt;
    }
    data.resize(size);
    if (type != REG_SZ && type != REG_EXPAND_SZ) {
        return textOfBytes(data);
    }
    std::wstring text(data.size() / sizeof(wchar_t), L'\0');
    std::copy(data.begin(),
              data.begin() + static_cast<std::ptrdiff_t>(text.size() * sizeof(wchar_t)),
              reinterpret_cast<std::uint8_t*>(text.data()));
    text.resize(std::wcslen(text.c_str()));
    return utf16ToUtf8(text);
}

bool writeTextValue(RegistryHive hive, const std::string& keyPath, const std::string& valueName,
                    const std::string& cp1251) {
    // Through the wide call, as the value is read: the words keep their letters on a system of
    // any code page.
    const RegKeyWriteSession session(hive, keyPath);
    const std::wstring text = fromCp1251(cp1251);
    const auto* bytes = reinterpret_cast<const BYTE*>(text.data());
    return RegSetValueExW(session.key, utf8ToUtf16(valueName).c_str(), 0, REG_SZ, bytes,
                          static_cast<DWORD>(text.size() * sizeof(wchar_t))) == 0;
}

} // namespace registry::native
