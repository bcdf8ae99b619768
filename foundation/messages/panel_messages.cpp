#include "foundation/messages/panel_messages.h"
#include "foundation/message_catalogue.h"
#include "foundation/messages/message_row.h"

#include <algorithm>
#include <string_view>

namespace {

// The control panel's own words: menu, window labels, its failures and the
// information report.
// One row per line, in id order: id, Russian, English, Ukrainian.
// clang-format off
constexpr MessageRow panelMessageRows[] = {
    {"CVCP-000001", "Запустить",  "Run",     "Запустити"},
    {"CVCP-000002", "Остановить", "Stop",    "Зупинити"},
    {"CVCP-000003", "д. : ",      "d. : ",   "д. : "},
    {"CVCP-000004", "ч. : ",      "h. : ",   "г. : "},
    {"CVCP-000005", "м. : ",      "m. : ",   "х. : "},
    {"CVCP-000006", "с.",         "s.",      "с."},
    {"CVCP-000007", "Да",         "Yes",     "Так"},
    {"CVCP-000008", "Нет",        "No",      "Ні"},
    {"CVCP-000009", "Запущен",    "Running", "Запущений"},
    {"CVCP-000010", "Остановлен", "Stopped", "Зупинений"},
    {"CVCP-000011", "Сбой",       "Failed",  "Збій"},
    {"CVCP-000012", "Сервер постоянно останавливается, а журнал ошибок не указывает причину", "The server keeps stopping, and its error log doesn't say why", "Сервер постійно зупиняється, а журнал помилок не вказує причину"},
    {"CVCP-000013", "Порт %1 занят", "Port %1 is held", "Порт %1 зайнятий"},

    {"CVCP-001001", "Панель управления Corvanite", "Corvanite Control Panel", "Панель управління Corvanite"},

    {"CVCP-002001", "Управление", "Management", "Керування"},
    {"CVCP-002002", "Настройки",  "Settings",   "Налаштування"},

    {"CVCP-003001", "Панель управления", "Control panel", "Панель управління"},
    {"CVCP-003002", "Выход",             "Exit",          "Вихід"},
    {"CVCP-003003", "Удалить",           "Uninstall",     "Видалити"},

    {"CVCP-004001", "OK",                         "OK",                      "OK"},
    {"CVCP-004002", "Журналы",                    "Logs",                    "Журнали"},
    {"CVCP-004101", "<a>Получить информацию</a>", "<a>Get information</a>",  "<a>Отримати інформацію</a>"},
    {"CVCP-004102", "<a>Сообщить о проблеме</a>", "<a>Report a problem</a>", "<a>Повідомити про проблему</a>"},
    {"CVCP-004103", "%1: идёт сбор отчёта для службы поддержки", "%1: collecting the report for support", "%1: триває збирання звіту для служби підтримки"},

    {"CVCP-005001", "Версия хост-приложения:",                         "Host application version:",  "Версія хост-застосунку:"},
    {"CVCP-005002", "Версия библиотеки:",                              "Library version:",           "Версія бібліотеки:"},
    {"CVCP-005003", "Версия:",                                         "Version:",                   "Версія:"},
    {"CVCP-005004", "Порт:",                                           "Port:",                      "Порт:"},
    {"CVCP-005005", "Адрес:",                                          "Address:",                   "Адреса:"},
    {"CVCP-005006", "Состояние сервера:",                              "Server status:",             "Стан сервера:"},
    {"CVCP-005007", "Время работы:",                                   "Operating time:",            "Час работи:"},
    {"CVCP-005008", "Язык:",                                           "Language:",                  "Мова:"},
    {"CVCP-005009", "Уровень журналирования:\n(требуется перезапуск)", "Log level:\n(need reload)",  "Рівень журналювання:\n(потребує перезапуску)"},
    {"CVCP-005101", "Русский",                                         "Russian",                    "Російська"},
    {"CVCP-005102", "Английский",                                      "English",                    "Англійська"},
    {"CVCP-005103", "Украинский",                                      "Ukrainian",                  "Українська"},
    {"CVCP-005201", "Ошибки",                                          "Errors",                     "Помилки"},
    {"CVCP-005202", "Информация",                                      "Information",                "Інформація"},
    {"CVCP-005203", "Подробный",                                       "Verbose",                    "Докладний"},
    {"CVCP-005401", "Автовыбор порта",                                 "Port autoselection",         "Автовибір порту"},
    {"CVCP-005402", "Разрешить использование UNC-путей",               "Allow to use the UNC paths", "Дозволити використання UNC-шляхів"},

    {"CVCP-006001", "Ошибка запуска панели управления",                   "Failed to run Control Panel",                       "Помилка запуску панелі управління"},
    {"CVCP-006002", "Ошибка создания элемента меню панели управления",    "Error creating control panel menu element",         "Помилка створення елемента меню панелі управління"},
    {"CVCP-006003", "Ошибка добавления элемента меню панели управления",  "Error adding control panel menu element",           "Помилка додавання елемента меню панелі управління"},
    {"CVCP-006004", "Ошибка удаления элемента меню панели управления",    "Error removing control panel menu element",         "Помилка видалення елемента меню панелі управління"},
    {"CVCP-006005", "Ошибка обновления элемента меню панели управления",  "Error updating control panel menu element",         "Помилка оновлення елемента меню панелі управління"},
    {"CVCP-006006", "Ошибка создания виджета панели управления",          "Error creating control panel widget element",       "Помилка створення віджета панелі управління"},
    {"CVCP-006007", "Ошибка создания надписи панели управления",          "Error creating control panel label element",        "Помилка створення напису панелі управління"},
    {"CVCP-006008", "Ошибка создания кнопки панели управления",           "Error creating control panel button element",       "Помилка створення кнопки панелі управління"},
    {"CVCP-006009", "Ошибка регистрации окна панели управления",          "Error registering control panel window",            "Помилка реєстрації вікна панелі управління"},
    {"CVCP-006010", "Произошла ошибка во время процесса %1 %2",           "An error occurred during the %1 process of %2",     "Сталася помилка під час процесу %1 %2"},
    {"CVCP-006011", "запуска",                                            "startup",                                           "запуску"},
    {"CVCP-006012", "остановки",                                          "stop",                                              "зупинки"},
    {"CVCP-006013", "Ошибка инициализации данных панели управления",      "Error data initializing of control panel",          "Помилка ініціалізації даних панелі управління"},
    {"CVCP-006014", "Ошибка запуска приложения",                          "Failed to run application",                         "Помилка запуску застосунку"},
    {"CVCP-006015", "Ошибка остановки приложения",                        "Failed to stop application",                        "Помилка зупинки застосунку"},
    {"CVCP-006016", "Внутренняя ошибка",                                  "Internal error",                                    "Внутрішня помилка"},
    {"CVCP-006017", "Ошибка открытия папки журналов",                     "Failed to open directory with logs",                "Помилка відкриття папки журналів"},
    {"CVCP-006018", "Отсутствуют файлы необходимые для запуска/остановки приложения %1", "Files needed for running/stopping %1 application are missed", "Відсутні файли, необхідні для запуску/зупинки застосунку %1"},
    {"CVCP-006019", "Ошибка создания окна панели управления",             "Error creating control panel window",               "Помилка створення вікна панелі управління"},
    {"CVCP-006021", "Ошибка запуска приложения \"%1\"",                   "Error running application\"%1\"",                   "Помилка запуску застосунку \"%1\""},
    {"CVCP-006022", "Вы действительно хотите удалить \"%1\" и все его компоненты?", "Are you really want to remove \"%1\" and all its components?", "Ви дійсно бажаєте видалити \"%1\" і всі його компоненти?"},
    {"CVCP-006023", "Произошла ошибка во время процесса удаления \"%1\"", "An error occurred during the uninstallation process of \"%1\"", "Сталася помилка під час процесу видалення \"%1\""},
    {"CVCP-006024", "Ошибка создания ссылки панели управления",           "Error creating control panel syslink element",      "Помилка створення посилання панелі управління"},
    {"CVCP-006025", "Ошибка создания раскрывающегося списка панели управления", "Error creating control panel combobox element",     "Помилка створення випадаючого списку панелі управління"},
    {"CVCP-006026", "изменения уровня журналирования",                    "change loglevel",                                   "зміни рівня журналювання"},
    {"CVCP-006027", "Ошибка создания флажка панели управления",           "Error creating control panel checkbox element",     "Помилка створення прапорця панелі управління"},
    {"CVCP-006028", "Сервер не может быть запущен из папки \"%1\": её имя нельзя записать в кодовой странице системы %2, а короткого имени у папки нет.\nУстановите программу в папку, имя которой состоит только из латинских букв.", "The server can't be started from the folder \"%1\": its name can't be written in the system's code page %2, and the folder has no short name.\nInstall the program into a folder whose name has Latin letters only.", "Сервер не може бути запущений з папки \"%1\": її ім'я не можна записати в кодовій сторінці системи %2, а короткого імені папка не має.\nВстановіть програму в папку, ім'я якої складається лише з латинських літер."},
    {"CVCP-006101", "Ошибка открытия файла конфигурации nginx",           "Can not open the nginx config-file",                "Помилка відкриття файлу конфігурації nginx"},
    {"CVCP-006102", "Ошибка перезапуска сервера.\nНажмине \"Запустить\" вручную", "Error reload server.\nPlease press \"Run\"manualy", "Помилка перезавантаження сервера.\nНатисніть \"Запустити\" вручну"},
    {"CVCP-006103", "Ошибка очистки кэша",                                "Error of cache clear",                              "Помилка очищення кешу"},
    {"CVCP-006104", "Ошибка установки языка приложения",                  "Error of set application language locale",          "Помилка встановлення мови застосунку"},
    {"CVCP-006105", "Вы отключили автоматический выбор порта при запуске сервера.\nДля корректной работы укажите свободный порт в файле конфигурации и перезапустите сервер.", "You have disabled automatic port selection at server start.\nFor correct work, enter free port in the configuration file and restart server.", "Ви вимкнули автоматичний вибір порту під час запуску сервера.\nДля коректної роботи вкажіть вільний порт у файлі конфігурації та перезапустіть сервер."},
    {"CVCP-006106", "Сервер не может запуститься: порт %1 занят.", "The server can't start: port %1 is held.", "Сервер не може запуститися: порт %1 зайнятий."},
    {"CVCP-006107", "Порт занимает %1 (процесс %2).", "It is held by %1 (process %2).", "Порт займає %1 (процес %2)."},
    {"CVCP-006108", "Порт занимает служба Windows \"%1\".", "It is held by the Windows service \"%1\".", "Порт займає служба Windows \"%1\"."},
    {"CVCP-006109", "Порт занимает HTTP-служба Windows (http.sys).", "It is held by the Windows HTTP service (http.sys).", "Порт займає HTTP-служба Windows (http.sys)."},
    {"CVCP-006110", "Порт зарезервирован Windows.", "It is reserved by Windows.", "Порт зарезервований Windows."},

    {"CVCP-007001", "Ошибка запуска почтового клиента", "Error launching the email-app", "Помилка запуску поштового клієнта"},
    {"CVCP-007002", "Почтовый клиент %1 не поддерживается для отправки сообщения в службу поддержки.\nВыберите другое приложение по умолчанию для электронной почты.", "%1 is not supported. Please change the default email application.", "Поштовий клієнт %1 не підтримується для відправки повідомлення у службу підтримки.\nОберіть інший застосунок за замовчанням для електронної пошти."},

    {"CVCP-008001", "Путь установки: ",                             "Install path: ",                                         "Шлях встановлення: "},
    {"CVCP-008002", "Пользователь: ",                               "User: ",                                                 "Користувач: "},
    {"CVCP-008003", " (администратор)",                             " (admin)",                                               " (адміністратор)"},
    {"CVCP-008004", "Информация о системе: %1 %2 x%3%4%5",          "OS info: %1 %2 x%3%4%5",                                 "Інформація про систему: %1 %2 x%3%4%5"},
    {"CVCP-008005", ", версия пакета обновления: %1",               ", spVersion: %1",                                        ", версія пакета оновлення: %1"},
    {"CVCP-008006", "Антивирус: %1, состояние: %2",                 "Antivirus: %1, state: %2",                               "Антивірус: %1, стан: %2"},
    {"CVCP-008007", "Настройки прокси (%1):\n    Сервер: %2\n    Исключения: %3", "Proxy settings (%1):\n    Server: %2\n    Override: %3", "Налаштування проксі (%1):\n    Сервер: %2\n    Вийнятки: %3"},
    {"CVCP-008008", "Браузеры:",                                    "Browsers:",                                              "Браузери:"},
    {"CVCP-008009", "Доменное имя %1 недоступно",                   "Domain name %1 is not available",                        "Доменне ім'я %1 недоступне"},
    {"CVCP-008010", "Доменное имя %1 доступно по адресам:\n    %2", "Domain name %1 is available from:\n    %2",              "Доменне ім'я %1 доступне за адресами:\n    %2"},
    {"CVCP-008011", "включено",                                     "on",                                                     "увімкнено"},
    {"CVCP-008012", "выключено",                                    "off",                                                    "вимкнено"},
    {"CVCP-008013", " (по умолчанию) ",                             " (default) ",                                            " (за замовчанням) "},
};
// clang-format on

// Every id that the code names is a row of the table.
constexpr bool isRow(std::string_view id) {
    return std::ranges::any_of(panelMessageRows,
                               [id](const MessageRow& row) { return id == row.id; });
}
static_assert(std::ranges::all_of(panelmsg::named, isRow));

} // namespace

MessageCatalogue panelMessages{buildMessageTables(panelMessageRows)};
