#include "tests/e2e/panel_session_windows.h"
#include "tests/e2e/shell_stand_in_windows.h"

#include <shlobj.h>

#include <filesystem>
#include <regex>

#include "diagnostics/browsers.h"
#include "diagnostics/name_lookup.h"
#include "diagnostics/os_info.h"
#include "diagnostics/problem_mail.h"
#include "diagnostics/proxy_info.h"
#include "diagnostics/security_info.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "tests/support/diagnostics/zip_reader.h"

using namespace e2e;

namespace {

constexpr int English = 1;
constexpr int hostVersionLabel = 5;
constexpr int libraryVersionLabel = 6;
constexpr int informationLink = 16;
constexpr int problemLink = 17;
const std::string lineEnd = "\r\n";
// Collecting waits up to five seconds for ping and for the event log; the archive as long again.
constexpr auto reportTime = 60s;

std::string utf8(const std::wstring& text) {
    return utf16ToUtf8(text);
}

// The files (not the folders) of a folder, in the order that the system lists them.
std::vector<std::wstring> filesOf(const std::wstring& folder) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found{};
    HANDLE search = FindFirstFileW((folder + L"\\*").c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) {
        return names;
    }
    do {
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) {
            names.emplace_back(found.cFileName);
        }
    } while (FindNextFileW(search, &found));
    FindClose(search);
    return names;
}

std::vector<std::uint8_t> bytesOf(const std::string& text) {
    return {text.begin(), text.end()};
}

std::string currentUser() {
    wchar_t name[256] = {};
    DWORD size = sizeof(name) / sizeof(name[0]);
    GetUserNameW(name, &size);
    return utf8(name);
}

// The report's sections after the host's, made by this process on the same machine, each with the
// two line ends behind it; a section that can't be made here is left out, as the report does.
std::string machineSections() {
    const std::function<std::string()> makers[] = {detector::proxySection, detector::osSection,
                                                   detector::antivirusSection, browsersSection,
                                                   domainSection};
    std::string text;
    for (const auto& maker : makers) {
        try {
            text += maker() + lineEnd + lineEnd;
        } catch (...) {
        }
    }
    return text;
}

// On loopback, so that the report has an address to name: the other sets run the server on every
// interface, as it is mostly set up.
struct Diagnostics : PanelSession {
    void SetUp() override {
        installation.listenOnLoopback();
        for (MessageCatalogue* catalogue : {&panelMessages, &commonMessages, &serviceMessages}) {
            kept.push_back(catalogue->language);
            catalogue->setLanguage(English);
        }
    }
    void TearDown() override {
        panelMessages.setLanguage(kept[0]);
        commonMessages.setLanguage(kept[1]);
        serviceMessages.setLanguage(kept[2]);
    }

    // Starts the panel and waits until it shows the running server.
    HWND startWithServer(ProgramRun& run) {
        HWND window = startPanel(run);
        if (window != nullptr) {
            EXPECT_TRUE(waitForText(control(window, StatusLabel), words("CVCP-000009", English)));
        }
        return window;
    }

    // A click on "Get information", and the folder that the shell was asked to show, once the
    // report has ended and its link is enabled again.
    std::optional<std::string> getInformation(HWND window, std::size_t recordIndex) {
        HWND link = control(window, informationLink);
        ui::clickLink(link);
        auto opened = shell.waitForRecord(recordIndex, reportTime);
        EXPECT_TRUE(ui::waitUntil([&] { return ui::isEnabled(link); }));
        return opened;
    }

    std::string label(HWND window, int id) { return utf8(ui::text(control(window, id))); }

    // The host's block of the report as the window and the system tell it; the address is the one
    // that the report names, once it has the form of an address.
    std::string hostSection(HWND window, const std::string& address) {
        const auto line = [](const char* id, const std::string& value) {
            return utf8(words(id, English)) + " " + value + lineEnd;
        };
        return line("CVCP-005001", label(window, hostVersionLabel)) +
               line("CVCP-005002", label(window, libraryVersionLabel)) +
               line("CVCP-005004", std::to_string(installation.port())) +
               line("CVCP-005005", address) +
               line("CVCP-005006", utf8(words("CVCP-000009", English))) + lineEnd +
               utf8(words("CVCP-008001", English)) + utf8(installation.folder()) + lineEnd +
               lineEnd + utf8(words("CVCP-008002", English)) + currentUser() +
               (IsUserAnAdmin() ? utf8(words("CVCP-008003", English)) : std::string());
    }

