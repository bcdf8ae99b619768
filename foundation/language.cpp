#include "foundation/language.h"

#include "foundation/message_catalogue.h"
#include "foundation/registry.h"

namespace {

const std::string productKey = "Software\\Ormal Co\\CorvaniteHost";
const std::string languageValue = "Language";
// Before the first start nothing is stored, and the first start is in Russian.
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
    storeLanguageCode(productKey, language);
}

Language languageFromCode(const std::optional<std::string>& code) {
    const auto found = languageCodes.find(code.value_or(defaultCode));
    return found == languageCodes.end() ? Language::Ukrainian : found->second;
}

Language storedLanguage(std::string_view keyPath) {
    try {
        return languageFromCode(
            readRegistryText(RegistryHive::CurrentUser, keyPath, languageValue));
    } catch (...) {
        return Language::Ukrainian;
    }
}

void storeLanguageCode(std::string_view keyPath, int language) {
    // The map has no inverse: the first code in key order that names the language is stored.
    for (const auto& [code, codeLanguage] : languageCodes) {
        if (codeLanguage == language) {
            // A key that the installer didn't make can't take the value; that is no failure.
            writeRegistryText(RegistryHive::CurrentUser, keyPath, languageValue, code);
            return;
        }
    }
}

Language startupLanguage() {
    return storedLanguage(productKey);
}
