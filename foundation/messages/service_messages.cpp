#include "foundation/messages/service_messages.h"
#include "foundation/message_catalogue.h"
#include "foundation/messages/message_row.h"

#include <algorithm>
#include <string_view>

namespace {

// The words of the signing client: sessions, client properties, PIN and password
// entry, file access, keys, commands and update. Most rows have no user in the panel
// and are kept so that the shared ids keep their words.
// One row per line, in id order: id, Russian, English, Ukrainian.
// clang-format off
constexpr MessageRow serviceMessageRows[] = {
    {"CV-001001", "Сеанс не распознан или уже закрыт", "Session is not recognized or already closed", "Сеанс не розпізнано або вже закрито"},
    {"CV-001002", "Ошибка открытия сеанса",            "Failed to open session",                      "Помилка відкриття сеансу"},

    {"CV-002001", "Размер данных больше допустимого",   "Data size more than allowed", "Розмір даних більший за допустимий"},
    {"CV-002002", "Ошибка записи клиентского свойства", "Write client property error", "Помилка запису клієнтської властивості"},
    {"CV-002003", "Клиентское свойство не установлено", "Client property is not set",  "Клієнтська властивість на встановлена"},

    {"CV-003001", "Ошибка инициализации графического интерфейса",           "GUI initialization error",                       "Помилка ініціалізації графічного інтерфейсу"},
    {"CV-003002", "PIN-код",                                                "PIN-code",                                       "PIN-код"},
    {"CV-003003", "PIN-коды",                                               "PIN-codes",                                      "PIN-коди"},
    {"CV-003004", "PIN-кода",                                               "of PIN-code",                                    "PIN-коду"},
    {"CV-003005", "Пароль",                                                 "Password",                                       "Пароль"},
    {"CV-003006", "пароли",                                                 "passwords",                                      "паролі"},
    {"CV-003007", "пароля",                                                 "of password",                                    "пароля"},
    {"CV-003008", "должен содержать хотя бы одну заглавную букву",          "must contain at least one letter in upper case", "має містити хоча б одну велику літеру"},
    {"CV-003009", "должен содержать хотя бы одну строчную букву",           "must contain at least one letter in lower case", "має містити хоча б одну малу літеру"},
    {"CV-003010", "должен содержать хотя бы одну цифру",                    "must contain at least one digital charachter",   "має містити хоча б одну цифру"},
    {"CV-003011", "должен содержать хотя бы один специальный символ",       "must contain at least one special charachter",   "має містити хоча б один спеціальний символ"},
    {"CV-003012", "Заполните поля ввода \"%1\"",                            "Fill input fields \"%1\"",                       "Заповніть поля введення \"%1\""},
    {"CV-003013", "Допустимая длина %1 от %2 до %3 символов",               "Allowed length of %1 from %2 to %3 charachters", "Допустима довжина %1 від %2 до %3 символів"},
    {"CV-003014", "Введенные %1 не совпадают",                              "Entered %1 are not match",                       "Введені %1 не збігаються"},
    {"CV-003015", "Новый PIN-код",                                          "New PIN-code",                                   "Новий PIN-код"},
    {"CV-003016", "Подтверждение PIN-кода",                                 "Confirm PIN-code",                               "Підтвердження PIN-коду"},
    {"CV-003017", "Новый пароль",                                           "New password",                                   "Новий пароль"},
    {"CV-003018", "Подтверждение пароля",                                   "Confirm password",                               "Підтвердження пароля"},
    {"CV-003019", "%1 совпадает с текущим",                                 "%1 match with current",                          "%1 збігається з поточним"},
    {"CV-003020", "не должен содержать многократно повторяющихся символов", "must not contain multiple repeated characters",  "не має містити багаторазово повторюваних символів"},
    {"CV-003021", "не должен содержать последовательностей символов из словаря", "must not contain character sequences from the dictionary", "не має містити послідовностей символів зі словника"},
    {"CV-003022", "не должен содержать повторяющихся или зеркальных последовательностей символов", "must not contain repeated or reflected sequences of symbols", "не має містити повторюваних або дзеркальних послідовностей символів"},
    {"CV-003023", "должен соответствовать требованиям банка",               "must meet the bank's requirements",              "має відповідати вимогам банку"},

    {"CV-004001", "запись файлов",                                          "writing files",                                     "запис файлів"},
    {"CV-004002", "чтение файлов",                                          "reading files",                                     "читання файлів"},
    {"CV-004003", "поиск файлов",                                           "searching files",                                   "пошук файлів"},
    {"CV-004004", "удаление файлов",                                        "removing files",                                    "видалення файлів"},
    {"CV-004005", "Разрешить использование \"%1\" для операции: %2?",       "Allow to use \"%1\" for %2?",                       "Дозволити використання \"%1\" для операції: %2?"},
    {"CV-004006", "Доступ к операции",                                      "Operation access",                                  "Доступ до операції"},
    {"CV-004007", "Не получено разрешение на выполнение файловой операции", "Not received permission to perform file operation", "Не отримано дозволу на виконання файлової операції"},
    {"CV-004008", "Превышен максимальный общий размер файлов",              "Maximum total files size exceeded",                 "Перевищено максимальний загальний розмір файлів"},
    {"CV-004009", "Ошибка генерации ключей шифрования",                     "Error generating encryption keys",                  "Помилка генерації ключів шифрування"},
    {"CV-004010", "Ошибка шифрования",                                      "Encryption error",                                  "Помилка шифрування"},
    {"CV-004011", "Ошибка расшифрования",                                   "Decryption error",                                  "Помилка розшифрування"},

    {"CV-005001", "Генератор случайных чисел не инициализирован", "The RNG generator is not initialized", "Генератор випадкових чисел не ініціалізовано"},

    {"CV-006001", "Неизвестная команда", "Unknown command",      "Невідома команда"},
    {"CV-006002", "Внутренняя ошибка",   "Internal error",       "Внутрішня помилка"},
    {"CV-006003", "Неверные параметры",  "Incorrect parameters", "Некоректні параметри"},
    {"CV-006004", "Пустые данные",       "Empty data",           "Порожні дані"},
    {"CV-006005", "Неверный формат: %1", "Incorrect format: %1", "Некоректний формат: %1"},

    {"CV-007001", "Ввод PIN-кода отменен пользователем", "User canceled PIN-code enter", "Введення PIN-коду скасовано користувачем"},
    {"CV-007002", "Ввод пароля отменен пользователем",   "User canceled password enter", "Введення пароля скасовано користувачем"},
    {"CV-007003", "Для токена \"%1\" смена PIN-кода осуществляется в панели управления, которая была установлена вместе с драйвером токена", "PIN-code change for \"%1\" token is performing in control panel which was installed with token driver", "Для токена \"%1\" зміна PIN-коду здійснюється в панелі управління, що була встановлена разом з драйвером токена"},
    {"CV-007004", "Для \"%1\" смена пароля осуществляется в панели управления, которая была установлена вместе с \"%1\"", "Password change for \"%1\" is performing in control panel which was installed with \"%1\"", "Для \"%1\" зміна пароля здійснюється в панелі управління, що була встановлена разом з \"%1\""},

    {"CV-008001", "\"Corvanite\" запущен от имени другого пользователя, чем тот, который запустил браузер.\nПереустановите \"Corvanite\" от имени пользователя, запускающего браузер", "\"Corvanite\" is launched on behalf of a different user than the one who launched the browser.\nPlease reinstall \"Corvanite\" on behalf of the user launching the browser", "\"Corvanite\" запущено від імені іншого користувача, ніж той, що запустив браузер.\nПеревстановіть \"Corvanite\" від імені користувача, який запускає браузер"},
    {"CV-008002", "\"Corvanite\" в процессе завершения работы", "\"Corvanite\" is in shutdowning progress",  "\"Corvanite\" у процесі завершення роботи"},
    {"CV-008003", "Узел \"%1\" запрещен",                       "Host \"%1\" is forbidden",                  "Вузол \"%1\" заборонено"},
    {"CV-008004", "Доменное имя \"%1\" запрещено",              "Domain name \"%1\" is forbidden",           "Доменне ім'я \"%1\" заборонено"},
    {"CV-008006", "Устройство не найдено",                      "Device not found",                          "Пристрій не знайдено"},
    {"CV-008009", "Настройки этого браузера верны",             "The settings for this browser are correct", "Налаштування цього браузера правильні"},

    {"CV-009001", "OK",                                  "OK",                            "OK"},
    {"CV-009002", "Отмена",                              "Cancel",                        "Скасувати"},
    {"CV-009003", "PIN-код:",                            "PIN-code:",                     "PIN-код:"},
    {"CV-009004", "Новый PIN-код:",                      "New PIN-code:",                 "Новий PIN-код:"},
    {"CV-009005", "Введите PIN-код хранилища ключей:",   "Enter PIN-code for keystore:",  "Введіть PIN-код сховища ключів:"},
    {"CV-009006", "Смена PIN-кода хранилища ключей:",    "Change PIN-code for keystore:", "Зміна PIN-коду сховища ключів:"},
    {"CV-009007", "Подтверждение PIN-кода:",             "Confirm PIN-code:",             "Підтвердження PIN-коду:"},
    {"CV-009008", "Имя хранилища ключей",                "Keystore name",                 "Назва сховища ключів"},
    {"CV-009009", "Пароль:",                             "Password:",                     "Пароль:"},
    {"CV-009010", "Новый пароль:",                       "New password:",                 "Новий пароль:"},
    {"CV-009011", "Подтверждение пароля:",               "Confirm password:",             "Підтвердження пароля:"},
    {"CV-009012", "Введите пароль для доступа к ключу:", "Enter password to access key:", "Введіть пароль для доступу до ключа:"},
    {"CV-009013", "Смена пароля ключа:",                 "Change key password:",          "Зміна пароля ключа:"},
    {"CV-009014", "Имя ключа ЭП",                        "DS key name",                   "Назва ключа ЕП"},
    {"CV-009015", "Corvanite",                           "Corvanite",                     "Corvanite"},

    {"CV-010001", "Превышено время ожидания завершения процесса",   "Timeout of closing process exceeded",          "Перевищено час очікування завершення процесу"},
    {"CV-010002", "Неверная конфигурация nginx",                    "Incorrect nginx config",                       "Некоректна конфігурація nginx"},
    {"CV-010003", "Ошибка проверки электронной подписи обновления", "Error verifying digital signature for update", "Помилка перевірки електронного підпису оновлення"},
    {"CV-010004", "Превышено время ожидания файла",                 "File timeout exceeded",                        "Перевищено час очікування файлу"},
    {"CV-010005", "Ошибка обновления сервера",                      "Server update error",                          "Помилка оновлення сервера"},
    {"CV-010006", "Ошибка получения прав доступа к файлу \"%1\"",   "Error getting rights for file \"%1\"",         "Помилка отримання прав доступу до файлу \"%1\""},
    {"CV-010007", "Ошибка запуска панели управления",               "Error running control panel",                  "Помилка запуску панелі управління"},
    {"CV-010009", "Ошибка получения значения переменной окружения", "Error getting environment variable value",     "Помилка отримання значення змінної середовища"},
    {"CV-010010", "Ошибка запуска %1",                              "Error starting %1",                            "Помилка запуску %1"},
    {"CV-010011", "Ошибка проверки электронной подписи \"Corvanite\". Повторите попытку или переустановите \"Corvanite\"", "Error verifying \"Corvanite\" digital signature. Try again or reinstall \"Corvanite\"", "Помилка перевірки електронного підпису \"Corvanite\". Повторіть спробу або перевстановіть \"Corvanite\""},
    {"CV-010012", "Ошибка загрузки \"Corvanite\". Повторите попытку или переустановите \"Corvanite\"", "Error loading \"Corvanite\". Try again or reinstall \"Corvanite\"", "Помилка завантаження \"Corvanite\". Повторіть спробу або перевстановіть \"Corvanite\""},
    {"CV-010013", "Нет ни одного свободного порта в диапазоне %1 - %2. Для корректной работы требуется хотя бы один свободный порт в этом диапазоне", "There is no one free port in range Network port %1 - %2. At least one free port in this range is required for correct work", "Немає жодного вільного порту в діапазоні %1 - %2. Для коректної роботи потрібен хоча б один вільний порт у цьому діапазоні"},
};
// clang-format on

// Every id that the code names is a row of the table.
constexpr bool isRow(std::string_view id) {
    return std::ranges::any_of(serviceMessageRows,
                               [id](const MessageRow& row) { return id == row.id; });
}
static_assert(std::ranges::all_of(servicemsg::named, isRow));

} // namespace

MessageCatalogue serviceMessages{buildMessageTables(serviceMessageRows)};
