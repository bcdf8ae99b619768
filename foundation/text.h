#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

// The program's text in its three encodings: code page 1251 for the user's words, UTF-8 for paths
// and system facts, UTF-16 only at wide system calls. The conversions are table-driven and never
// depend on the machine's code page; they never fail, unconvertible input is mapped instead.
// A UTF-16 unit is held in a wchar_t; only its low 16 bits count.

std::wstring fromCp1251(std::string_view cp1251);
std::string cp1251ToUtf8(std::string_view cp1251);
std::string toCp1251(std::wstring_view utf16);
std::string utf16ToUtf8(std::wstring_view utf16);
std::wstring utf8ToUtf16(std::string_view utf8);
std::string utf8ToCp1251(std::string_view utf8);

// Trimming removes bytes 1 to 32; a zero byte and every byte above 127 stay.
std::string trimLeft(std::string_view text);
std::string trimRight(std::string_view text);
std::string trim(std::string_view text);

// ASCII letters only: Cyrillic letters in either encoding stay as they are.
std::string toLower(std::string_view text);

// True only for "true" in any case with blanks around it; "1" and "yes" are false.
bool parseBool(std::string_view text);
std::string boolText(bool value);

std::string joinText(const std::vector<std::string>& items, std::string_view separator);
std::vector<std::string> splitText(const char* text, char delimiter, bool trimTokens, bool unique);
std::map<std::string, std::string> parseKeyValues(const char* text, char separator, bool trimBoth);

// Decimal numbers read as std::stoi and std::stoul read them. Failures keep the standard classes
// and carry the words the user sees on every system: "invalid stoi argument", "stoi argument out of
// range", "invalid stoul argument", "stoul argument out of range".
int readInt(const std::string& text);
unsigned long readUnsigned(const std::string& text);

std::string versionText(unsigned major, unsigned minor, unsigned build, unsigned revision);
bool endsWith(std::string_view text, std::string_view suffix);

// Exchanges the bytes of each pair in place. The pair counter is 16 bits wide, which suits the
// small buffers it is used on; it must not be given 128 KiB or more.
void swapBytePairs(void* buffer, std::size_t length);
