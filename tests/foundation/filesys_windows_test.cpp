#include "foundation/filesys.h"

#include <gtest/gtest.h>

#include "foundation/text.h"
#include "tests/support/foundation/temp_folder.h"

#include <windows.h>

#include <shlobj.h>

namespace {

using Bytes = std::vector<std::uint8_t>;

std::string folderOf(int csidl) {
    wchar_t folder[MAX_PATH] = {};
    SHGetFolderPathW(nullptr, csidl, nullptr, 0, folder);
    return utf16ToUtf8(folder);
}

} // namespace

// The server keeps its logs open while the panel reads them and rewrites its configuration.
TEST(FileSystemWindows, FileHeldOpenWithSharingCanBeReadAndRewritten) {
    const TempFolder folder;
    const std::string file = folder.file("error.log");
    filesys::writeFile(file, Bytes{'a', 'b'});
    const HANDLE held = CreateFileW(utf8ToUtf16(file).c_str(), GENERIC_READ | GENERIC_WRITE,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_EQ(filesys::readFile(file), (Bytes{'a', 'b'}));
    EXPECT_NO_THROW(filesys::writeFile(file, Bytes{'c'}));
    CloseHandle(held);
    EXPECT_EQ(filesys::readFile(file), (Bytes{'c'}));
}

TEST(FileSystemWindows, ProgramFilesIsTheFolderThe32BitProgramSees) {
    const int seen = sizeof(void*) == 8 ? CSIDL_PROGRAM_FILESX86 : CSIDL_PROGRAM_FILES;
    EXPECT_EQ(filesys::programFilesFolder(), folderOf(seen));
}

TEST(FileSystemWindows, ProfileAndLocalAppDataAreTheSystemsFolders) {
    EXPECT_EQ(filesys::profileFolder(), folderOf(CSIDL_PROFILE));
    EXPECT_EQ(filesys::localAppDataFolder(), folderOf(CSIDL_LOCAL_APPDATA));
    EXPECT_EQ(filesys::profileFolder(), utf16ToUtf8(_wgetenv(L"USERPROFILE")));
}
