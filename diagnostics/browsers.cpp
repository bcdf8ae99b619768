#include "diagnostics/browsers.h"

#include <queue>
#include <regex>

#include "diagnostics/report_words.h"
#include "foundation/filesys.h"
#include "foundation/message_catalogue.h"
#include "foundation/registry.h"
#include "foundation/text.h"

const std::string ChromeBrowser = "Chrome";
const std::string FirefoxBrowser = "Firefox";
const std::string InternetExplorerBrowser = "Internet Explorer";
const std::string EdgeBrowser = "Microsoft Edge";
const std::string OperaBrowser = "Opera";
const std::string YandexBrowser = "Yandex";

namespace {

const char* const userChoiceKey =
    "Software\\Microsoft\\Windows\\Shell\\Associations\\UrlAssociations\\https\\UserChoice";
const char* const x86Suffix = " (x86)";

std::string textOrEmpty(RegistryHive hive, const char* key, const char* value) {
    return readRegistryText(hive, key, value).value_or("");
}

} // namespace

BrowserTable browserPatterns() {
    return {{ChromeBrowser, "Chrome"}, {FirefoxBrowser, "Firefox"}, {InternetExplorerBrowser, "IE"},
            {EdgeBrowser, "MSEdge"},   {OperaBrowser, "Opera"},     {YandexBrowser, "Yandex"}};
}

BrowserTable browserVersions() {
    BrowserTable versions;
    versions[InternetExplorerBrowser] = textOrEmpty(
        RegistryHive::LocalMachine, "Software\\Microsoft\\Internet Explorer", "svcVersion");
    versions[EdgeBrowser] =
        textOrEmpty(RegistryHive::CurrentUser, "Software\\Microsoft\\Edge\\BLBeacon", "version");
    versions[FirefoxBrowser] = firefoxVersion().value_or("");
    versions[YandexBrowser] =
        textOrEmpty(RegistryHive::CurrentUser, "Software\\Yandex\\YandexBrowser", "ypv");
    versions[ChromeBrowser] =
        textOrEmpty(RegistryHive::CurrentUser, "Software\\Google\\Chrome\\BLBeacon", "version");
    versions[OperaBrowser] = operaVersion().value_or("");
    return versions;
}

std::optional<std::string> browserOfProgId(const std::string& progId) {
    for (const auto& [name, pattern] : browserPatterns()) {
        if (progId.find(pattern) != std::string::npos) {
            return name;
        }
    }
    return std::nullopt;
}

std::optional<std::string> defaultBrowser() {
    const std::optional<std::string> progId =
        readRegistryText(RegistryHive::CurrentUser, userChoiceKey, "ProgId");
    if (!progId) {
        return std::nullopt;
    }
    return browserOfProgId(*progId);
}

std::optional<std::string> firefoxVersion() {
    const char* const key = "Software\\Mozilla\\Mozilla Firefox";
    if (auto version = readRegistryText(RegistryHive::CurrentUser, key, "CurrentVersion")) {
        return version;
    }
    return readRegistryText(RegistryHive::LocalMachine, key, "CurrentVersion");
}

std::vector<std::string> operaInstallFolders(const std::string& programFiles,
                                             const std::string& localAppData) {
    std::vector<std::string> folders = {
        filesys::joinPath(programFiles, "Opera"),
        filesys::joinPath(filesys::joinPath(localAppData, "Programs"), "Opera")};
    if (endsWith(programFiles, x86Suffix)) {
        const std::string nativeFolder =
            programFiles.substr(0, programFiles.size() - std::string(x86Suffix).size());
        folders.push_back(filesys::joinPath(nativeFolder, "Opera"));
    }
    return folders;
}

std::optional<std::string> operaVersionIn(const std::vector<std::string>& installFolders) {
    // The class holds "+" and "." literally; the match ends at the last digit of the leading run.
    const std::regex versionName(R"(^[\d+\.]+\d+?)", std::regex::ECMAScript);
    std::priority_queue<std::string> versions;
    for (const std::string& folder : installFolders) {
        for (const std::string& name : filesys::listDirectory(folder, false, true, true)) {
            std::smatch match;
            if (std::regex_search(name, match, versionName)) {
                versions.push(match.str(0));
            }
        }
    }
    if (versions.empty()) {
        return std::nullopt;
    }
    return versions.top();
}

std::optional<std::string> operaVersion() {
    return operaVersionIn(
        operaInstallFolders(filesys::programFilesFolder(), filesys::localAppDataFolder()));
}

std::string browsersSectionText(const BrowserTable& versions,
                                const std::optional<std::string>& defaultName) {
    std::vector<std::string> lines = {reportWords(panelmsg::browsersLine)};
    for (const auto& [name, version] : versions) {
        if (version.empty()) {
            continue;
        }
        const std::string mark = name == defaultName ? reportWords(panelmsg::defaultMark) : " ";
        lines.push_back(
            substitutePlaceholders("%1%2%3", name.c_str(), mark.c_str(), version.c_str()));
    }
    return joinText(lines, "\n    ");
}

std::string browsersSection() {
    const BrowserTable versions = browserVersions();
    return browsersSectionText(versions, defaultBrowser());
}
