#include "foundation/filesys.h"

#include <gtest/gtest.h>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"
#include "tests/support/foundation/temp_folder.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

namespace {

using Bytes = std::vector<std::uint8_t>;
using Names = std::vector<std::string>;

const std::string cyrillicName = "\xD0\x9F\xD1\x80\xD0\xB8\xD0\xB2\xD0\xB5\xD1\x82"; // Привет
const std::string chineseName = "\xE4\xB8\xAD\xE6\x96\x87";                          // 中文

Bytes bytesOf(std::string_view text) {
    return Bytes(text.begin(), text.end());
}

void makeFile(const std::string& path, std::string_view content = "") {
    std::ofstream stream(nativePath(path), std::ios::binary);
    stream << content;
}

void makeFolder(const std::string& path) {
    std::filesystem::create_directory(nativePath(path));
}

bool isThere(const std::string& path) {
    return std::filesystem::exists(nativePath(path));
}

Names sorted(Names names) {
    std::sort(names.begin(), names.end());
    return names;
}

} // namespace

TEST(FileSystem, FileNameOfMixedSeparatorsTakesTheLastOfEitherKind) {
    EXPECT_EQ(filesys::fileNameOf("C:\\a/b\\c.txt"), "c.txt");
    EXPECT_EQ(filesys::fileNameOf("C:/a\\b/c.txt"), "c.txt");
    EXPECT_EQ(filesys::fileNameOf("bare.txt"), "bare.txt");
    EXPECT_EQ(filesys::fileNameOf("C:/logs/"), "");
}

TEST(FileSystem, DirectoryOfBareNameIsTheName) {
    EXPECT_EQ(filesys::directoryOf("nginx.exe"), "nginx.exe");
    EXPECT_EQ(filesys::directoryOf("C:/a\\b/c.txt"), "C:/a\\b");
    EXPECT_EQ(filesys::directoryOf("C:\\a/b\\c.txt"), "C:\\a/b");
    EXPECT_EQ(filesys::directoryOf("/root.txt"), "");
}

TEST(FileSystem, JoinPathAfterTrailingSlashGivesDoubleSlashThatStillOpens) {
    const TempFolder folder;
    const std::string path = filesys::joinPath(folder.path() + "/", "a.txt");
    EXPECT_EQ(path, folder.path() + "//a.txt");
    filesys::writeFile(path, bytesOf("abc"));
    EXPECT_EQ(filesys::readFile(folder.file("a.txt"), 0, 0), bytesOf("abc"));
    EXPECT_EQ(filesys::readFile(path, 0, 0), bytesOf("abc"));
}

TEST(FileSystem, JoinPathUsesForwardSlashAfterBackslashBase) {
    EXPECT_EQ(filesys::joinPath("C:\\Program Files", "Opera"), "C:\\Program Files/Opera");
}

TEST(FileSystem, ListDirectoryOfEmptyFolderIsEmpty) {
    const TempFolder folder;
    EXPECT_TRUE(filesys::listDirectory(folder.path(), true, true, false).empty());
    EXPECT_TRUE(filesys::listDirectory(folder.path(), true, true, true).empty());
}

TEST(FileSystem, ListDirectoryOfFilePathFailsWithOrWithoutMissingIsEmpty) {
    const TempFolder folder;
    const std::string file = folder.file("plain.txt");
    makeFile(file, "x");
    EXPECT_THROW(filesys::listDirectory(file, true, true, false), filesys::ReadFolderError);
    EXPECT_THROW(filesys::listDirectory(file, true, true, true), filesys::ReadFolderError);
}

TEST(FileSystem, ListDirectoryWithNeitherFilesNorFoldersIsEmptyButFailsOnMissingFolder) {
    const TempFolder folder;
    makeFile(folder.file("a.txt"));
    makeFolder(folder.file("sub"));
    EXPECT_TRUE(filesys::listDirectory(folder.path(), false, false, false).empty());
    EXPECT_THROW(filesys::listDirectory(folder.file("missing"), false, false, false),
                 filesys::ReadFolderError);
}

