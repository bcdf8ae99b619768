#include "foundation/code_page.h"

#include "foundation/text.h"

// The narrow calls of a POSIX system take a name's UTF-8 bytes as they stand: every name can be
// written.
namespace codepage {

unsigned systemCodePage() {
    return 65001;
}

Conversion systemConversion() {
    return {[](std::wstring_view text, bool& usedDefault) {
                usedDefault = false;
                return utf16ToUtf8(text);
            },
            [](std::string_view bytes) { return utf8ToUtf16(bytes); }};
}

} // namespace codepage
