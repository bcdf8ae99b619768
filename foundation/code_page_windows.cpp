#include "foundation/code_page.h"

#include <windows.h>

namespace codepage {

namespace {

std::string toAnsi(std::wstring_view text, bool& usedDefault) {
    usedDefault = false;
    if (text.empty()) {
        return {};
    }
    const int length = static_cast<int>(text.size());
    // No best fit: "é" must not pass as "e" under code page 1251, a name that doesn't exist. A
    // system whose 8-bit code page is UTF-8 takes neither the flag nor the question.
    const bool utf8 = GetACP() == CP_UTF8;
    const DWORD flags = utf8 ? 0 : WC_NO_BEST_FIT_CHARS;
    const int size =
        WideCharToMultiByte(CP_ACP, flags, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size > 0 ? size : 0), '\0');
    BOOL defaulted = FALSE;
    if (size <= 0 || WideCharToMultiByte(CP_ACP, flags, text.data(), length, bytes.data(), size,
                                         nullptr, utf8 ? nullptr : &defaulted) != size) {
        usedDefault = true;
        return {};
    }
    usedDefault = defaulted != FALSE;
    return bytes;
}

std::wstring fromAnsi(std::string_view bytes) {
    if (bytes.empty()) {
        return {};
    }
    const int length = static_cast<int>(bytes.size());
    const int size = MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(size > 0 ? size : 0), L'\0');
    if (size <= 0 ||
        MultiByteToWideChar(CP_ACP, 0, bytes.data(), length, text.data(), size) != size) {
        return {};
    }
    return text;
}

} // namespace

unsigned systemCodePage() {
    return GetACP();
}

Conversion systemConversion() {
    return {toAnsi, fromAnsi};
}

} // namespace codepage