TEST(FileSystem, ListDirectoryOfMissingFolderIsEmptyOnlyWhenAsked) {
    const TempFolder folder;
    EXPECT_TRUE(filesys::listDirectory(folder.file("missing"), true, true, true).empty());
    EXPECT_TRUE(filesys::listDirectory(folder.file("missing/deeper"), true, true, true).empty());
    try {
        filesys::listDirectory(folder.file("missing"), true, true, false);
        FAIL() << "a missing folder was listed";
    } catch (const filesys::ReadFolderError& error) {
        EXPECT_EQ(error.path(), folder.file("missing"));
    }
}

TEST(FileSystem, ListDirectoryBelowAFileCountsAsMissingFolder) {
    const TempFolder folder;
    makeFile(folder.file("plain.txt"));
    EXPECT_TRUE(filesys::listDirectory(folder.file("plain.txt/sub"), true, true, true).empty());
}

TEST(FileSystem, ListDirectoryTakesFilesOrFoldersAsAskedWithBareNames) {
    const TempFolder folder;
    makeFile(folder.file("a.txt"));
    makeFile(folder.file(".hidden"));
    makeFolder(folder.file("sub"));
    makeFile(folder.file("sub/inner.txt"));
    EXPECT_EQ(sorted(filesys::listDirectory(folder.path(), true, false, false)),
              (Names{".hidden", "a.txt"}));
    EXPECT_EQ(filesys::listDirectory(folder.path(), false, true, false), (Names{"sub"}));
    EXPECT_EQ(sorted(filesys::listDirectory(folder.path(), true, true, false)),
              (Names{".hidden", "a.txt", "sub"}));
}

TEST(FileSystem, ReadFileOfEmptyFileIsEmptyWhateverMaxSize) {
    const TempFolder folder;
    const std::string file = folder.file("empty.txt");
    makeFile(file);
    EXPECT_TRUE(filesys::readFile(file, 0, 0).empty());
    EXPECT_TRUE(filesys::readFile(file, 0, 1).empty());
    EXPECT_TRUE(filesys::readFile(file, 0, 104857600).empty());
}

TEST(FileSystem, ReadFileOfEmptyFileWithMinSizeOneFails) {
    const TempFolder folder;
    const std::string file = folder.file("empty.txt");
    makeFile(file);
    EXPECT_THROW(filesys::readFile(file, 1, 0), filesys::ReadFileError);
}

TEST(FileSystem, ReadFileBeyondItsLimitsFailsAsAnUnreadableFile) {
    const TempFolder folder;
    const std::string file = folder.file("four.txt");
    makeFile(file, "1234");
    EXPECT_EQ(filesys::readFile(file, 4, 4), bytesOf("1234"));
    try {
        filesys::readFile(file, 0, 3);
        FAIL() << "a file over its limit was read";
    } catch (const filesys::ReadFileError& error) {
        EXPECT_EQ(std::string(error.what()), std::string(filesys::ReadFileError(file).what()));
    }
    EXPECT_THROW(filesys::readFile(file, 5, 0), filesys::ReadFileError);
}

TEST(FileSystem, ReadFileOfMissingFileOrFolderFails) {
    const TempFolder folder;
    EXPECT_THROW(filesys::readFile(folder.file("missing.txt"), 0, 0), filesys::ReadFileError);
    EXPECT_THROW(filesys::readFile(folder.path(), 0, 0), filesys::ReadFileError);
}

TEST(FileSystem, ReadFileKeepsEveryByte) {
    const TempFolder folder;
    const std::string file = folder.file("bytes.bin");
    const std::string content("a\0\r\n\xFF", 5);
    makeFile(file, content);
    EXPECT_EQ(filesys::readFile(file), bytesOf(content));
}

