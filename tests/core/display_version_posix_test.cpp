#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include "tests/support/foundation/temp_folder.h"

namespace {

// The registry of these tests: a folder of their own, which CORVANITE_REGISTRY points at.
const TempFolder& versionRegistry() {
    static const TempFolder root;
    setenv("CORVANITE_REGISTRY", root.path().c_str(), 1);
    return root;
}

std::filesystem::path keyFolder(const std::string& keyPath) {
    std::string path = keyPath;
    std::replace(path.begin(), path.end(), '\\', '/');
    return nativePath(versionRegistry().path() + "/HKEY_CURRENT_USER/" + path);
}

} // namespace

std::string makeVersionTestKey() {
    static int counter = 0;
    const std::string keyPath = "Software\\Corvanite Tests\\Uninstall " + std::to_string(++counter);
    std::filesystem::create_directories(keyFolder(keyPath));
    return keyPath;
}

void removeVersionTestKey(const std::string& keyPath) {
    std::error_code ignored;
    std::filesystem::remove_all(keyFolder(keyPath), ignored);
}

void setVersionTestBytes(const std::string& keyPath, const std::vector<std::uint8_t>& data) {
    std::ofstream value(keyFolder(keyPath) / "DisplayVersion", std::ios::binary | std::ios::trunc);
    value.write(reinterpret_cast<const char*>(data.data()),
                static_cast<std::streamsize>(data.size()));
}
