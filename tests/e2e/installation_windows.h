#pragma once

#include <windows.h>

#include <chrono>
#include <optional>
#include <string>
#include <vector>

#include "tests/e2e/ui_driver_windows.h"
#include "tests/support/foundation/settings_file_guard.h"
#include "tests/support/host/model_system.h"

// A Corvanite installation of a test's own: a folder with the server and addon doubles, the layout
// file, "conf/nginx.conf", "logs" and "tmp", named by the registry's "Path". The registry values
// and the user's settings file that a test may change are put back, and every process started from
// the folder is ended, when the object goes.
namespace e2e {

using namespace std::chrono_literals;

// The Windows form of a path of the build machine ("/a/b" is "Z:\a\b").
std::wstring windowsPathOf(const std::string& unixPath);

// Ends the process and every process below it.
void endProcessTree(DWORD root);

// One registry value under HKEY_CURRENT_USER, kept as it was and restored at the end.
class SavedRegistryValue {
public:
    SavedRegistryValue(std::wstring key, std::wstring name);
    ~SavedRegistryValue();
    SavedRegistryValue(const SavedRegistryValue&) = delete;
    SavedRegistryValue& operator=(const SavedRegistryValue&) = delete;

    std::optional<std::wstring> read() const;
    // Creates the key when needed; an empty value removes the value.
    void write(const std::optional<std::wstring>& value) const;

private:
    std::wstring key_;
    std::wstring name_;
    std::optional<std::wstring> original_;
};

// How the server double is linked. The real server is a console program, which the system gives a
// console host (conhost.exe) as its first child; the windowless build has no such child.
enum class ServerBuild { Console, Windowless };

// The name a test shows for a server build.
std::string serverBuildName(ServerBuild build);

// Makes the user's profile folder and its local application data folder when they aren't there:
// a test run as a user of a name of its own (Wine takes the user's name from USER) starts without
// them, and the program's settings file lies there.
struct UserProfileMade {
    UserProfileMade();
};

class Installation {
    UserProfileMade profile_;
    // Held for the installation's whole life, taken before anything else and given back last.
    // Its servers must not be killed by the host tests' stop test, which kills every server of the
    // user while holding the server lock alone; and the product's registry values, which the
    // installation and its program change, are shared by every test process of the prefix.
    HostModelServerLock serverLock_{false};
    HostModelRegistryLock registryLock_;
    // The user's settings file, which the program changes, is shared with the unit tests.
    SettingsFileGuard settings_;

public:
    // The folder is a fresh one of the temporary folder, or, with a name, a folder of that name
    // inside it.
    explicit Installation(ServerBuild server = ServerBuild::Console,
                          const std::wstring& folderName = L"");
    ~Installation();
    Installation(const Installation&) = delete;
    Installation& operator=(const Installation&) = delete;

    const std::wstring& folder() const { return folder_; }
    // The folder's short (8.3) form, from which the program starts the server when the system's
    // code page can't write the folder's name.
    const std::wstring& shortFolder() const { return shortFolder_; }
    std::wstring pathOf(const std::wstring& relative) const;
    // The port that the server double listens on, from the "listen" line of nginx.conf.
    int port() const { return port_; }
    // nginx.conf's listen line names the port alone, every interface as nginx reads it; this
    // makes it name loopback ("listen 127.0.0.1:N"), which gives the server an address to show.
    void listenOnLoopback() const;
    // Makes the registry's "Path" name another folder than this one, until the installation ends.
    void pointPathAt(const std::wstring& folder) const { path_.write(folder); }

    std::string readFile(const std::wstring& relative) const;
    // Whether nginx.conf sets the error log's level to that word ("debug", "error" …).
    bool confHoldsLevel(const std::string& level) const;
    void writeFile(const std::wstring& relative, const std::string& content) const;
    void removeFile(const std::wstring& relative) const;

    // The user's settings file in the profile folder.
    std::wstring settingsPath() const;
    std::optional<std::string> readSettings() const;

    // Processes whose program lies in the installation folder, by its long or its short name (the
    // server's master and worker).
    std::vector<DWORD> serverProcesses() const;
    bool serverRuns() const { return !serverProcesses().empty(); }
    bool waitForServer(bool running, std::chrono::milliseconds timeout = ui::patience) const;
    // Kills the server from outside, as a crash would.
    void killServer() const;

    SavedRegistryValue language;
    SavedRegistryValue displayVersion;

private:
    std::wstring root_;
    std::wstring folder_;
    std::wstring shortFolder_;
    int port_ = 0;
    SavedRegistryValue path_;
};

// The real program, started on the installation with a command line, ended at the latest when
// the object goes.
class ProgramRun {
public:
    explicit ProgramRun(const std::wstring& commandLine = L"");
    // A copy of the program at another place (a Windows path), as a user may have laid it.
    ProgramRun(const std::wstring& commandLine, const std::wstring& program);
    ~ProgramRun();
    ProgramRun(const ProgramRun&) = delete;
    ProgramRun& operator=(const ProgramRun&) = delete;

    DWORD processId() const { return info_.dwProcessId; }
    // The exit code once the process has ended within the time.
    std::optional<DWORD> waitForExit(std::chrono::milliseconds timeout = ui::patience) const;
    bool running() const;
    // The main window, once it exists.
    HWND window(std::chrono::milliseconds timeout = ui::patience) const;

private:
    PROCESS_INFORMATION info_{};
};

// The window class that the layout names, by which the program's window is found.
inline constexpr const wchar_t* windowClass = L"CVHControlPanel";

} // namespace e2e
