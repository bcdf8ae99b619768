#include "foundation/message_catalogue.h"
#include "foundation/messages/message_row.h"

namespace {

// The archive writer's words.
// One row per line, in id order: id, Russian, English, Ukrainian.
// clang-format off
constexpr MessageRow zipMessageRows[] = {
    {"Z-0001", "Ошибка распаковки ZIP", "Archive unpacking error", "Помилка розпакування ZIP"},
    {"Z-0002", "Ошибка упаковки ZIP",   "Archive packing error",   "Помилка пакування ZIP"},
};
// clang-format on

} // namespace

MessageCatalogue zipMessages{buildMessageTables(zipMessageRows)};
