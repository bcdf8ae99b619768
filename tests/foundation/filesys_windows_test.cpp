#include "foundation/filesys.h"

#include <gtest/gtest.h>

#include "foundation/exceptions.h"
#include "foundation/text.h"
#include "tests/support/foundation/temp_folder.h"

#include <chrono>
#include <thread>

#include <windows.h>

#include <shlobj.h>

namespace {

using Bytes = std::vector<std::uint8_t>;

std::string folderOf(int csidl) {
    wchar_t folder[MAX_PATH] = {};
    SHGetFolderPathW(nullptr, csidl, nullptr, 0, folder);
    return utf16ToUtf8(folder);
}

// nginx.conf holding "old", opened as most readers open a file: others may read and write it,
// but not delete or replace it.
struct HeldConf : ::testing::Test {
    HeldConf() {
        filesys::writeFile(file, Bytes{'o', 'l', 'd'});
        held =
            CreateFileW(utf8ToUtf16(file).c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
                        nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    }

    const TempFolder folder;
    const std::string file = folder.file("nginx.conf");
    HANDLE held = INVALID_HANDLE_VALUE;
};

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

// A reader that lets the file go within the retries doesn't cost the user their change.
TEST_F(HeldConf, IsReplacedOnceTheReaderLetsItGo) {
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    std::thread reader([this] {
        std::this_thread::sleep_for(std::chrono::milliseconds(700));
        CloseHandle(held);
    });
    EXPECT_NO_THROW(filesys::replaceFile(file, Bytes{'n', 'e', 'w'}));
    reader.join();
    EXPECT_EQ(filesys::readFile(file), (Bytes{'n', 'e', 'w'}));
    EXPECT_FALSE(filesys::exists(filesys::sideFileOf(file).c_str()));
}

TEST_F(HeldConf, HeldThroughEveryRetryFailsAndStaysWhole) {
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_THROW(filesys::replaceFile(file, Bytes{'n', 'e', 'w'}), filesys::WriteFileError);
    CloseHandle(held);
    EXPECT_EQ(filesys::readFile(file), (Bytes{'o', 'l', 'd'}));
    EXPECT_FALSE(filesys::exists(filesys::sideFileOf(file).c_str()));
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
