#pragma once

#include <string>
#include <string_view>

// Where the installed host lies. The folder is taken from the registry's "Path" once, at the first
// call, and kept for the rest of the run; without that value it is the product's folder below the
// local application data folder.
std::string installationPath();

// A path inside the installation: the installation path, "/", and the relative name.
std::string installPathOf(std::string_view name);

// True when the server's executable, its "conf/nginx.conf" and its "logs" folder are in place.
// Never throws: a folder that can't be listed counts as missing.
bool checkInstallation();
