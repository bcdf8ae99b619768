#include "diagnostics/problem_mail.h"

#include <windows.h>

#include <shellapi.h>

#include "foundation/text.h"

void openMailLink(const std::string& link) {
    // The link's words are code page 1251; the wide call keeps them on a system of any code page.
    ShellExecuteW(nullptr, L"open", fromCp1251(link).c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}
