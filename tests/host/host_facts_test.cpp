#include "host/host_facts.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

#include "foundation/exceptions.h"
#include "foundation/filesys.h"
#include "foundation/registry.h"
#include "foundation/text.h"
#include "tests/support/host/model_installation.h"
#include "tests/support/host/model_system.h"

namespace {

const std::string productKey = "Software\\Ormal Co\\CorvaniteHost";

// One entry of an installation folder: a file, or a folder when the path ends with a slash.
using Entry = std::string;

struct HostFacts : ::testing::Test {
    // Lays out the entries and asks whether the installation is complete.
    bool checkInstallationOf(std::initializer_list<Entry> entries) {
        for (const Entry& entry : entries) {
            if (endsWith(entry, "/")) {
                installation.makeFolder(entry.substr(0, entry.size() - 1));
            } else {
                installation.writeText(entry, "");
            }
        }
        return checkInstallation();
    }

    HostModelInstallation installation;
};

// Sets the registry's "Language" for one test and puts back what was there.
class LanguageValue {
public:
    explicit LanguageValue(const std::optional<std::string>& code)
        : saved_(readRegistryText(RegistryHive::CurrentUser, productKey, "Language")) {
        set(code);
    }
    ~LanguageValue() { set(saved_); }

private:
    static void set(const std::optional<std::string>& code) {
        if (code) {
            writeRegistryText(RegistryHive::CurrentUser, productKey, "Language", *code);
        } else {
            hostModelDeleteProductValue("Language");
        }
    }
    const HostModelRegistryLock lock_;
    std::optional<std::string> saved_;
};

} // namespace

TEST(VersionTail, DropsTheFirstNumber) {
    EXPECT_EQ(versionTail("1.2.3.4"), "2.3.4");
}

TEST(VersionTail, IsADashWithoutADot) {
    EXPECT_EQ(versionTail("5"), "-");
    EXPECT_EQ(versionTail(""), "-");
}

TEST(VersionMiddle, DropsTheFirstAndTheLastNumber) {
    EXPECT_EQ(versionMiddle("1.2.3.4"), "2.3");
}

TEST(VersionMiddle, KeepsALoneSecondNumber) {
    EXPECT_EQ(versionMiddle("1.2"), "2");
}

TEST(VersionMiddle, IsADashWithoutADot) {
    EXPECT_EQ(versionMiddle("5"), "-");
    EXPECT_EQ(versionMiddle(""), "-");
}

TEST_F(HostFacts, InstallationPathIsTheRegistryPath) {
    EXPECT_EQ(installationPath(), installation.path());
    EXPECT_EQ(*readRegistryText(RegistryHive::CurrentUser, productKey, "Path"),
              installation.path());
}

TEST(InstallationFolder, TrailingSeparatorsOfThePathGo) {
    EXPECT_EQ(installationFolderOf("C:\\Users\\Корванит Хост\\"), "C:\\Users\\Корванит Хост");
    EXPECT_EQ(installationFolderOf("C:\\José Host\\\\/"), "C:\\José Host");
    EXPECT_EQ(installationFolderOf("/opt/corvanite/"), "/opt/corvanite");
    EXPECT_EQ(installationFolderOf("D:\\服务器"), "D:\\服务器");
}

TEST(InstallationFolder, ARootKeepsItsSeparator) {
    EXPECT_EQ(installationFolderOf("C:\\"), "C:\\");
    EXPECT_EQ(installationFolderOf("/"), "/");
    EXPECT_EQ(installationFolderOf(""), "");
}

TEST_F(HostFacts, InstallPathOfJoinsWithASlash) {
    EXPECT_EQ(installPathOf("conf/nginx.conf"), installation.path() + "/conf/nginx.conf");
    EXPECT_EQ(installPathOf("nginx.pid"), installation.path() + "/nginx.pid");
}

TEST(InstallationPath, WithoutPathValueIsBelowLocalApplicationData) {
    if (hostModelInstallationRegistered()) {
        GTEST_SKIP() << "needs a test process of its own, as ctest gives it";
    }
    hostModelUseTestEnvironment();
    std::string path;
    {
        const HostModelRegistryLock lock;
        hostModelCreateProductKey();
        const auto saved = readRegistryText(RegistryHive::CurrentUser, productKey, "Path");
        ASSERT_TRUE(hostModelDeleteProductValue("Path"));
        path = installationPath();
        if (saved) {
            writeRegistryText(RegistryHive::CurrentUser, productKey, "Path", *saved);
        }
    }
    EXPECT_EQ(path, filesys::localAppDataFolder() + "/Ormal Co/CorvaniteHost");
    EXPECT_TRUE(endsWith(path, "/Ormal Co/CorvaniteHost"));
}

