#include "foundation/code_page.h"

#include "foundation/text.h"

namespace codepage {

bool survives(std::wstring_view text, const Conversion& conversion) {
    bool usedDefault = false;
    const std::string bytes = conversion.narrow(text, usedDefault);
    return !usedDefault && conversion.widen(bytes) == text;
}

bool writableInSystemCodePage(std::string_view utf8) {
    return survives(utf8ToUtf16(utf8), systemConversion());
}

} // namespace codepage
