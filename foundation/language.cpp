#include "foundation/language.h"

#include "foundation/message_catalogue.h"
#include "foundation/registry.h"

namespace {

const std::string productKey = "Software\\Ormal Co\\CorvaniteHost";
const std::string languageValue = "Language";
// The first start, before anything was stored, is in Russian.
const std::string defaultCode = "1049";

} // namespace

const std::map<std::string, Language> languageCodes = {
    {"1049", Language::Russian},
    {"1033", Language::English},
    {"1058", Language::Ukrainian},
};

void applyLanguage(int language) {
    commonMessages.setLanguage(language);
    serviceMessages.setLanguage(language);
    panelMessages.setLanguage(language);
    for (const auto& [code, codeLanguage] : languageCodes) {
        if (codeLanguage == language) {
            writeRegistryText(RegistryHive::CurrentUser, productKey, languageValue, code);
            return;
        }
    }
}

Language languageFromCode(const std::optional<std::string>& code) {
    const auto found = languageCodes.find(code.value_or(defaultCode));
    return found == languageCodes.end() ? Language::Ukrainian : found->second;
}

Language startupLanguage() {
    try {
        return languageFromCode(
            readRegistryText(RegistryHive::CurrentUser, productKey, languageValue));
    } catch (...) {
        return Language::Ukrainian;
    }
}
