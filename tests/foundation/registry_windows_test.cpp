#include "foundation/registry.h"

#include <gtest/gtest.h>

#include "foundation/text.h"

#include <atomic>
#include <cstdint>
#include <string>
#include <vector>
#include <windows.h>

namespace {

const wchar_t* const testsKey = L"Software\\Corvanite Tests";

std::wstring wide(const std::string& keyPath) {
    return utf8ToUtf16(keyPath);
}

void setTestValue(const std::string& keyPath, const char* name, DWORD type, const BYTE* data,
                  DWORD size) {
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, wide(keyPath).c_str(), 0,
                            KEY_SET_VALUE | KEY_WOW64_64KEY, &key),
              ERROR_SUCCESS);
    EXPECT_EQ(RegSetValueExW(key, utf8ToUtf16(name).c_str(), 0, type, data, size), ERROR_SUCCESS);
    RegCloseKey(key);
}

} // namespace

std::string makeTestKey() {
    static std::atomic<unsigned> counter{0};
    const std::string keyPath = "Software\\Corvanite Tests\\" +
                                std::to_string(GetCurrentProcessId()) + "-" +
                                std::to_string(counter.fetch_add(1));
    HKEY key = nullptr;
    const LSTATUS created =
        RegCreateKeyExW(HKEY_CURRENT_USER, wide(keyPath).c_str(), 0, nullptr, 0,
                        KEY_ALL_ACCESS | KEY_WOW64_64KEY, nullptr, &key, nullptr);
    EXPECT_EQ(created, ERROR_SUCCESS);
    RegCloseKey(key);
    return keyPath;
}

// The tests' own parent key goes too, once no other test run still has a key in it.
void removeTestKey(const std::string& keyPath) {
    RegDeleteTreeW(HKEY_CURRENT_USER, wide(keyPath).c_str());
    RegDeleteKeyExW(HKEY_CURRENT_USER, wide(keyPath).c_str(), KEY_WOW64_64KEY, 0);
    RegDeleteKeyExW(HKEY_CURRENT_USER, testsKey, KEY_WOW64_64KEY, 0);
}

bool testKeyExists(const std::string& keyPath) {
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_CURRENT_USER, wide(keyPath).c_str(), 0, KEY_READ | KEY_WOW64_64KEY,
                      &key) != ERROR_SUCCESS) {
        return false;
    }
    RegCloseKey(key);
    return true;
}

void setTestDwordValue(const std::string& keyPath, const char* name, std::uint32_t value) {
    const DWORD data = value;
    setTestValue(keyPath, name, REG_DWORD, reinterpret_cast<const BYTE*>(&data), sizeof(data));
}

void setTestBinaryValue(const std::string& keyPath, const char* name,
                        const std::vector<std::uint8_t>& data) {
    setTestValue(keyPath, name, REG_BINARY, data.data(), static_cast<DWORD>(data.size()));
}

// What the system stores behind the text is its own affair: Wine adds a terminating zero.
TEST(RegistryWindows, WrittenValueIsAStringValue) {
    const std::string keyPath = makeTestKey();
    ASSERT_TRUE(writeRegistryText(RegistryHive::CurrentUser, keyPath, "Language", "1049"));
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, wide(keyPath).c_str(), 0, KEY_READ | KEY_WOW64_64KEY,
                            &key),
              ERROR_SUCCESS);
    DWORD type = 0;
    wchar_t data[16] = {};
    DWORD size = sizeof(data);
    EXPECT_EQ(
        RegQueryValueExW(key, L"Language", nullptr, &type, reinterpret_cast<BYTE*>(data), &size),
        ERROR_SUCCESS);
    RegCloseKey(key);
    EXPECT_EQ(type, static_cast<DWORD>(REG_SZ));
    EXPECT_EQ(std::wstring(data), L"1049");
    removeTestKey(keyPath);
}

// A folder's name comes through the wide call: every letter stays, whatever the code page.
TEST(RegistryWindows, TextWithLettersOfAnyScriptReadsBackWhole) {
    const std::string keyPath = makeTestKey();
    const std::wstring path = L"C:\\服务器\\José Корванит Ωμέγα\\";
    setTestValue(keyPath, "Path", REG_SZ, reinterpret_cast<const BYTE*>(path.c_str()),
                 static_cast<DWORD>((path.size() + 1) * sizeof(wchar_t)));
    EXPECT_EQ(readRegistryText(RegistryHive::CurrentUser, keyPath, "Path"), utf16ToUtf8(path));
    removeTestKey(keyPath);
}

TEST(RegistryWindows, TextPastMaxPathReadsBackWhole) {
    const std::string keyPath = makeTestKey();
    const std::wstring path = L"C:\\" + std::wstring(400, L'ж');
    setTestValue(keyPath, "Path", REG_SZ, reinterpret_cast<const BYTE*>(path.c_str()),
                 static_cast<DWORD>(path.size() * sizeof(wchar_t)));
    EXPECT_EQ(readRegistryText(RegistryHive::CurrentUser, keyPath, "Path"), utf16ToUtf8(path));
    removeTestKey(keyPath);
}
