#pragma once

#include <map>
#include <optional>
#include <string>
#include <vector>

// Which known browsers are installed, in which versions, and which one opens https links.

// The six browsers' names, which are the keys of every table here. In byte order they are the
// order of the report's lines and of the search for the default browser.
extern const std::string ChromeBrowser;
extern const std::string FirefoxBrowser;
extern const std::string InternetExplorerBrowser;
extern const std::string EdgeBrowser;
extern const std::string OperaBrowser;
extern const std::string YandexBrowser;

using BrowserTable = std::map<std::string, std::string>;

// Name to the text that marks the browser in the default https handler's ProgId.
BrowserTable browserPatterns();

// Name to version, each browser present with its version or the empty text.
BrowserTable browserVersions();

// The browser whose pattern occurs first, in key order, in the ProgId; nothing when none does.
std::optional<std::string> browserOfProgId(const std::string& progId);

// The default browser for https links, or nothing when it isn't known.
std::optional<std::string> defaultBrowser();

std::optional<std::string> firefoxVersion();

// Opera keeps no version in the registry; its install folders hold a folder per version. The
// highest name by byte comparison wins, so "9.0.0.1" outranks "85.0.4341.75".
std::optional<std::string> operaVersion();

// The folders where Opera installs, given the Program Files folder of a 32-bit process and the
// local application data folder. A 32-bit process looks in the 64-bit Program Files too.
std::vector<std::string> operaInstallFolders(const std::string& programFiles,
                                             const std::string& localAppData);

// The highest version among the sub-folders of these folders. Missing folders count as empty;
// any other listing failure raises filesys::ReadFolderError.
std::optional<std::string> operaVersionIn(const std::vector<std::string>& installFolders);

// The report's block: "Browsers:" and a line for each browser with a version, marked when it is
// the default one, joined with a line feed and four blanks.
std::string browsersSectionText(const BrowserTable& versions,
                                const std::optional<std::string>& defaultName);
std::string browsersSection();
