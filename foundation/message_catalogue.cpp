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

std::string substitutePlaceholders(std::string_view pattern, const char* a1, const char* a2,
                                   const char* a3, const char* a4, const char* a5) {
    std::string result(pattern);
    const char* const arguments[] = {a1, a2, a3, a4, a5};
    for (int i = 1; i <= 5; ++i) {
        const char* argument = arguments[i - 1];
        if (argument == nullptr) {
            continue;
        }
        const std::string placeholder{'%', static_cast<char>('0' + i)};
        // Searching from the start each time lets an argument carry a later placeholder.
        while (!result.empty()) {
            const std::size_t at = result.find(placeholder);
            if (at == std::string::npos) {
                break;
            }
            result.replace(at, placeholder.size(), argument);
        }
    }
    return result;
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
    return substitutePlaceholders(text(id), a1, a2, a3, a4, a5);
}

void MessageCatalogue::setLanguage(int language) {
    this->language.store(language, std::memory_order_relaxed);
}
