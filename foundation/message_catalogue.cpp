#include "foundation/message_catalogue.h"

#include <stdexcept>
#include <utility>
#include <vector>

#include "foundation/language.h"
#include "foundation/text.h"

namespace {

const char* const lookupFailure = "invalid map<K, T> key";

// One language's column of the rows, in id order, as code page 1251 words.
MessageTable column(std::span<const MessageRow> rows, const char* MessageRow::*words) {
    std::vector<std::pair<std::string, std::string>> pairs;
    pairs.reserve(rows.size());
    for (const MessageRow& row : rows) {
        pairs.emplace_back(row.id, utf8ToCp1251(row.*words));
    }
    return MessageTable(pairs.begin(), pairs.end());
}

} // namespace

namespace {

// Whether searching the text again after each replacement would never end: the argument holds its
// own placeholder, or it begins with the placeholder's digit twice and ends with two percent signs,
// so that a copy standing behind a percent sign builds the placeholder again, once at its start
// and once more at its end each time round.
bool rebuildsPlaceholder(std::string_view argument, std::string_view placeholder) {
    const char digit = placeholder.back();
    return argument.find(placeholder) != std::string_view::npos ||
           (argument.starts_with(std::string{digit, digit}) && argument.ends_with("%%"));
}

// Room that each given argument adds to the template's length. A longer text is cut there.
constexpr std::size_t roomPerArgument = 4 * 1024;
// "…" in each code of the program's texts.
std::string_view ellipsisIn(TextCode code) {
    return code == TextCode::cp1251 ? std::string_view("\x85") : std::string_view("\xE2\x80\xA6");
}

bool continuesALetter(TextCode code, char byte) {
    return code == TextCode::utf8 && (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

// The text cut to the cap, ending in the ellipsis; a UTF-8 letter is never cut in two.
void cutAt(std::string& result, std::size_t cap, TextCode code) {
    const std::string_view ellipsis = ellipsisIn(code);
    std::size_t keep = cap - ellipsis.size();
    while (keep > 0 && continuesALetter(code, result[keep])) {
        --keep;
    }
    result.resize(keep);
    result.append(ellipsis);
}

// Replaces every occurrence of the placeholder, including those that a replacement forms with
// the text around it. The text before a replaced place holds none, so each search goes on from
// the character in front of the argument just inserted; behind it, when the argument could build
// its placeholder without end, so the inserted words are never searched for it again. Returns
// false when the text passed the cap and was cut: an argument can grow it manifold per byte.
bool replaceAll(std::string& result, std::string_view placeholder, std::string_view argument,
                std::size_t cap, TextCode code) {
    const bool skipInserted = rebuildsPlaceholder(argument, placeholder);
    std::size_t from = 0;
    while (!result.empty()) {
        const std::size_t at = result.find(placeholder, from);
        if (at == std::string::npos) {
            return true;
        }
        result.replace(at, placeholder.size(), argument);
        if (result.size() > cap) {
            cutAt(result, cap, code);
            return false;
        }
        const std::size_t next = skipInserted ? at + argument.size() : at;
        from = next == 0 ? 0 : next - 1;
    }
    return true;
}

} // namespace

std::size_t substitutionCap(std::string_view pattern, const char* a1, const char* a2,
                            const char* a3, const char* a4, const char* a5) {
    std::size_t given = 0;
    for (const char* argument : {a1, a2, a3, a4, a5}) {
        given += argument != nullptr ? 1 : 0;
    }
    return pattern.size() + roomPerArgument * given;
}

std::string substitutePlaceholdersIn(TextCode code, std::string_view pattern, const char* a1,
                                     const char* a2, const char* a3, const char* a4,
                                     const char* a5) {
    std::string result(pattern);
    const std::size_t cap = substitutionCap(pattern, a1, a2, a3, a4, a5);
    const char* const arguments[] = {a1, a2, a3, a4, a5};
    for (int i = 1; i <= 5; ++i) {
        if (arguments[i - 1] != nullptr) {
            // An argument carrying a later placeholder gets it replaced on that one's pass.
            const std::string placeholder{'%', static_cast<char>('0' + i)};
            if (!replaceAll(result, placeholder, arguments[i - 1], cap, code)) {
                break;
            }
        }
    }
    return result;
}

std::string substitutePlaceholders(std::string_view pattern, const char* a1, const char* a2,
                                   const char* a3, const char* a4, const char* a5) {
    return substitutePlaceholdersIn(TextCode::utf8, pattern, a1, a2, a3, a4, a5);
}

MessageTables buildMessageTables(std::span<const MessageRow> rows) {
    MessageTable russian = column(rows, &MessageRow::russian);
    MessageTable ukrainian = column(rows, &MessageRow::ukrainian);
    MessageTable english = column(rows, &MessageRow::english);
    std::pair<int, MessageTable> languages[] = {{Language::Russian, std::move(russian)},
                                                {Language::Ukrainian, std::move(ukrainian)},
                                                {Language::English, std::move(english)}};
    return MessageTables(std::make_move_iterator(std::begin(languages)),
                         std::make_move_iterator(std::end(languages)));
}

MessageCatalogue::MessageCatalogue(MessageTables tables)
    : tables(std::move(tables)), language(Language::Ukrainian) {}

const char* MessageCatalogue::text(const char* id) const {
    const auto table = tables.find(language.load(std::memory_order_relaxed));
    if (table == tables.end()) {
        throw std::out_of_range(lookupFailure);
    }
    const auto row = table->second.find(id);
    if (row == table->second.end()) {
        throw std::out_of_range(lookupFailure);
    }
    return row->second.c_str();
}

std::string MessageCatalogue::format(const char* id, const char* a1, const char* a2, const char* a3,
                                     const char* a4, const char* a5) const {
    return substitutePlaceholdersIn(TextCode::cp1251, text(id), a1, a2, a3, a4, a5);
}

void MessageCatalogue::setLanguage(int language) {
    this->language.store(language, std::memory_order_relaxed);
}