TEST_F(HostFacts, PidFileWithLineEndGivesThePid) {
    installation.writeText("nginx.pid", "1234\r\n");
    EXPECT_EQ(readServerPid(), 1234u);
}

TEST_F(HostFacts, PidFileWithLeadingBlanksGivesThePid) {
    installation.writeText("nginx.pid", "  \t987\n");
    EXPECT_EQ(readServerPid(), 987u);
}

TEST_F(HostFacts, EmptyPidFileRaisesInvalidArgument) {
    installation.writeText("nginx.pid", "");
    try {
        readServerPid();
        FAIL() << "an empty pid file gave a pid";
    } catch (const std::invalid_argument& failure) {
        EXPECT_STREQ(failure.what(), "invalid stoul argument");
    }
}

TEST_F(HostFacts, PidFileWithoutDigitsRaisesInvalidArgument) {
    installation.writeText("nginx.pid", "nginx\r\n");
    EXPECT_THROW(readServerPid(), std::invalid_argument);
}

TEST_F(HostFacts, PidBeyondThirtyTwoBitsRaisesOutOfRange) {
    installation.writeText("nginx.pid", "4294967296\r\n");
    try {
        readServerPid();
        FAIL() << "a pid beyond 32 bits was taken";
    } catch (const std::out_of_range& failure) {
        EXPECT_STREQ(failure.what(), "stoul argument out of range");
    }
}

// A sign would wrap around at the width of unsigned long, which differs between the systems.
TEST_F(HostFacts, PidWithASignRaisesInvalidArgumentOnEverySystem) {
    for (const char* text : {"-1\r\n", "-4294967295\r\n", "+1234\r\n", "  -0\n", "\t+7"}) {
        installation.writeText("nginx.pid", text);
        try {
            readServerPid();
            FAIL() << "a pid with a sign was taken: " << text;
        } catch (const std::invalid_argument& failure) {
            EXPECT_STREQ(failure.what(), "invalid stoul argument") << text;
        }
    }
}

TEST_F(HostFacts, MissingPidFileRaisesReadFileError) {
    EXPECT_THROW(readServerPid(), filesys::ReadFileError);
}

TEST_F(HostFacts, ServerIsNotRunningWithoutPidFile) {
    EXPECT_FALSE(isServerRunning());
}

TEST_F(HostFacts, ServerIsNotRunningWithABrokenPidFile) {
    installation.writeText("nginx.pid", "x");
    EXPECT_FALSE(isServerRunning());
}

TEST_F(HostFacts, AnyLivingProcessOfThePidFileCountsAsRunning) {
    installation.writeText("nginx.pid", std::to_string(hostModelCurrentProcessId()) + "\n");
    EXPECT_TRUE(isServerRunning());
}

TEST_F(HostFacts, InstallationIsCompleteWithServerConfigurationAndLogs) {
    EXPECT_TRUE(checkInstallationOf({"CorvaniteHost.exe", "conf/nginx.conf", "logs/"}));
}

TEST_F(HostFacts, InstallationWithoutServerIsIncomplete) {
    EXPECT_FALSE(checkInstallationOf({"conf/nginx.conf", "logs/"}));
}

TEST_F(HostFacts, ServerNameMustMatchInCase) {
    EXPECT_FALSE(checkInstallationOf({"corvanitehost.exe", "conf/nginx.conf", "logs/"}));
}

TEST_F(HostFacts, ServerAsAFolderDoesNotCount) {
    EXPECT_FALSE(checkInstallationOf({"CorvaniteHost.exe/", "conf/nginx.conf", "logs/"}));
}

TEST_F(HostFacts, InstallationWithoutConfFolderIsIncomplete) {
    EXPECT_FALSE(checkInstallationOf({"CorvaniteHost.exe", "logs/"}));
}

TEST_F(HostFacts, InstallationWithoutNginxConfIsIncomplete) {
    EXPECT_FALSE(checkInstallationOf({"CorvaniteHost.exe", "conf/other.conf", "logs/"}));
}

TEST_F(HostFacts, LogsAsAFileDoesNotCount) {
    EXPECT_FALSE(checkInstallationOf({"CorvaniteHost.exe", "conf/nginx.conf", "logs"}));
}

TEST_F(HostFacts, LanguageWithoutValueIsRussian) {
    const LanguageValue value(std::nullopt);
    EXPECT_EQ(readLanguage(), Language::Russian);
}

TEST_F(HostFacts, LanguageOfAKnownCode) {
    const LanguageValue value(std::string("1033"));
    EXPECT_EQ(readLanguage(), Language::English);
}

TEST_F(HostFacts, LanguageOfAnUnknownCodeIsUkrainian) {
    const LanguageValue value(std::string("1036"));
    EXPECT_EQ(readLanguage(), Language::Ukrainian);
}