    ShellStandIn shell{installation.pathOf(L"shell-records")};
    std::vector<int> kept;
};

// The address line of a report, checked for the dotted form.
std::string addressIn(const std::string& report) {
    static const std::regex line("\r\nAddress: ([0-9]+\\.[0-9]+\\.[0-9]+\\.[0-9]+)\r\n");
    std::smatch match;
    return std::regex_search(report, match, line) ? match[1].str() : std::string();
}

} // namespace

TEST_F(Diagnostics, GetInformationPacksEveryLogAndTheConfigurationAndOpensTmp) {
    installation.writeFile(L"logs\\access.log", "GET / 200\r\n");
    std::filesystem::create_directories(installation.pathOf(L"logs\\old"));
    installation.writeFile(L"logs\\old\\error.log", "not packed: the folder isn't entered");
    ProgramRun run;
    HWND window = startWithServer(run);
    ASSERT_NE(window, nullptr);

    const auto opened = getInformation(window, 0);
    ASSERT_TRUE(opened.has_value()) << "no folder was opened";
    EXPECT_EQ(*opened, utf8(installation.pathOf(L"tmp")));
    EXPECT_FALSE(ui::waitForMessageBox(run.processId(), 1s).has_value());

    const ZipRead archive = readZip(bytesOf(installation.readFile(L"tmp\\info.zip")));
    std::vector<std::wstring> packed = filesOf(installation.pathOf(L"logs"));
    for (const auto& name : {L"info.log", L"access.log", L"process-list.log"}) {
        EXPECT_NE(std::find(packed.begin(), packed.end(), name), packed.end()) << utf8(name);
    }
    packed.push_back(L"nginx.conf");
    ASSERT_EQ(archive.members.size(), packed.size());
    for (std::size_t index = 0; index < packed.size(); ++index) {
        const auto& member = archive.members[index];
        EXPECT_EQ(member.central.name, utf8(packed[index])) << index;
        const std::wstring file =
            index + 1 < packed.size() ? L"logs\\" + packed[index] : L"conf\\nginx.conf";
        EXPECT_EQ(member.content, bytesOf(installation.readFile(file))) << utf8(file);
    }
}

TEST_F(Diagnostics, InfoLogHoldsTheReportOfTheRunningServer) {
    ProgramRun run;
    HWND window = startWithServer(run);
    ASSERT_NE(window, nullptr);
    ASSERT_TRUE(getInformation(window, 0).has_value());

    const std::string report = installation.readFile(L"logs\\info.log");
    const std::string address = addressIn(report);
    EXPECT_FALSE(address.empty()) << report;
    const std::string opening = lineEnd + lineEnd + "--" + lineEnd + lineEnd;
    EXPECT_EQ(report,
              opening + hostSection(window, address) + lineEnd + lineEnd + machineSections());
}

TEST_F(Diagnostics, ReportAProblemHandsTheShellTheReportAsAMailtoLink) {
    ProgramRun run;
    HWND window = startWithServer(run);
    ASSERT_NE(window, nullptr);
    // The information report that the mail carries is also left in the logs by "Get information".
    ASSERT_TRUE(getInformation(window, 0).has_value());
    const std::string report = installation.readFile(L"logs\\info.log");
    ASSERT_FALSE(report.empty());

    // The folder opens just before the report's end frees the links, as the user sees them.
    HWND problem = control(window, problemLink);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(problem); }));
    ui::clickLink(problem);
    const auto link = shell.waitForRecord(1, reportTime);
    ASSERT_TRUE(link.has_value()) << "no link reached the shell";
    const std::string subject = "Corvanite " + label(window, libraryVersionLabel);
    EXPECT_EQ(*link, cp1251ToUtf8(mailLink(joinText(supportAddresses(), ","), subject, report)));
    EXPECT_EQ(link->rfind("mailto:" + SupportMailAddress + "?subject=Corvanite%20", 0), 0u);
    EXPECT_NE(link->find("&body=\r%0D%0A\r%0D%0A--\r%0D%0A"), std::string::npos);
    EXPECT_EQ(link->find_first_of(" \n"), std::string::npos);
    EXPECT_FALSE(ui::waitForMessageBox(run.processId(), 1s).has_value());
}

