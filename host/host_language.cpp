#include "host/host_facts.h"

#include <string>

#include "foundation/registry.h"

namespace {

constexpr std::string_view productKey = "Software\\Ormal Co\\CorvaniteHost";
constexpr std::string_view languageValue = "Language";
constexpr const char* russianCode = "1049";

} // namespace

Language readLanguage() {
    try {
        const auto code = readRegistryText(RegistryHive::CurrentUser, productKey, languageValue);
        return languageCodes.at(code.value_or(russianCode));
    } catch (...) {
        return Language::Ukrainian;
    }
}
