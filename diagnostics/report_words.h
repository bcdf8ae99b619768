#pragma once

#include <string>

// The reports are UTF-8 text, like every other fact about the machine, while the catalogue keeps
// the user's words in code page 1251. These two bring a panel catalogue row into the report.

// The row's words in the language in force, as UTF-8.
std::string reportWords(const char* id);

// The row's words as UTF-8 with the placeholders replaced by UTF-8 arguments; unused ones are null.
std::string formatReportWords(const char* id, const char* a1 = nullptr, const char* a2 = nullptr,
                              const char* a3 = nullptr, const char* a4 = nullptr,
                              const char* a5 = nullptr);
