#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "foundation/language.h"

// What everybody needs to know about the installed host: where it lies, whether its process is
// alive by its pid file, the user's language, and the versions of the host file and the addon
// library. Only the installation path is kept, and the master process that the pid file names
// (host/server_master.h); every other fact is read anew on each call.

// The public host name under which web pages reach the signing server on this computer. It is a
// build-time setting of the product (the CMake cache variable ServiceDomain).
extern const std::string ServiceDomain;

// The installation folder. Taken from the registry's "Path" at the first call, which comes on the
// interface thread while the program starts, and kept for the rest of the run; without that value
// it is the product's folder "Ormal Co/CorvaniteHost" below the local application data folder.
std::string installationPath();

// The registry's "Path" as the installation folder: without the separators it may end in, so that
// every path into it has one "/" between folder and name. A root ("C:\\" or "/") keeps its own.
std::string installationFolderOf(std::string path);

// A path inside the installation: the installation path, "/", and the relative name.
std::string installPathOf(std::string_view name);

// The folder from which the server is started, and in which it looks for its files. The server
// (an nginx build) takes its folder as 8-bit text of the system's code page and opens its files
// below it through the 8-bit calls: the installation folder serves when its name survives that
// code page, and otherwise its short (8.3) form, whose letters are plain. Nothing when neither
// does, as on a drive that keeps no short names.
std::optional<std::string> serverFolder();

// The same choice for a folder, with the two questions to the system given: whether a path
// survives its code page, and the path's short form.
std::optional<std::string>
serverFolderOf(const std::string& folder, const std::function<bool(const std::string&)>& writable,
               const std::function<std::optional<std::string>(const std::string&)>& shortPath);

// The words for a folder that the server can't be started from, in the language in force: the
// folder with all its letters and the code page's number. UTF-16, since the folder's letters may
// lie outside code page 1251.
std::wstring folderNotWritableText(const std::string& folder, unsigned codePage);

// True when the server's executable, its "conf/nginx.conf" and its "logs" folder are in place.
// Never throws: a folder that can't be listed counts as missing.
bool checkInstallation();

// The pid that the server wrote to "nginx.pid": its master process. Raises
// filesys::ReadFileError for a missing file, std::invalid_argument "invalid stoul argument" for a
// text without digits, std::out_of_range "stoul argument out of range" for too large a number.
std::uint32_t readServerPid();

// True when the pid file names a living process, whatever its name. Never raises. Answered from
// the held master while the pid file is unchanged and that process runs (serverMaster).
bool isServerRunning();

// The user's language as the registry's "Language" holds it. A missing value is Russian; an
// unknown code, or any failure on the way, is Ukrainian. Never raises. The catalogues' own reader
// of the product's "Language" value does exactly this, so the host asks it.
inline Language readLanguage() {
    return startupLanguage();
}

// The version of the server's executable, four numbers joined by "."; "0.0.0.0" when the file is
// missing or tells no version.
std::string fileVersionText();

// What stands behind the first ".": "1.2.3.4" gives "2.3.4". "-" for an empty text or one
// without ".".
std::string versionTail(const std::string& version);

// The tail without its last number: "1.2.3.4" gives "2.3". "-" when the tail is "-".
std::string versionMiddle(const std::string& version);

// The version that the addon library of the installation reports for itself; "-" when it can't
// be loaded or gives no usable answer. Loads and unloads the library on every call; never raises.
std::string libraryVersion();
