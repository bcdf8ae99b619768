#include "foundation/registry.h"

#include <gtest/gtest.h>

#include "tests/support/foundation/environment_value.h"
#include "tests/support/foundation/temp_folder.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <optional>
#include <unistd.h>

namespace {

// The registry of the tests: a folder of their own, which CORVANITE_REGISTRY points at.
const TempFolder& testRegistry() {
    static const TempFolder root;
    setenv("CORVANITE_REGISTRY", root.path().c_str(), 1);
    return root;
}

std::filesystem::path keyFolderUnder(const std::string& root, const std::string& keyPath) {
    std::string path = keyPath;
    std::replace(path.begin(), path.end(), '\\', '/');
    return nativePath(root + "/HKEY_CURRENT_USER/" + path);
}

std::filesystem::path keyFolder(const std::string& keyPath) {
    return keyFolderUnder(testRegistry().path(), keyPath);
}

void writeValueFile(const std::filesystem::path& file, const std::vector<std::uint8_t>& data) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(reinterpret_cast<const char*>(data.data()),
                 static_cast<std::streamsize>(data.size()));
}

} // namespace

std::string makeTestKey() {
    static std::atomic<unsigned> counter{0};
    const std::string keyPath = "Software\\Corvanite Tests\\" + std::to_string(getpid()) + "-" +
                                std::to_string(counter.fetch_add(1));
    std::filesystem::create_directories(keyFolder(keyPath));
    return keyPath;
}

void removeTestKey(const std::string& keyPath) {
    std::error_code ignored;
    std::filesystem::remove_all(keyFolder(keyPath), ignored);
}

bool testKeyExists(const std::string& keyPath) {
    return std::filesystem::is_directory(keyFolder(keyPath));
}

void setTestDwordValue(const std::string& keyPath, const char* name, std::uint32_t value) {
    std::vector<std::uint8_t> data;
    for (int shift = 0; shift < 32; shift += 8) {
        data.push_back(static_cast<std::uint8_t>(value >> shift));
    }
    writeValueFile(keyFolder(keyPath) / name, data);
}

void setTestBinaryValue(const std::string& keyPath, const char* name,
                        const std::vector<std::uint8_t>& data) {
    writeValueFile(keyFolder(keyPath) / name, data);
}

TEST(RegistryPosix, ValuesAreFilesInTheKeysFolder) {
    const std::string key = makeTestKey();
    ASSERT_TRUE(writeRegistryText(RegistryHive::CurrentUser, key, "Path", "/opt/x"));
    std::ifstream stream(keyFolder(key) / "Path", std::ios::binary);
    const std::string content{std::istreambuf_iterator<char>(stream),
                              std::istreambuf_iterator<char>()};
    EXPECT_EQ(content, "/opt/x");
    removeTestKey(key);
}

TEST(RegistryPosix, LocalMachineIsAFolderOfItsOwn) {
    const std::string root = testRegistry().path();
    std::filesystem::create_directories(nativePath(root + "/HKEY_LOCAL_MACHINE/Software/Vendor"));
    writeValueFile(nativePath(root + "/HKEY_LOCAL_MACHINE/Software/Vendor/Name"), {'m'});
    EXPECT_EQ(readRegistryText(RegistryHive::LocalMachine, "Software\\Vendor", "Name"), "m");
    EXPECT_EQ(readRegistryText(RegistryHive::CurrentUser, "Software\\Vendor", "Name"),
              std::nullopt);
}

TEST(RegistryPosix, RootFallsBackToXdgConfigHomeAndThenHome) {
    const TempFolder config;
    const TempFolder home;
    const EnvironmentValue own("CORVANITE_REGISTRY", nullptr);
    const EnvironmentValue xdg("XDG_CONFIG_HOME", config.path().c_str());
    const EnvironmentValue user("HOME", home.path().c_str());
    std::filesystem::create_directories(keyFolderUnder(config.path() + "/corvanite/registry", "K"));
    std::filesystem::create_directories(
        keyFolderUnder(home.path() + "/.config/corvanite/registry", "K"));
    ASSERT_TRUE(writeRegistryText(RegistryHive::CurrentUser, "K", "V", "xdg"));
    unsetenv("XDG_CONFIG_HOME");
    ASSERT_TRUE(writeRegistryText(RegistryHive::CurrentUser, "K", "V", "home"));
    EXPECT_EQ(readRegistryText(RegistryHive::CurrentUser, "K", "V"), "home");
    setenv("XDG_CONFIG_HOME", config.path().c_str(), 1);
    EXPECT_EQ(readRegistryText(RegistryHive::CurrentUser, "K", "V"), "xdg");
}

TEST(RegistryPosix, ValueNameCannotReachAnotherKey) {
    const std::string key = makeTestKey();
    EXPECT_FALSE(writeRegistryText(RegistryHive::CurrentUser, key, "../Escaped", "x"));
    EXPECT_EQ(readRegistryText(RegistryHive::CurrentUser, key, "../Escaped"), std::nullopt);
    removeTestKey(key);
}

// The stand-in keeps a text value as the narrow view of a registry in code page 1251 shows it.
TEST(RegistryPosix, WrittenTextIsStoredInCodePage1251) {
    const std::string key = makeTestKey();
    ASSERT_TRUE(writeRegistryText(RegistryHive::CurrentUser, key, "Path", "\xD0\x96z")); // Жz
    const auto bytes = readRegistryBytes(RegistryHive::CurrentUser, key, "Path");
    ASSERT_TRUE(bytes.has_value());
    EXPECT_EQ(*bytes, (std::vector<std::uint8_t>{0xC6, 'z'}));
    removeTestKey(key);
}
