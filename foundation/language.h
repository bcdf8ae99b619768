#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>

// The user's language. The numbers are the keys of the catalogue tables and the positions
// of the language list in the window.
enum Language : int { Russian = 0, English = 1, Ukrainian = 2 };

// Windows language code text to language, sorted by code.
extern const std::map<std::string, Language> languageCodes;

// Switches the catalogues to the language and stores its code in the registry. The archive
// writer's catalogue keeps its own language.
void applyLanguage(int language);

// The language for a stored code: no code means Russian, an unknown one Ukrainian.
Language languageFromCode(const std::optional<std::string>& code);

// The language stored in the value "Language" of a key under HKEY_CURRENT_USER; any failure on
// the way gives Ukrainian.
Language storedLanguage(std::string_view keyPath);

// Stores the code of the language in the value "Language" of a key under HKEY_CURRENT_USER; a
// language without a code stores nothing.
void storeLanguageCode(std::string_view keyPath, int language);

// The language stored in the product's registry key, for the program's start.
Language startupLanguage();