TEST(FileSystem, WriteFileReplacesContentAndCreatesMissingFile) {
    const TempFolder folder;
    const std::string file = folder.file("out.txt");
    filesys::writeFile(file, bytesOf("a longer first text"));
    filesys::writeFile(file, bytesOf("short"));
    EXPECT_EQ(filesys::readFile(file), bytesOf("short"));
    filesys::writeFile(file, Bytes{});
    EXPECT_TRUE(filesys::readFile(file).empty());
}

TEST(FileSystem, WriteFileConvenienceFormsWriteTheSameBytes) {
    const TempFolder folder;
    const std::string text = "key=value\n";
    filesys::writeFile(folder.file("range.txt"), text.begin(), text.end());
    filesys::writeFile(folder.path(), "joined.txt", bytesOf(text));
    EXPECT_EQ(filesys::readFile(folder.file("range.txt")), bytesOf(text));
    EXPECT_EQ(filesys::readFile(folder.file("joined.txt")), bytesOf(text));
}

TEST(FileSystem, WriteFileIntoMissingFolderFails) {
    const TempFolder folder;
    const std::string file = folder.file("missing/out.txt");
    try {
        filesys::writeFile(file, bytesOf("x"));
        FAIL() << "a file was written into a missing folder";
    } catch (const filesys::WriteFileError& error) {
        EXPECT_EQ(error.path(), file);
    }
    EXPECT_THROW(filesys::writeFile(folder.path(), bytesOf("x")), filesys::WriteFileError);
}

TEST(FileSystem, ReplaceFileWritesExactBytesAndLeavesNoSideFile) {
    const TempFolder folder;
    const std::string file = folder.file("nginx.conf");
    filesys::replaceFile(file, bytesOf("first, longer content\r\n"));
    filesys::replaceFile(file, bytesOf("second\n"));
    EXPECT_EQ(filesys::readFile(file), bytesOf("second\n"));
    EXPECT_FALSE(isThere(filesys::sideFileOf(file)));
    EXPECT_EQ(sorted(filesys::listDirectory(folder.path(), true, true, false)),
              Names{"nginx.conf"});
}

TEST(FileSystem, ReplaceFileOverwritesASideFileLeftBehind) {
    const TempFolder folder;
    const std::string file = folder.file("settings.properties");
    makeFile(file, "old");
    makeFile(filesys::sideFileOf(file), "a half-written leftover that is longer");
    filesys::replaceFile(file, bytesOf("new"));
    EXPECT_EQ(filesys::readFile(file), bytesOf("new"));
    EXPECT_FALSE(isThere(filesys::sideFileOf(file)));
}

TEST(FileSystem, ReplaceFileIntoMissingFolderFailsWithThePath) {
    const TempFolder folder;
    const std::string file = folder.file("missing/out.txt");
    try {
        filesys::replaceFile(file, bytesOf("x"));
        FAIL() << "a file was written into a missing folder";
    } catch (const filesys::WriteFileError& error) {
        EXPECT_EQ(error.path(), file);
    }
}

// A folder in the file's place can't be replaced: the move fails, the folder stays, and the side
// file is cleared away.
TEST(FileSystem, ReplaceFileWhoseMoveFailsKeepsTheOldAndClearsTheSideFile) {
    const TempFolder folder;
    const std::string file = folder.file("conf");
    makeFolder(file);
    makeFile(file + "/inside.txt", "kept");
    EXPECT_THROW(filesys::replaceFile(file, bytesOf("x")), filesys::WriteFileError);
    EXPECT_EQ(filesys::readFile(file + "/inside.txt"), bytesOf("kept"));
    EXPECT_FALSE(isThere(filesys::sideFileOf(file)));
}

