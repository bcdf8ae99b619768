#pragma once

#include <cstdint>
#include <string>

// The installation folder that the host model sees in a test. The program reads the installation
// path once per process, so all tests of a process share one folder, named by the registry's
// "Path"; each test starts with it empty and leaves it empty. On POSIX the registry, the local
// application data folder and the profile folder of the test process lie in a temporary folder
// of their own too.
class HostModelInstallation {
public:
    HostModelInstallation();
    ~HostModelInstallation();
    HostModelInstallation(const HostModelInstallation&) = delete;
    HostModelInstallation& operator=(const HostModelInstallation&) = delete;

    // UTF-8 with forward slashes, as installationPath() gives it.
    const std::string& path() const;
    std::string file(const std::string& name) const;

    void writeText(const std::string& name, const std::string& text) const;
    std::string readText(const std::string& name) const;
    bool has(const std::string& name) const;
    void makeFolder(const std::string& name) const;
    void remove(const std::string& name) const;

    // A file of the build tree's tools folder, copied in under its own name or another.
    void copyTool(const std::string& toolName, const std::string& name) const;

    // The server double as "CorvaniteHost.exe", its "logs" folder and a "conf/nginx.conf" whose
    // server listens on the port and logs at the level.
    // The listen line names the port alone (every interface, as nginx reads it) unless an
    // address is given ("127.0.0.1").
    void makeServerInstallation(std::uint16_t port, const std::string& level = "info",
                                const std::string& address = "") const;
    static std::string nginxConf(std::uint16_t port, const std::string& level,
                                 const std::string& address = "");

    // The addon library double as "Corvanite.dll".
    void addAddonLibrary() const;

private:
    void empty() const;
};

// The process-wide folder in which the tests' registry, data and profile folders lie.
const std::string& hostModelTestRoot();

// Points the POSIX registry, local application data and profile folders of this process into
// hostModelTestRoot(). Done by HostModelInstallation too; harmless to repeat.
void hostModelUseTestEnvironment();

// True once this process has named its installation: the program keeps the path it read then.
bool hostModelInstallationRegistered();
