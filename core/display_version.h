#pragma once

#include <functional>
#include <string>

// Keeps the version that Windows lists for the installed host true, without ever making the
// entry: the uninstall key's "DisplayVersion" under HKEY_CURRENT_USER is rewritten with the
// library's version when it differs by any byte. With no such value nothing is written and the
// library isn't asked. The program passes hostUninstallKey() and the addon library's version.
void syncDisplayVersion(const std::string& uninstallKey,
                        const std::function<std::string()>& libraryVersion);

// "Software\Microsoft\Windows\CurrentVersion\Uninstall\CorvaniteHost".
const std::string& hostUninstallKey();
