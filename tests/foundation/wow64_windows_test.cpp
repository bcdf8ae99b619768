// What the shipped 32-bit program sees of a 64-bit Windows through WOW64, checked in both Windows
// builds: the 32-bit one meets the system's redirections, and the 64-bit one, which most tests
// run, is made to see what the 32-bit program sees.
#include "foundation/filesys.h"
#include "foundation/registry.h"
#include "foundation/text.h"

#include <gtest/gtest.h>

#include <string>

#include <windows.h>

namespace {

const wchar_t* const viewKey = L"Software\\Corvanite Tests\\Registry view";
const wchar_t* const testsKey = L"Software\\Corvanite Tests";

bool runsThroughWow64() {
    BOOL wow64 = FALSE;
    return IsWow64Process(GetCurrentProcess(), &wow64) && wow64;
}

// Writes the value "View" under the view key of HKEY_LOCAL_MACHINE, in one view of the registry.
bool writeView(REGSAM view, const wchar_t* text) {
    HKEY key = nullptr;
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, viewKey, 0, nullptr, 0, KEY_ALL_ACCESS | view, nullptr,
                        &key, nullptr) != ERROR_SUCCESS) {
        return false;
    }
    const auto size = static_cast<DWORD>((std::wstring(text).size() + 1) * sizeof(wchar_t));
    const LSTATUS status =
        RegSetValueExW(key, L"View", 0, REG_SZ, reinterpret_cast<const BYTE*>(text), size);
    RegCloseKey(key);
    return status == ERROR_SUCCESS;
}

void removeViews() {
    for (const REGSAM view : {KEY_WOW64_64KEY, KEY_WOW64_32KEY}) {
        RegDeleteKeyExW(HKEY_LOCAL_MACHINE, viewKey, view, 0);
        RegDeleteKeyExW(HKEY_LOCAL_MACHINE, testsKey, view, 0);
    }
}

} // namespace

// Every system the program meets is 64-bit: the shipped program runs through WOW64, the 64-bit
// test build natively.
TEST(Wow64, TheProcessRunsThroughWow64ExactlyWhenItIs32Bit) {
    EXPECT_EQ(runsThroughWow64(), sizeof(void*) == 4);
}

// The 32-bit program's Program Files is the " (x86)" folder; the bitness of the system and the
// browsers' folders are told from it.
TEST(Wow64, ProgramFilesIsTheX86Folder) {
    const std::string folder = filesys::programFilesFolder();
    EXPECT_TRUE(endsWith(folder, "Program Files (x86)")) << folder;
}

// HKEY_LOCAL_MACHINE\Software has a 32-bit view of its own; the program reads the 64-bit one,
// where a 64-bit installer writes.
TEST(Wow64, LocalMachineIsReadInThe64BitView) {
    removeViews();
    ASSERT_TRUE(writeView(KEY_WOW64_64KEY, L"64-bit"));
    ASSERT_TRUE(writeView(KEY_WOW64_32KEY, L"32-bit"));
    const std::string keyPath = utf16ToUtf8(viewKey);
    const auto seen = readRegistryText(RegistryHive::LocalMachine, keyPath, "View");
    removeViews();
    ASSERT_TRUE(seen.has_value());
    EXPECT_EQ(*seen, "64-bit");
}
