#include "core/display_version.h"

#include "foundation/registry.h"

const std::string& hostUninstallKey() {
    static const std::string key =
        std::string("Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\") + "CorvaniteHost";
    return key;
}

void syncDisplayVersion(const std::string& uninstallKey,
                        const std::function<std::string()>& libraryVersion) {
    const auto listed = readRegistryText(RegistryHive::CurrentUser, uninstallKey, "DisplayVersion");
    if (!listed) {
        return;
    }
    // A library that doesn't answer gives "-", which is written as it stands.
    const std::string version = libraryVersion();
    if (*listed != version) {
        writeRegistryText(RegistryHive::CurrentUser, uninstallKey, "DisplayVersion", version);
    }
}
