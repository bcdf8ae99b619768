#pragma once

#include <cstdint>
#include <fstream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

// The program's one door to files and folders. Paths are UTF-8; slashes and backslashes are both
// separators. Failures are the filesys:: exceptions of foundation/exceptions.h, except where an
// operation says that it reports by its result.
namespace filesys {

// The text behind the last slash or backslash; the whole path when there is none.
std::string fileNameOf(std::string_view path);
// The text before the last slash or backslash; the whole path when there is none, so that the
// folder of a bare name is the name itself.
std::string directoryOf(std::string_view path);
// base, "/", name: always a forward slash, even behind a base that ends in a separator.
std::string joinPath(std::string_view base, const char* name);

// Whether the file opens for reading: a folder or an unreadable file is never found. The name
// keeps every letter, whatever the system's code page.
bool exists(const char* path);

// The bare names in a folder, without "." and "..", in the system's order. A missing folder is an
// empty list when missingIsEmpty; any other failure is ReadFolderError.
std::vector<std::string> listDirectory(std::string_view path, bool files, bool folders,
                                       bool missingIsEmpty);

// The whole file. A limit of 0 means no limit; a file beyond a limit fails like a file that
// can't be read: ReadFileError in every case.
std::vector<std::uint8_t> readFile(std::string_view path, std::uint32_t minSize = 0,
                                   std::uint32_t maxSize = 0);

// Replaces the file's content in place, creating a missing file in an existing folder. The stream
// is checked after the close, so a full disk fails like a file that can't be opened:
// WriteFileError in every case.
void writeFile(std::string_view path, const std::vector<std::uint8_t>& bytes);
void writeFile(std::string_view base, const char* name, const std::vector<std::uint8_t>& bytes);
template <typename Iterator> void writeFile(std::string_view path, Iterator begin, Iterator end) {
    writeFile(path, std::vector<std::uint8_t>(begin, end));
}

// Replaces the file whole: the bytes go to its side file in the same folder, are flushed to the
// disk, and the side file then takes the file's place in one move. The old file stays whole until
// the new one is; a failure at any step is WriteFileError and leaves no side file behind. A file
// held open by another program is tried again for a second and a half before the move fails.
void replaceFile(std::string_view path, const std::vector<std::uint8_t>& bytes);
// The two halves of replaceFile. The side file is the path with ".new" behind it: a side file
// left by a process that ended between the halves is overwritten by the next replacement.
std::string sideFileOf(std::string_view path);
void writeSideFile(std::string_view path, const std::vector<std::uint8_t>& bytes);
void moveSideFileOver(std::string_view path);

// The file opened for binary reading by its UTF-8 name, every letter kept, shared with everyone.
// A file that can't be opened, a folder among them, gives a failed stream, which a parser then
// meets as empty input.
std::ifstream openForReading(std::string_view path);

// True when the file is gone, also when it was never there; false for any other failure.
bool deleteFile(std::string_view path);

// A folder of the system by its CSIDL number. Throws std::runtime_error for an unknown one.
std::string specialFolder(int csidl);
std::string localAppDataFolder();
// The Program Files folder as the shipped 32-bit program sees it, which decides the bitness in
// the report and where Opera is looked for: a 64-bit build gets the x86 folder too.
std::string programFilesFolder();
std::string profileFolder();

// The path's short (8.3) form, as the system keeps it beside the long names: every part that has a
// short name of its own written with it. Nothing when the path doesn't exist or the system keeps
// no short names; a system without them (POSIX) never has one.
std::optional<std::string> shortPathOf(std::string_view path);

// A path in the form the system writes it: with backslashes on Windows, as it stands elsewhere.
std::string systemPathForm(std::string path);

// The platform bodies under the operations above; callers use those.
namespace native {

// The outcome of listing a folder, in the terms that decide between an empty list and a failure:
// only a missing folder is pathNotFound.
enum class ListOutcome { listed, pathNotFound, failed };

struct FolderEntry {
    std::string name;
    bool isFolder;
};

ListOutcome listFolder(std::string_view path, std::vector<FolderEntry>& entries);
// Open a file for binary reading or writing by its UTF-8 path, sharing it with everyone. A folder
// never opens.
bool openInput(std::ifstream& stream, std::string_view path);
bool openOutput(std::ofstream& stream, std::string_view path);
// Asks the system to put a written file's content on the disk.
bool flushToDisk(std::string_view path);
// Moves a file over another in the same folder, replacing it in one step.
bool moveOver(std::string_view from, std::string_view to);
// Whether the file opens for reading under its UTF-8 name, every letter kept.
bool opensFile(std::string_view path);
// True when the file was removed or was not there; a missing folder is not "not there".
bool removeFile(std::string_view path);
// The folder, or nothing when the system doesn't know the number.
std::optional<std::string> systemFolder(int csidl);

} // namespace native

} // namespace filesys
