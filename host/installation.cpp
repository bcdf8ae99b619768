#include "host/host_facts.h"

#include <algorithm>
#include <exception>
#include <vector>

#include "foundation/filesys.h"
#include "foundation/registry.h"
#include "host/host_files.h"

const std::string ServiceDomain = CORVANITE_SERVICE_DOMAIN;

namespace {

constexpr std::string_view productKey = "Software\\Ormal Co\\CorvaniteHost";
constexpr std::string_view pathValue = "Path";
constexpr const char* vendorFolder = "Ormal Co";
constexpr const char* productFolder = "CorvaniteHost";

// The first call comes on the interface thread while the program starts, before any other thread
// exists: no lock.
std::string& cachedPath() {
    static std::string path;
    return path;
}

std::string fallbackPath() {
    return filesys::localAppDataFolder() + "/" + vendorFolder + "/" + productFolder;
}

bool contains(const std::vector<std::string>& names, const char* name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

} // namespace

std::string installationPath() {
    std::string& path = cachedPath();
    if (path.empty()) {
        const std::string fallback = fallbackPath();
        path = installationFolderOf(
            readRegistryText(RegistryHive::CurrentUser, productKey, pathValue).value_or(fallback));
    }
    return path;
}

std::string installationFolderOf(std::string path) {
    const auto isSeparator = [](char letter) { return letter == '\\' || letter == '/'; };
    const auto isRoot = [&path] {
        return path.size() == 1 || (path.size() == 3 && path[1] == ':');
    };
    while (!path.empty() && isSeparator(path.back()) && !isRoot()) {
        path.pop_back();
    }
    return path;
}

std::string installPathOf(std::string_view name) {
    return installationPath() + "/" + std::string(name);
}

bool checkInstallation() {
    try {
        const std::string root = installationPath();
        return contains(filesys::listDirectory(root, true, false, false), hostFileName) &&
               contains(filesys::listDirectory(installPathOf("conf"), true, false, false),
                        "nginx.conf") &&
               contains(filesys::listDirectory(root, false, true, false), "logs");
    } catch (const std::exception&) {
        return false;
    }
}
