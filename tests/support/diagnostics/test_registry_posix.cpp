#include "tests/support/diagnostics/test_registry.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>

#include "foundation/text.h"
#include "tests/support/foundation/temp_folder.h"

struct ScopedTestRegistry::State {
    TempFolder root;
    std::optional<std::string> previous;
};

namespace {

std::filesystem::path keyFolder(const TempFolder& root, RegistryHive hive,
                                const std::string& keyPath) {
    std::string relative = keyPath;
    std::replace(relative.begin(), relative.end(), '\\', '/');
    const char* hiveName =
        hive == RegistryHive::LocalMachine ? "HKEY_LOCAL_MACHINE" : "HKEY_CURRENT_USER";
    return root.native() / hiveName / nativePath(relative);
}

void writeBytes(const std::filesystem::path& file, const std::string& bytes) {
    std::ofstream out(file, std::ios::binary);
    out.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

} // namespace

ScopedTestRegistry::ScopedTestRegistry() : state_(std::make_unique<State>()) {
    if (const char* previous = std::getenv("CORVANITE_REGISTRY")) {
        state_->previous = previous;
    }
    setenv("CORVANITE_REGISTRY", state_->root.path().c_str(), 1);
}

ScopedTestRegistry::~ScopedTestRegistry() {
    if (state_->previous) {
        setenv("CORVANITE_REGISTRY", state_->previous->c_str(), 1);
    } else {
        unsetenv("CORVANITE_REGISTRY");
    }
}

void ScopedTestRegistry::createKey(RegistryHive hive, const std::string& keyPath) {
    std::filesystem::create_directories(keyFolder(state_->root, hive, keyPath));
}

void ScopedTestRegistry::setText(RegistryHive hive, const std::string& keyPath,
                                 const std::string& valueName, const std::string& utf8) {
    createKey(hive, keyPath);
    writeBytes(keyFolder(state_->root, hive, keyPath) / valueName, utf8ToCp1251(utf8));
}

void ScopedTestRegistry::setDword(RegistryHive hive, const std::string& keyPath,
                                  const std::string& valueName, std::uint32_t value) {
    createKey(hive, keyPath);
    const std::string bytes = {static_cast<char>(value), static_cast<char>(value >> 8),
                               static_cast<char>(value >> 16), static_cast<char>(value >> 24)};
    writeBytes(keyFolder(state_->root, hive, keyPath) / valueName, bytes);
}