TEST_F(Diagnostics, UnsupportedMailProgramShowsItsBoxAndOpensNothing) {
    SavedRegistryValue mailChoice(
        L"Software\\Microsoft\\Windows\\Shell\\Associations\\UrlAssociations\\mailto\\UserChoice",
        L"ProgId");
    mailChoice.write(L"SpikeMail.Url.mailto");
    ProgramRun run;
    HWND window = startWithServer(run);
    ASSERT_NE(window, nullptr);

    ui::clickLink(control(window, problemLink));
    const auto box = ui::answerMessageBox(run.processId());
    ASSERT_TRUE(box.has_value());
    EXPECT_EQ(box->caption, L"Corvanite");
    EXPECT_EQ(box->text, words("CVCP-007002", English, "Spike"));
    EXPECT_FALSE(shell.waitForRecord(0, 2s).has_value());
}

TEST_F(Diagnostics, GetInformationWithoutTheLogsFolderShowsCVCP006017) {
    ProgramRun run;
    HWND window = startWithServer(run);
    ASSERT_NE(window, nullptr);
    std::filesystem::remove_all(installation.pathOf(L"logs"));

    ui::clickLink(control(window, informationLink));
    // The logs folder is shown instead of tmp, and that fails.
    const auto box = ui::answerMessageBox(run.processId(), reportTime);
    ASSERT_TRUE(box.has_value());
    EXPECT_EQ(box->caption, L"Corvanite");
    EXPECT_EQ(box->text, words("CVCP-006017", English));
    EXPECT_TRUE(shell.records().empty());
}

TEST_F(Diagnostics, WhileAReportIsCollectedTheWindowAnswersAndTheTrayMenuOpens) {
    ProgramRun run;
    HWND window = startWithServer(run);
    ASSERT_NE(window, nullptr);
    HWND link = control(window, informationLink);
    ui::clickLink(link);
    // The probes take seconds under Wine (ping, the event log's wait): the link stays disabled
    // meanwhile, and the window answers at once all along.
    ASSERT_TRUE(ui::waitUntil([&] { return !ui::isEnabled(link); }));
    DWORD_PTR answer = 0;
    EXPECT_NE(SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 200, &answer), 0);
    ui::trayClick(window, WM_RBUTTONDOWN);
    HWND menu = ui::waitForPopupMenu(run.processId());
    ASSERT_NE(menu, nullptr);
    ui::dismissPopup(menu);
    EXPECT_FALSE(ui::isEnabled(link))
        << "the report ended before the menu could show the window's life";
    // A second click while the report is collected does nothing: one folder opens.
    ui::clickLink(link);
    while (!ui::isEnabled(link) && shell.records().empty()) {
        EXPECT_NE(SendMessageTimeoutW(window, WM_NULL, 0, 0, SMTO_ABORTIFHUNG, 200, &answer), 0);
        Sleep(100);
    }
    ASSERT_TRUE(shell.waitForRecord(0, reportTime).has_value());
    EXPECT_TRUE(ui::waitUntil([&] { return ui::isEnabled(link); }));
    EXPECT_FALSE(shell.waitForRecord(1, 2s).has_value());
}

TEST_F(Diagnostics, AReportAskedForWhileTheServerIsStoppedIsCollected) {
    ProgramRun run;
    HWND window = startWithServer(run);
    ASSERT_NE(window, nullptr);
    HWND stop = control(window, StopButton);
    ASSERT_TRUE(ui::waitUntil([&] { return ui::isEnabled(stop); }));
    ui::click(stop);
    // While the server's lane stops the server, the report runs on its own.
    ASSERT_TRUE(getInformation(window, 0).has_value());
    EXPECT_TRUE(installation.waitForServer(false));
}
