#pragma once

#include <windows.h>

#include <functional>
#include <string>

// The background behind static controls: white up to Windows 10, the light grey of the window
// background on Windows 11. The text colour is left to the system.

// Makes the control's text background transparent and gives the brush for its background.
HBRUSH staticControlBrush(HDC context);

// The generation of Windows from the system facts' version name, read once and kept: "10" and
// "11" are what is expected; a name that doesn't begin with a number ("XP", "Vista", a server's
// name), or any failure while asking, counts as 10.
int osGenerationOf(const std::function<std::string()>& versionName);
