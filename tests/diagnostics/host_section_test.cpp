#include "diagnostics/host_section.h"

#include <stdexcept>

#include <gtest/gtest.h>

#include "diagnostics/info_report.h"
#include "foundation/exceptions.h"
#include "foundation/language.h"
#include "foundation/message_catalogue.h"

namespace {

HostSources sourcesOf(const HostFacts& facts, std::vector<std::string>* asked = nullptr) {
    auto note = [asked](const char* what) {
        if (asked != nullptr) {
            asked->push_back(what);
        }
    };
    HostSources sources;
    sources.isAdmin = [=] {
        note("os");
        return facts.isAdmin;
    };
    sources.status = [=] {
        note("status");
        return facts.status;
    };
    sources.userName = [=] {
        note("user");
        return facts.userName;
    };
    sources.installPath = [=] {
        note("install");
        return facts.installPath;
    };
    sources.libraryVersion = [=] {
        note("library");
        return facts.libraryVersion;
    };
    sources.hostVersion = [=] {
        note("host");
        return facts.hostVersion;
    };
    return sources;
}

HostFacts runningFacts() {
    HostFacts facts;
    facts.hostVersion = "2.3.4";
    facts.libraryVersion = "1.5.0";
    facts.status.running = true;
    facts.status.port = "8443";
    facts.status.address = "127.0.0.1";
    facts.installPath = "C:/Users/u/AppData/Local/Ormal Co/CorvaniteHost";
    facts.userName = "u";
    facts.isAdmin = true;
    return facts;
}

class HostSectionTest : public testing::Test {
protected:
    void SetUp() override { panelMessages.setLanguage(Language::English); }
    void TearDown() override { panelMessages.setLanguage(Language::Ukrainian); }
};

} // namespace

TEST_F(HostSectionTest, NineLinesEachButTheLastEndedByALineBreak) {
    EXPECT_EQ(hostSectionText(runningFacts()),
              "Host application version: 2.3.4\r\n"
              "Library version: 1.5.0\r\n"
              "Port: 8443\r\n"
              "Address: 127.0.0.1\r\n"
              "Server status: Running\r\n"
              "\r\n"
              "Install path: C:/Users/u/AppData/Local/Ormal Co/CorvaniteHost\r\n"
              "\r\n"
              "User: u (admin)");
}

TEST_F(HostSectionTest, WithTheServerStoppedThePortAndAddressLinesShowADash) {
    HostFacts facts = runningFacts();
    facts.status = ServerStatus{};
    facts.isAdmin = false;
    const std::string text = hostSectionText(facts);
    EXPECT_NE(text.find("\r\nPort: -\r\nAddress: -\r\nServer status: Stopped\r\n"),
              std::string::npos);
    EXPECT_EQ(text.substr(text.rfind("\r\n") + 2), "User: u");
}

TEST_F(HostSectionTest, SourcesAreAskedInOrder) {
    std::vector<std::string> asked;
    gatherHostFacts(sourcesOf(runningFacts(), &asked));
    EXPECT_EQ(asked,
              (std::vector<std::string>{"os", "status", "user", "install", "library", "host"}));
}

TEST_F(HostSectionTest, WhenTheUserNameFailsTheWholeHostSectionIsMissing) {
    HostSources sources = sourcesOf(runningFacts());
    sources.userName = []() -> std::string { throw detector::InternalError(); };
    const SectionMaker host = [&sources] { return hostSectionText(gatherHostFacts(sources)); };
    const SectionMaker other = [] { return std::string("Browsers:"); };
    const std::string report = reportTextFrom({host, other});
    EXPECT_EQ(report, "\r\n\r\n--\r\n\r\nBrowsers:\r\n\r\n");
    EXPECT_EQ(report.find("2.3.4"), std::string::npos);
}

TEST(HostSection, LabelsFollowTheProgramLanguage) {
    panelMessages.setLanguage(Language::Russian);
    const std::string text = hostSectionText(runningFacts());
    panelMessages.setLanguage(Language::Ukrainian);
    EXPECT_EQ(text.substr(0, text.find("\r\n")), "Версия хост-приложения: 2.3.4");
    EXPECT_NE(text.find("Состояние сервера: Запущен\r\n"), std::string::npos);
    EXPECT_NE(text.find("Пользователь: u (администратор)"), std::string::npos);
}