TEST(FileSystem, SideFileWrittenButNotMovedLeavesTheOldFileWhole) {
    const TempFolder folder;
    const std::string file = folder.file("nginx.conf");
    makeFile(file, "error_log logs/error.log info;");
    filesys::writeSideFile(file, bytesOf("error_log logs/error.log debug;"));
    EXPECT_EQ(filesys::readFile(file), bytesOf("error_log logs/error.log info;"));
    filesys::moveSideFileOver(file);
    EXPECT_EQ(filesys::readFile(file), bytesOf("error_log logs/error.log debug;"));
}

TEST(FileSystem, DeleteFileOfMissingFileIsTrue) {
    const TempFolder folder;
    EXPECT_TRUE(filesys::deleteFile(folder.file("missing.txt")));
}

TEST(FileSystem, DeleteFileOfFolderIsFalse) {
    const TempFolder folder;
    makeFolder(folder.file("sub"));
    EXPECT_FALSE(filesys::deleteFile(folder.file("sub")));
    EXPECT_TRUE(isThere(folder.file("sub")));
}

TEST(FileSystem, DeleteFileRemovesFileButNotInMissingFolder) {
    const TempFolder folder;
    makeFile(folder.file("a.txt"), "x");
    EXPECT_TRUE(filesys::deleteFile(folder.file("a.txt")));
    EXPECT_FALSE(isThere(folder.file("a.txt")));
    EXPECT_FALSE(filesys::deleteFile(folder.file("missing/a.txt")));
}

TEST(FileSystem, ExistsOnlyForFilesThatOpen) {
    const TempFolder folder;
    makeFile(folder.file("a.txt"), "x");
    makeFolder(folder.file("sub"));
    EXPECT_TRUE(filesys::exists(folder.file("a.txt").c_str()));
    EXPECT_FALSE(filesys::exists(folder.file("sub").c_str()));
    EXPECT_FALSE(filesys::exists(folder.file("missing.txt").c_str()));
}

TEST(FileSystem, CyrillicPathWorksForReadFileWriteFileAndListDirectory) {
    const TempFolder folder;
    const std::string subFolder = folder.file(cyrillicName);
    makeFolder(subFolder);
    const std::string file = filesys::joinPath(subFolder, (cyrillicName + ".txt").c_str());
    filesys::writeFile(file, bytesOf(cyrillicName));
    EXPECT_EQ(filesys::readFile(file), bytesOf(cyrillicName));
    EXPECT_TRUE(isThere(file));
    EXPECT_EQ(filesys::listDirectory(folder.path(), false, true, false), (Names{cyrillicName}));
    EXPECT_EQ(filesys::listDirectory(subFolder, true, false, false),
              (Names{cyrillicName + ".txt"}));
    EXPECT_TRUE(filesys::deleteFile(file));
    EXPECT_FALSE(isThere(file));
}

TEST(FileSystem, ExistsFindsACyrillicNameWhateverTheSystemsCodePage) {
    const TempFolder folder;
    const std::string file = folder.file(cyrillicName + ".txt");
    makeFile(file, "x");
    EXPECT_TRUE(filesys::exists(file.c_str()));
}

TEST(FileSystem, ExistsFindsANameOutsideCodePage1251) {
    const TempFolder folder;
    for (const std::string& name : {chineseName, std::string("José Host")}) {
        const std::string file = folder.file(name + ".txt");
        makeFile(file, "x");
        EXPECT_TRUE(filesys::exists(file.c_str())) << name;
    }
}

TEST(FileSystem, SpecialFolderUnknownToTheSystemFails) {
    try {
        filesys::specialFolder(0x7777);
        FAIL() << "an unknown folder number gave a folder";
    } catch (const std::runtime_error& error) {
        EXPECT_EQ(std::string(error.what()), std::string(commonMessages.text("CV-0004")));
    }
}

TEST(FileSystem, ProfileFolderIsAFolder) {
    const std::string folder = filesys::profileFolder();
    EXPECT_TRUE(std::filesystem::is_directory(nativePath(folder))) << folder;
    EXPECT_FALSE(filesys::localAppDataFolder().empty());
    EXPECT_FALSE(filesys::programFilesFolder().empty());
}
