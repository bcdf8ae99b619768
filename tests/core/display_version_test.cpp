#include "core/display_version.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "foundation/registry.h"

// An uninstall key of the tests' own under HKEY_CURRENT_USER, removed after each test, and a way to
// store a value's raw bytes in it (display_version_*_test.cpp).
std::string makeVersionTestKey();
void removeVersionTestKey(const std::string& keyPath);
void setVersionTestBytes(const std::string& keyPath, const std::vector<std::uint8_t>& data);

namespace {

using Bytes = std::vector<std::uint8_t>;

Bytes bytesOf(const std::string& text, bool withZero) {
    Bytes data(text.begin(), text.end());
    if (withZero) {
        data.push_back(0);
    }
    return data;
}

// A library version source that counts how often it was asked.
struct LibraryProbe {
    std::string version;
    int calls = 0;
    std::function<std::string()> source() {
        return [this] {
            ++calls;
            return version;
        };
    }
};

struct DisplayVersion : ::testing::Test {
    void SetUp() override { key = makeVersionTestKey(); }
    void TearDown() override { removeVersionTestKey(key); }

    std::optional<Bytes> stored() const {
        return readRegistryBytes(RegistryHive::CurrentUser, key, "DisplayVersion");
    }

    std::string key;
};

} // namespace

TEST_F(DisplayVersion, WithoutTheValueNothingIsWrittenAndTheLibraryIsNotAsked) {
    LibraryProbe library{"2.5.1.7"};
    syncDisplayVersion(key, library.source());
    EXPECT_EQ(library.calls, 0);
    EXPECT_EQ(stored(), std::nullopt);
}

TEST_F(DisplayVersion, EqualVersionIsNotWritten) {
    // A write would store the text without its terminating zero: the zero shows that none came.
    setVersionTestBytes(key, bytesOf("2.5.1.7", true));
    LibraryProbe library{"2.5.1.7"};
    syncDisplayVersion(key, library.source());
    EXPECT_EQ(library.calls, 1);
    EXPECT_EQ(stored(), bytesOf("2.5.1.7", true));
}

TEST_F(DisplayVersion, VersionThatDiffersByAByteIsRewritten) {
    setVersionTestBytes(key, bytesOf("2.5.1.6", true));
    LibraryProbe library{"2.5.1.7"};
    syncDisplayVersion(key, library.source());
    EXPECT_EQ(readRegistryText(RegistryHive::CurrentUser, key, "DisplayVersion"), "2.5.1.7");
}

TEST_F(DisplayVersion, LibraryWithoutAnAnswerWritesADash) {
    setVersionTestBytes(key, bytesOf("2.5.1.7", true));
    LibraryProbe library{"-"};
    syncDisplayVersion(key, library.source());
    EXPECT_EQ(readRegistryText(RegistryHive::CurrentUser, key, "DisplayVersion"), "-");
}

TEST(DisplayVersionKey, IsTheHostsUninstallEntry) {
    EXPECT_EQ(hostUninstallKey(),
              "Software\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\CorvaniteHost");
}
