#pragma once

#include <string>
#include <string_view>

// An installation folder of the fuzz target's own, named by the registry's "Path" of a registry,
// data and profile folder that lie in a temporary folder too ($TMPDIR, which scripts/fuzz.sh puts
// in memory: the targets rewrite a file at every run). Removed when the process ends normally.
// Call before anything asks for the installation path: the program keeps the first one it reads.
const std::string& fuzzInstallation();

// Writes a file of the installation, `name` relative to it, creating its folder.
void writeInstallationFile(std::string_view name, std::string_view bytes);

// The bytes of a file of the installation.
std::string readInstallationFile(std::string_view name);
