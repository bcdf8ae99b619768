#include "foundation/messages/zip_messages.h"
#include "foundation/message_catalogue.h"
#include "foundation/messages/message_row.h"

#include <algorithm>
#include <string_view>

namespace {

// The archive writer's words.
// One row per line, in id order: id, Russian, English, Ukrainian.
// clang-format off
constexpr MessageRow zipMessageRows[] = {
    {"Z-0001", "Ошибка распаковки ZIP", "Archive unpacking error", "Помилка розпакування ZIP"},
    {"Z-0002", "Ошибка упаковки ZIP",   "Archive packing error",   "Помилка пакування ZIP"},
};
// clang-format on

// Every id that the code names is a row of the table.
constexpr bool isRow(std::string_view id) {
    return std::ranges::any_of(zipMessageRows,
                               [id](const MessageRow& row) { return id == row.id; });
}
static_assert(std::ranges::all_of(zipmsg::named, isRow));

} // namespace

MessageCatalogue zipMessages{buildMessageTables(zipMessageRows)};
