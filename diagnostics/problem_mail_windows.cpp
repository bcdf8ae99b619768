#include "diagnostics/problem_mail.h"

#include <windows.h>

#include <shellapi.h>

void openMailLink(const std::string& link) {
    // The narrow call takes the code page 1251 bytes of the link as they are.
    ShellExecuteA(nullptr, "open", link.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}
