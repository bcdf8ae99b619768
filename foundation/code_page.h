#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

// How a program that opens its files through the system's 8-bit ("ANSI") calls sees a name. The
// server, an nginx build, is such a program: it takes its folder as 8-bit text and opens its
// configuration, log and pid files below it. A letter that the code page lacks comes to it as "?"
// or as a look-alike, and the file isn't found.
namespace codepage {

// One 8-bit code page in both directions. `narrow` sets `usedDefault` when a letter had no byte
// of its own and a stand-in took its place; it never maps a letter to a look-alike.
struct Conversion {
    std::function<std::string(std::wstring_view text, bool& usedDefault)> narrow;
    std::function<std::wstring(std::string_view bytes)> widen;
};

// True when the text survives the way through the code page: every letter has a byte of its
// own, and those bytes give the same text back.
bool survives(std::wstring_view text, const Conversion& conversion);

// The system's 8-bit code page: its number, and the conversion through it.
unsigned systemCodePage();
Conversion systemConversion();

// survives() through the system's code page, for a UTF-8 text.
bool writableInSystemCodePage(std::string_view utf8);

} // namespace codepage
