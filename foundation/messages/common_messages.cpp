#include "foundation/messages/common_messages.h"
#include "foundation/message_catalogue.h"
#include "foundation/messages/message_row.h"

#include <algorithm>
#include <string_view>

namespace {

// The words of the file, registry and library helpers.
// One row per line, in id order: id, Russian, English, Ukrainian.
// clang-format off
constexpr MessageRow commonMessageRows[] = {
    {"CV-0001", "Строка не в формате Base64",                   "String is not Base64",                       "Рядок не у форматі Base64"},
    {"CV-0002", "Ошибка поиска пути к файлу \"%1\"",            "Find file \"%1\" path error ",               "Помилка пошуку шляху до файлу \"%1\""},
    {"CV-0003", "Ошибка загрузки функции \"%1\"",               "Error loading function \"%1\"",              "Помилка завантаження функції \"%1\""},
    {"CV-0004", "Ошибка получения полного пути к папке",        "Error getting full directory path",          "Помилка отримання повного шляху до папки"},
    {"CV-0005", "Строка не в шестнадцатеричном формате",        "String is not hex",                          "Рядок не у шістнадцятковому форматі"},
    {"CV-0006", "Ошибка чтения файла \"%1\"",                   "Error reading file \"%1\"",                  "Помилка читання файлу \"%1\""},
    {"CV-0007", "Ошибка записи файла \"%1\"",                   "Error writing file \"%1\"",                  "Помилка запису файлу \"%1\""},
    {"CV-0008", "Ошибка чтения папки \"%1\"",                   "Error reading folder \"%1\"",                "Помилка читання папки \"%1\""},
    {"CV-0009", "Ошибка чтения библиотеки \"%1\"",              "Error reading library \"%1\"",               "Помилка читання бібліотеки \"%1\""},
    {"CV-0010", "Размер файла \"%1\" меньше допустимого",       "Size of file \"%1\" is less than allowed",   "Розмір файлу \"%1\" менший за допустимий"},
    {"CV-0011", "Размер файла \"%1\" больше допустимого",       "Size of file \"%1\" is larger than allowed", "Розмір файлу \"%1\" більший за допустимий"},
    {"CV-0012", "Ошибка переименования файла \"%1\"",           "Error renaming file \"%1\"",                 "Помилка перейменування файлу \"%1\""},
    {"CV-0013", "Ошибка получения прав доступа к файлу \"%1\"", "Error getting rights for file \"%1\"",       "Помилка отримання прав доступу до файлу \"%1\""},
    {"CV-0014", "Ошибка получения случайных данных",            "Error getting random data",                  "Помилка отримання випадкових даних"},
    {"CV-0015", "Ошибка открытия реестра Windows",              "Error open Windows registry",                "Помилка відкриття реєстру Windows"},
    {"CV-0016", "Ошибка запроса значения реестра",              "Error query to registry variable",           "Помилка запиту значення реєстру"},
    {"CV-0017", "Ошибка установки значения реестра",            "Error set value to registry variable",       "Помилка встановлення значення реєстру"},
    {"CV-0018", "Ошибка удаления раздела реестра",              "Error delete of registry key",               "Помилка видалення розділу реєстру"},
};
// clang-format on

// Every id that the code names is a row of the table.
constexpr bool isRow(std::string_view id) {
    return std::ranges::any_of(commonMessageRows,
                               [id](const MessageRow& row) { return id == row.id; });
}
static_assert(std::ranges::all_of(commonmsg::named, isRow));

} // namespace

MessageCatalogue commonMessages{buildMessageTables(commonMessageRows)};
