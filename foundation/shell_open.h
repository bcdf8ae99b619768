#pragma once

#include <functional>
#include <string>

// Opens a folder or file with the shell's default action. The path is UTF-8 with forward slashes,
// as the program builds them; the shell gets the backslash form. True when the system accepted it.
bool shellOpenPath(const std::string& path);

// Opens an address in the default browser or mail program; the result is not looked at.
void shellOpenUrl(const std::wstring& url);

// The UTF-16 form of a path that the shell is given: every "/" becomes "\".
std::wstring shellPathOf(const std::string& path);

// Where shell opens go instead of the system while one is set: the target and the show command
// (1 for a path, 5 for an address). Tests record with it; an empty function restores the system.
using ShellOpenSink = std::function<bool(const std::wstring& target, int showCommand)>;
void setShellOpenSink(ShellOpenSink sink);

// The system's shell: a path opened with COM initialised first, an address opened as it is.
bool systemShellOpenPath(const std::wstring& path);
void systemShellOpenUrl(const std::wstring& url);
