#include "tests/support/host/model_installation.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>

#include "foundation/registry.h"
#include "host/host_facts.h"
#include "tests/support/foundation/temp_folder.h"
#include "tests/support/host/model_system.h"

namespace {

std::string utf8Of(const std::filesystem::path& path) {
    const std::u8string text = path.generic_u8string();
    return std::string(text.begin(), text.end());
}

// Removed with everything in it when the test process ends.
class ProcessFolder {
public:
    ProcessFolder() {
        const auto stamp = std::chrono::steady_clock::now().time_since_epoch().count();
        native = std::filesystem::temp_directory_path() /
                 ("corvanite-hostmodel-" + std::to_string(hostModelCurrentProcessId()) + "-" +
                  std::to_string(stamp));
        std::filesystem::create_directories(native / "install");
        path = utf8Of(native);
    }
    ~ProcessFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(native, ignored);
    }
    std::filesystem::path native;
    std::string path;
};

ProcessFolder& processFolder() {
    static ProcessFolder folder;
    return folder;
}

std::string installFolder() {
    return processFolder().path + "/install";
}

// POSIX bodies of the registry and the special folders follow these variables; under Windows
// they mean nothing to the program.
void pointEnvironmentHere() {
    static bool done = false;
    if (done) {
        return;
    }
    done = true;
    const std::string root = processFolder().path;
    for (const char* folder : {"registry", "data", "home"}) {
        std::filesystem::create_directories(processFolder().native / folder);
    }
    hostModelSetEnvironment("CORVANITE_REGISTRY", root + "/registry");
    hostModelSetEnvironment("XDG_DATA_HOME", root + "/data");
    hostModelSetEnvironment("HOME", root + "/home");
}

// Names the process's installation in the registry and lets the program read it once, under the
// lock that keeps other test processes from changing the value meanwhile.
bool registrationDone = false;

void registerInstallation() {
    static const bool registered = [] {
        registrationDone = true;
        pointEnvironmentHere();
        const HostModelRegistryLock lock;
        hostModelCreateProductKey();
        writeRegistryText(RegistryHive::CurrentUser, "Software\\Ormal Co\\CorvaniteHost", "Path",
                          installFolder());
        return installationPath() == installFolder();
    }();
    if (!registered) {
        throw std::runtime_error("the installation path was read before the test named it");
    }
}

std::filesystem::path toolPath(const std::string& name) {
    return nativePath(std::string(CORVANITE_BUILD_DIR) + "/tools/" + name);
}

} // namespace

const std::string& hostModelTestRoot() {
    return processFolder().path;
}

void hostModelUseTestEnvironment() {
    pointEnvironmentHere();
}

bool hostModelInstallationRegistered() {
    return registrationDone;
}

HostModelInstallation::HostModelInstallation() {
    registerInstallation();
    empty();
}

HostModelInstallation::~HostModelInstallation() {
    empty();
}

void HostModelInstallation::empty() const {
    const std::filesystem::path folder = nativePath(installFolder());
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(folder, ignored)) {
        std::filesystem::remove_all(entry.path(), ignored);
    }
}

const std::string& HostModelInstallation::path() const {
    static const std::string folder = installFolder();
    return folder;
}

std::string HostModelInstallation::file(const std::string& name) const {
    return path() + "/" + name;
}

void HostModelInstallation::writeText(const std::string& name, const std::string& text) const {
    const std::filesystem::path target = nativePath(file(name));
    std::filesystem::create_directories(target.parent_path());
    std::ofstream(target, std::ios::binary) << text;
}

std::string HostModelInstallation::readText(const std::string& name) const {
    std::ifstream stream(nativePath(file(name)), std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>());
}

bool HostModelInstallation::has(const std::string& name) const {
    std::error_code ignored;
    return std::filesystem::exists(nativePath(file(name)), ignored);
}

void HostModelInstallation::makeFolder(const std::string& name) const {
    std::filesystem::create_directories(nativePath(file(name)));
}

void HostModelInstallation::remove(const std::string& name) const {
    std::error_code ignored;
    std::filesystem::remove_all(nativePath(file(name)), ignored);
}

void HostModelInstallation::copyTool(const std::string& toolName, const std::string& name) const {
    std::filesystem::copy_file(toolPath(toolName), nativePath(file(name)),
                               std::filesystem::copy_options::overwrite_existing);
}

std::string HostModelInstallation::nginxConf(std::uint16_t port, const std::string& level,
                                             const std::string& address) {
    return "worker_processes  1;\r\n"
           "\r\n"
           "error_log logs/error.log " +
           level +
           ";\r\n"
           "\r\n"
           "http {\r\n"
           "    server {\r\n"
           "        listen       " +
           (address.empty() ? "" : address + ":") + std::to_string(port) +
           " ssl;\r\n"
           "        server_name  localhost;\r\n"
           "    }\r\n"
           "}\r\n";
}

void HostModelInstallation::makeServerInstallation(std::uint16_t port, const std::string& level,
                                                   const std::string& address) const {
    copyTool("CorvaniteHost.exe", "CorvaniteHost.exe");
    makeFolder("logs");
    writeText("conf/nginx.conf", nginxConf(port, level, address));
}

void HostModelInstallation::addAddonLibrary() const {
    copyTool("Corvanite.dll", "Corvanite.dll");
}
