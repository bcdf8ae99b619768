#pragma once

#include <atomic>
#include <map>
#include <span>
#include <string>
#include <string_view>

#include "foundation/messages/common_messages.h"
#include "foundation/messages/message_row.h"
#include "foundation/messages/panel_messages.h"
#include "foundation/messages/service_messages.h"
#include "foundation/messages/zip_messages.h"

// Words of one language, by text id, in code page 1251.
using MessageTable = std::map<std::string, std::string>;
// The three languages' words, keyed by `Language`.
using MessageTables = std::map<int, MessageTable>;

// Replaces %1 to %5 by the arguments, in rising order. A null argument leaves its placeholder
// as it stands; an empty one removes it. After each replacement the search goes on, finding also
// a placeholder that the argument forms with the text around it, but never one inside an argument
// that would otherwise be replaced without end. The text never grows past substitutionCap: there it
// is cut and ends in "…" written in the text's code, and no later argument is put in. The text is
// UTF-8 here; the catalogue's format works on its words in code page 1251.
std::string substitutePlaceholders(std::string_view pattern, const char* a1 = nullptr,
                                   const char* a2 = nullptr, const char* a3 = nullptr,
                                   const char* a4 = nullptr, const char* a5 = nullptr);

// The codes of the program's texts: where a text is cut, "…" is 0x85 in code page 1251 and
// E2 80 A6 in UTF-8, whose letters are never cut in two.
enum class TextCode { utf8, cp1251 };
std::string substitutePlaceholdersIn(TextCode code, std::string_view pattern,
                                     const char* a1 = nullptr, const char* a2 = nullptr,
                                     const char* a3 = nullptr, const char* a4 = nullptr,
                                     const char* a5 = nullptr);

// The template's length plus 4 KiB for each argument that is given.
std::size_t substitutionCap(std::string_view pattern, const char* a1 = nullptr,
                            const char* a2 = nullptr, const char* a3 = nullptr,
                            const char* a4 = nullptr, const char* a5 = nullptr);

// Turns the UTF-8 rows of a catalogue into its three tables of code page 1251 words.
MessageTables buildMessageTables(std::span<const MessageRow> rows);

// A read-only set of the user's words in three languages, addressed by text id.
class MessageCatalogue {
public:
    explicit MessageCatalogue(MessageTables tables);

    // The row's words in the language in force, placeholders untouched. Throws
    // std::out_of_range for an unknown language or id.
    const char* text(const char* id) const;
    // The row's words with the placeholders replaced; unused arguments are null.
    std::string format(const char* id, const char* a1 = nullptr, const char* a2 = nullptr,
                       const char* a3 = nullptr, const char* a4 = nullptr,
                       const char* a5 = nullptr) const;
    // Stores the language without a check: an invalid one shows at the next lookup.
    void setLanguage(int language);

    const MessageTables tables;
    // Written on the window thread, read by background tasks: a lookup during a change may
    // answer in either language.
    std::atomic<int> language;
};

extern MessageCatalogue panelMessages;
extern MessageCatalogue commonMessages;
extern MessageCatalogue serviceMessages;
extern MessageCatalogue zipMessages;
