#pragma once

#include <string>

namespace detector {

// Starts a program and lets go of it: no window, no inherited handles, never waited for. The
// working folder is the program's own folder. An empty path leaves the program to the command
// line; the arguments reach the program as they stand, without its name in front, so " -s quit"
// arrives with its leading blank. False when the system refused to start it.
bool launchProcess(const std::string& path, const std::string& arguments);

namespace native {

// Starts path (or, when empty, the program that the arguments name) in folder (the caller's own
// when empty) and lets go of it. UTF-8 texts.
bool startDetached(const std::string& path, const std::string& arguments,
                   const std::string& folder);

} // namespace native

} // namespace detector
