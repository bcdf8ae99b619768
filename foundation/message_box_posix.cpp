#include "foundation/message_box.h"

#include <cstdio>

#include "foundation/text.h"

// Without a window system the box becomes a line on standard error.
void systemMessageBox(const std::wstring& caption, const std::wstring& text, unsigned flags) {
    std::fprintf(stderr, "[%s] (0x%x) %s\n", utf16ToUtf8(caption).c_str(), flags,
                 utf16ToUtf8(text).c_str());
}
