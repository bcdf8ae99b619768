#include "tests/support/diagnostics/test_registry.h"

#include <atomic>
#include <stdexcept>

#include <windows.h>

#include "foundation/text.h"

// RegOverridePredefKey sends every use of HKEY_CURRENT_USER and HKEY_LOCAL_MACHINE in this process
// to a key of the test's own, so the program's registry code runs unchanged against values that
// no other test run can see or disturb.

namespace {

const wchar_t* const testsKey = L"Software\\Corvanite Tests";
constexpr REGSAM access = KEY_ALL_ACCESS | KEY_WOW64_64KEY;

HKEY createUnder(HKEY parent, const std::wstring& path) {
    HKEY key = nullptr;
    if (RegCreateKeyExW(parent, path.c_str(), 0, nullptr, 0, access, nullptr, &key, nullptr) !=
        ERROR_SUCCESS) {
        throw std::runtime_error("test registry key can't be created");
    }
    return key;
}

HKEY predefined(RegistryHive hive) {
    return hive == RegistryHive::LocalMachine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER;
}

void setValue(RegistryHive hive, const std::string& keyPath, const std::string& valueName,
              DWORD type, const std::string& bytes) {
    const HKEY key = createUnder(predefined(hive), utf8ToUtf16(keyPath));
    const LSTATUS result =
        RegSetValueExA(key, valueName.c_str(), 0, type, reinterpret_cast<const BYTE*>(bytes.data()),
                       static_cast<DWORD>(bytes.size()));
    RegCloseKey(key);
    if (result != ERROR_SUCCESS) {
        throw std::runtime_error("test registry value can't be set");
    }
}

} // namespace

struct ScopedTestRegistry::State {
    std::wstring ownKey;
    HKEY currentUser = nullptr;
    HKEY localMachine = nullptr;
};

ScopedTestRegistry::ScopedTestRegistry() : state_(std::make_unique<State>()) {
    static std::atomic<unsigned> counter{0};
    state_->ownKey = std::wstring(testsKey) + L"\\diagnostics-" +
                     std::to_wstring(GetCurrentProcessId()) + L"-" +
                     std::to_wstring(counter.fetch_add(1));
    state_->currentUser = createUnder(HKEY_CURRENT_USER, state_->ownKey + L"\\HKCU");
    state_->localMachine = createUnder(HKEY_CURRENT_USER, state_->ownKey + L"\\HKLM");
    RegOverridePredefKey(HKEY_CURRENT_USER, state_->currentUser);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, state_->localMachine);
}

ScopedTestRegistry::~ScopedTestRegistry() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegOverridePredefKey(HKEY_LOCAL_MACHINE, nullptr);
    RegCloseKey(state_->currentUser);
    RegCloseKey(state_->localMachine);
    RegDeleteTreeW(HKEY_CURRENT_USER, state_->ownKey.c_str());
    RegDeleteKeyExW(HKEY_CURRENT_USER, state_->ownKey.c_str(), KEY_WOW64_64KEY, 0);
    // The tests' own parent key goes once no other run still has a key in it.
    RegDeleteKeyExW(HKEY_CURRENT_USER, testsKey, KEY_WOW64_64KEY, 0);
}

void ScopedTestRegistry::createKey(RegistryHive hive, const std::string& keyPath) {
    RegCloseKey(createUnder(predefined(hive), utf8ToUtf16(keyPath)));
}

void ScopedTestRegistry::setText(RegistryHive hive, const std::string& keyPath,
                                 const std::string& valueName, const std::string& utf8) {
    const std::string bytes = utf8ToCp1251(utf8);
    setValue(hive, keyPath, valueName, REG_SZ, std::string(bytes.c_str(), bytes.size() + 1));
}

void ScopedTestRegistry::setDword(RegistryHive hive, const std::string& keyPath,
                                  const std::string& valueName, std::uint32_t value) {
    const std::string bytes = {static_cast<char>(value), static_cast<char>(value >> 8),
                               static_cast<char>(value >> 16), static_cast<char>(value >> 24)};
    setValue(hive, keyPath, valueName, REG_DWORD, bytes);
}
