// The registry on POSIX systems is a folder tree:
//
//   <root>/<hive>/<key path, each \ turned into />/<value name>
//
// <root> is $CORVANITE_REGISTRY, else $XDG_CONFIG_HOME/corvanite/registry, else
// ~/.config/corvanite/registry. <hive> is HKEY_CURRENT_USER or HKEY_LOCAL_MACHINE. A folder is a
// key; a file in it is a value and holds the value's raw data, without a type. The unnamed
// (default) value is the file "@". Names are compared with their case, unlike on Windows.
// As on Windows, a write never creates a key: the folder must be there already.
//
// To give the program an installation, for example:
//   mkdir -p "$root/HKEY_CURRENT_USER/Software/Ormal Co/CorvaniteHost"
//   printf %s /opt/corvanite > "$root/HKEY_CURRENT_USER/Software/Ormal Co/CorvaniteHost/Path"

#include "foundation/registry.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <sys/stat.h>

namespace registry::native {

namespace {

std::string environmentFolder(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? std::string(value) : std::string();
}

std::string registryRoot() {
    if (std::string root = environmentFolder("CORVANITE_REGISTRY"); !root.empty()) {
        return root;
    }
    if (std::string config = environmentFolder("XDG_CONFIG_HOME"); !config.empty()) {
        return config + "/corvanite/registry";
    }
    return environmentFolder("HOME") + "/.config/corvanite/registry";
}

const char* hiveName(RegistryHive hive) {
    return hive == RegistryHive::LocalMachine ? "HKEY_LOCAL_MACHINE" : "HKEY_CURRENT_USER";
}

std::string keyFolder(RegistryHive hive, const std::string& keyPath) {
    std::string path = keyPath;
    std::replace(path.begin(), path.end(), '\\', '/');
    return registryRoot() + "/" + hiveName(hive) + "/" + path;
}

bool isKind(const std::string& path, mode_t kind) {
    struct stat status {};
    return stat(path.c_str(), &status) == 0 && (status.st_mode & S_IFMT) == kind;
}

// The file of a value, or nothing when the name would reach outside its key.
std::optional<std::string> valueFile(const std::string& folder, std::string_view valueName) {
    if (valueName.find('/') != std::string_view::npos) {
        return std::nullopt;
    }
    return folder + "/" + (valueName.empty() ? std::string("@") : std::string(valueName));
}

} // namespace

std::optional<std::vector<std::uint8_t>> readValue(RegistryHive hive, const std::string& keyPath,
                                                   const char* valueName) {
    const std::string folder = keyFolder(hive, keyPath);
    const auto file = valueFile(folder, valueName);
    if (!isKind(folder, S_IFDIR) || !file || !isKind(*file, S_IFREG)) {
        return std::nullopt;
    }
    std::ifstream stream(*file, std::ios::in | std::ios::binary);
    if (!stream) {
        return std::nullopt;
    }
    std::vector<std::uint8_t> data{std::istreambuf_iterator<char>(stream),
                                   std::istreambuf_iterator<char>()};
    if (stream.bad()) {
        return std::nullopt;
    }
    return data;
}

// The stand-in keeps a value's bytes as the narrow view of a registry in code page 1251 shows them.
std::optional<std::string> readTextValue(RegistryHive hive, const std::string& keyPath,
                                         const std::string& valueName) {
    const auto bytes = readValue(hive, keyPath, valueName.c_str());
    if (!bytes) {
        return std::nullopt;
    }
    return textOfBytes(*bytes);
}

bool writeTextValue(RegistryHive hive, const std::string& keyPath, const std::string& valueName,
                    const std::string& cp1251) {
    const std::string folder = keyFolder(hive, keyPath);
    const auto file = valueFile(folder, valueName);
    if (!isKind(folder, S_IFDIR) || !file || isKind(*file, S_IFDIR)) {
        return false;
    }
    std::ofstream stream(*file, std::ios::out | std::ios::trunc | std::ios::binary);
    stream.write(cp1251.data(), static_cast<std::streamsize>(cp1251.size()));
    stream.close();
    return !stream.fail();
}

} // namespace registry::native
