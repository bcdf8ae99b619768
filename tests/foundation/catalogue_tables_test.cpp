// Walks the four catalogues row by row: every language holds every row, the translations
// keep the placeholders and line breaks of the English words, and the fixed words are kept.
#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"

namespace {

struct CatalogueInfo {
    const char* name;
    const MessageCatalogue* catalogue;
    std::size_t rows;
};

const CatalogueInfo catalogues[] = {
    {"panelMessages", &panelMessages, 93},
    {"commonMessages", &commonMessages, 18},
    {"serviceMessages", &serviceMessages, 82},
    {"zipMessages", &zipMessages, 2},
};

const int languages[] = {Language::Russian, Language::English, Language::Ukrainian};

struct EnglishRow {
    const MessageCatalogue* catalogue;
    const char* id;
    const char* english;
};

// Every row of the product with its English words.
// clang-format off
const EnglishRow englishRows[] = {
// panelMessages
    {&panelMessages, "CVCP-000001", "Run"},
    {&panelMessages, "CVCP-000002", "Stop"},
    {&panelMessages, "CVCP-000003", "d. : "},
    {&panelMessages, "CVCP-000004", "h. : "},
    {&panelMessages, "CVCP-000005", "m. : "},
    {&panelMessages, "CVCP-000006", "s."},
    {&panelMessages, "CVCP-000007", "Yes"},
    {&panelMessages, "CVCP-000008", "No"},
    {&panelMessages, "CVCP-000009", "Running"},
    {&panelMessages, "CVCP-000010", "Stopped"},
    {&panelMessages, "CVCP-000011", "Failed"},
    {&panelMessages, "CVCP-000012", "The server keeps stopping, and its error log doesn't say why"},
    {&panelMessages, "CVCP-000013", "Port %1 is held"},
    {&panelMessages, "CVCP-001001", "Corvanite Control Panel"},
    {&panelMessages, "CVCP-002001", "Management"},
    {&panelMessages, "CVCP-002002", "Settings"},
    {&panelMessages, "CVCP-003001", "Control panel"},
    {&panelMessages, "CVCP-003002", "Exit"},
    {&panelMessages, "CVCP-003003", "Uninstall"},
    {&panelMessages, "CVCP-004001", "OK"},
    {&panelMessages, "CVCP-004002", "Logs"},
    {&panelMessages, "CVCP-004101", "<a>Get information</a>"},
    {&panelMessages, "CVCP-004102", "<a>Report a problem</a>"},
    {&panelMessages, "CVCP-004103", "%1: collecting the report for support"},
    {&panelMessages, "CVCP-005001", "Host application version:"},
    {&panelMessages, "CVCP-005002", "Library version:"},
    {&panelMessages, "CVCP-005003", "Version:"},
    {&panelMessages, "CVCP-005004", "Port:"},
    {&panelMessages, "CVCP-005005", "Address:"},
    {&panelMessages, "CVCP-005006", "Server status:"},
    {&panelMessages, "CVCP-005007", "Operating time:"},
    {&panelMessages, "CVCP-005008", "Language:"},
    {&panelMessages, "CVCP-005009", "Log level:\n(need reload)"},
    {&panelMessages, "CVCP-005101", "Russian"},
    {&panelMessages, "CVCP-005102", "English"},
    {&panelMessages, "CVCP-005103", "Ukrainian"},
    {&panelMessages, "CVCP-005201", "Errors"},
    {&panelMessages, "CVCP-005202", "Information"},
    {&panelMessages, "CVCP-005203", "Verbose"},
    {&panelMessages, "CVCP-005401", "Port autoselection"},
    {&panelMessages, "CVCP-005402", "Allow to use the UNC paths"},
    {&panelMessages, "CVCP-006001", "Failed to run Control Panel"},
    {&panelMessages, "CVCP-006002", "Error creating control panel menu element"},
    {&panelMessages, "CVCP-006003", "Error adding control panel menu element"},
    {&panelMessages, "CVCP-006004", "Error removing control panel menu element"},
    {&panelMessages, "CVCP-006005", "Error updating control panel menu element"},
    {&panelMessages, "CVCP-006006", "Error creating control panel widget element"},
    {&panelMessages, "CVCP-006007", "Error creating control panel label element"},
    {&panelMessages, "CVCP-006008", "Error creating control panel button element"},
    {&panelMessages, "CVCP-006009", "Error registering control panel window"},
    {&panelMessages, "CVCP-006010", "An error occurred during the %1 process of %2"},
    {&panelMessages, "CVCP-006011", "startup"},
    {&panelMessages, "CVCP-006012", "stop"},
    {&panelMessages, "CVCP-006013", "Error data initializing of control panel"},
    {&panelMessages, "CVCP-006014", "Failed to run application"},
    {&panelMessages, "CVCP-006015", "Failed to stop application"},
    {&panelMessages, "CVCP-006016", "Internal error"},
    {&panelMessages, "CVCP-006017", "Failed to open directory with logs"},
    {&panelMessages, "CVCP-006018", "Files needed for running/stopping %1 application are missed"},
    {&panelMessages, "CVCP-006019", "Error creating control panel window"},
    {&panelMessages, "CVCP-006021", "Error running application\"%1\""},
    {&panelMessages, "CVCP-006022", "Are you really want to remove \"%1\" and all its components?"},
    {&panelMessages, "CVCP-006023", "An error occurred during the uninstallation process of \"%1\""},
    {&panelMessages, "CVCP-006024", "Error creating control panel syslink element"},
    {&panelMessages, "CVCP-006025", "Error creating control panel combobox element"},
    {&panelMessages, "CVCP-006026", "change loglevel"},
    {&panelMessages, "CVCP-006027", "Error creating control panel checkbox element"},
    {&panelMessages, "CVCP-006028", "The server can't be started from the folder \"%1\": its name can't be written in the system's code page %2, and the folder has no short name.\nInstall the program into a folder whose name has Latin letters only."},
    {&panelMessages, "CVCP-006101", "Can not open the nginx config-file"},
    {&panelMessages, "CVCP-006102", "Error reload server.\nPlease press \"Run\"manualy"},
    {&panelMessages, "CVCP-006103", "Error of cache clear"},
    {&panelMessages, "CVCP-006104", "Error of set application language locale"},
    {&panelMessages, "CVCP-006105", "You have disabled automatic port selection at server start.\nFor correct work, enter free port in the configuration file and restart server."},
    {&panelMessages, "CVCP-006106", "The server can't start: port %1 is held."},
    {&panelMessages, "CVCP-006107", "It is held by %1 (process %2)."},
    {&panelMessages, "CVCP-006108", "It is held by the Windows service \"%1\"."},
    {&panelMessages, "CVCP-006109", "It is held by the Windows HTTP service (http.sys)."},
    {&panelMessages, "CVCP-006110", "It is reserved by Windows."},
    {&panelMessages, "CVCP-007001", "Error launching the email-app"},
    {&panelMessages, "CVCP-007002", "%1 is not supported. Please change the default email application."},
    {&panelMessages, "CVCP-008001", "Install path: "},
    {&panelMessages, "CVCP-008002", "User: "},
    {&panelMessages, "CVCP-008003", " (admin)"},
    {&panelMessages, "CVCP-008004", "OS info: %1 %2 x%3%4%5"},
    {&panelMessages, "CVCP-008005", ", spVersion: %1"},
    {&panelMessages, "CVCP-008006", "Antivirus: %1, state: %2"},
    {&panelMessages, "CVCP-008007", "Proxy settings (%1):\n    Server: %2\n    Override: %3"},
    {&panelMessages, "CVCP-008008", "Browsers:"},
    {&panelMessages, "CVCP-008009", "Domain name %1 is not available"},
    {&panelMessages, "CVCP-008010", "Domain name %1 is available from:\n    %2"},
    {&panelMessages, "CVCP-008011", "on"},
    {&panelMessages, "CVCP-008012", "off"},
    {&panelMessages, "CVCP-008013", " (default) "},
// commonMessages
    {&commonMessages, "CV-0001", "String is not Base64"},
    {&commonMessages, "CV-0002", "Find file \"%1\" path error "},
    {&commonMessages, "CV-0003", "Error loading function \"%1\""},
    {&commonMessages, "CV-0004", "Error getting full directory path"},
    {&commonMessages, "CV-0005", "String is not hex"},
    {&commonMessages, "CV-0006", "Error reading file \"%1\""},
    {&commonMessages, "CV-0007", "Error writing file \"%1\""},
    {&commonMessages, "CV-0008", "Error reading folder \"%1\""},
    {&commonMessages, "CV-0009", "Error reading library \"%1\""},
    {&commonMessages, "CV-0010", "Size of file \"%1\" is less than allowed"},
    {&commonMessages, "CV-0011", "Size of file \"%1\" is larger than allowed"},
    {&commonMessages, "CV-0012", "Error renaming file \"%1\""},
    {&commonMessages, "CV-0013", "Error getting rights for file \"%1\""},
    {&commonMessages, "CV-0014", "Error getting random data"},
    {&commonMessages, "CV-0015", "Error open Windows registry"},
    {&commonMessages, "CV-0016", "Error query to registry variable"},
    {&commonMessages, "CV-0017", "Error set value to registry variable"},
    {&commonMessages, "CV-0018", "Error delete of registry key"},
// serviceMessages
    {&serviceMessages, "CV-001001", "Session is not recognized or already closed"},
    {&serviceMessages, "CV-001002", "Failed to open session"},
    {&serviceMessages, "CV-002001", "Data size more than allowed"},
    {&serviceMessages, "CV-002002", "Write client property error"},
    {&serviceMessages, "CV-002003", "Client property is not set"},
    {&serviceMessages, "CV-003001", "GUI initialization error"},
    {&serviceMessages, "CV-003002", "PIN-code"},
    {&serviceMessages, "CV-003003", "PIN-codes"},
    {&serviceMessages, "CV-003004", "of PIN-code"},
    {&serviceMessages, "CV-003005", "Password"},
    {&serviceMessages, "CV-003006", "passwords"},
    {&serviceMessages, "CV-003007", "of password"},
    {&serviceMessages, "CV-003008", "must contain at least one letter in upper case"},
    {&serviceMessages, "CV-003009", "must contain at least one letter in lower case"},
    {&serviceMessages, "CV-003010", "must contain at least one digital charachter"},
    {&serviceMessages, "CV-003011", "must contain at least one special charachter"},
    {&serviceMessages, "CV-003012", "Fill input fields \"%1\""},
    {&serviceMessages, "CV-003013", "Allowed length of %1 from %2 to %3 charachters"},
    {&serviceMessages, "CV-003014", "Entered %1 are not match"},
    {&serviceMessages, "CV-003015", "New PIN-code"},
    {&serviceMessages, "CV-003016", "Confirm PIN-code"},
    {&serviceMessages, "CV-003017", "New password"},
    {&serviceMessages, "CV-003018", "Confirm password"},
    {&serviceMessages, "CV-003019", "%1 match with current"},
    {&serviceMessages, "CV-003020", "must not contain multiple repeated characters"},
    {&serviceMessages, "CV-003021", "must not contain character sequences from the dictionary"},
    {&serviceMessages, "CV-003022", "must not contain repeated or reflected sequences of symbols"},
    {&serviceMessages, "CV-003023", "must meet the bank's requirements"},
    {&serviceMessages, "CV-004001", "writing files"},
    {&serviceMessages, "CV-004002", "reading files"},
    {&serviceMessages, "CV-004003", "searching files"},
    {&serviceMessages, "CV-004004", "removing files"},
    {&serviceMessages, "CV-004005", "Allow to use \"%1\" for %2?"},
    {&serviceMessages, "CV-004006", "Operation access"},
    {&serviceMessages, "CV-004007", "Not received permission to perform file operation"},
    {&serviceMessages, "CV-004008", "Maximum total files size exceeded"},
    {&serviceMessages, "CV-004009", "Error generating encryption keys"},
    {&serviceMessages, "CV-004010", "Encryption error"},
    {&serviceMessages, "CV-004011", "Decryption error"},
    {&serviceMessages, "CV-005001", "The RNG generator is not initialized"},
    {&serviceMessages, "CV-006001", "Unknown command"},
    {&serviceMessages, "CV-006002", "Internal error"},
    {&serviceMessages, "CV-006003", "Incorrect parameters"},
    {&serviceMessages, "CV-006004", "Empty data"},
    {&serviceMessages, "CV-006005", "Incorrect format: %1"},
    {&serviceMessages, "CV-007001", "User canceled PIN-code enter"},
    {&serviceMessages, "CV-007002", "User canceled password enter"},
    {&serviceMessages, "CV-007003", "PIN-code change for \"%1\" token is performing in control panel which was installed with token driver"},
    {&serviceMessages, "CV-007004", "Password change for \"%1\" is performing in control panel which was installed with \"%1\""},
    {&serviceMessages, "CV-008001", "\"Corvanite\" is launched on behalf of a different user than the one who launched the browser.\nPlease reinstall \"Corvanite\" on behalf of the user launching the browser"},
    {&serviceMessages, "CV-008002", "\"Corvanite\" is in shutdowning progress"},
    {&serviceMessages, "CV-008003", "Host \"%1\" is forbidden"},
    {&serviceMessages, "CV-008004", "Domain name \"%1\" is forbidden"},
    {&serviceMessages, "CV-008006", "Device not found"},
    {&serviceMessages, "CV-008009", "The settings for this browser are correct"},
    {&serviceMessages, "CV-009001", "OK"},
    {&serviceMessages, "CV-009002", "Cancel"},
    {&serviceMessages, "CV-009003", "PIN-code:"},
    {&serviceMessages, "CV-009004", "New PIN-code:"},
    {&serviceMessages, "CV-009005", "Enter PIN-code for keystore:"},
    {&serviceMessages, "CV-009006", "Change PIN-code for keystore:"},
    {&serviceMessages, "CV-009007", "Confirm PIN-code:"},
    {&serviceMessages, "CV-009008", "Keystore name"},
    {&serviceMessages, "CV-009009", "Password:"},
    {&serviceMessages, "CV-009010", "New password:"},
    {&serviceMessages, "CV-009011", "Confirm password:"},
    {&serviceMessages, "CV-009012", "Enter password to access key:"},
    {&serviceMessages, "CV-009013", "Change key password:"},
    {&serviceMessages, "CV-009014", "DS key name"},
    {&serviceMessages, "CV-009015", "Corvanite"},
    {&serviceMessages, "CV-010001", "Timeout of closing process exceeded"},
    {&serviceMessages, "CV-010002", "Incorrect nginx config"},
    {&serviceMessages, "CV-010003", "Error verifying digital signature for update"},
    {&serviceMessages, "CV-010004", "File timeout exceeded"},
    {&serviceMessages, "CV-010005", "Server update error"},
    {&serviceMessages, "CV-010006", "Error getting rights for file \"%1\""},
    {&serviceMessages, "CV-010007", "Error running control panel"},
    {&serviceMessages, "CV-010009", "Error getting environment variable value"},
    {&serviceMessages, "CV-010010", "Error starting %1"},
    {&serviceMessages, "CV-010011", "Error verifying \"Corvanite\" digital signature. Try again or reinstall \"Corvanite\""},
    {&serviceMessages, "CV-010012", "Error loading \"Corvanite\". Try again or reinstall \"Corvanite\""},
    {&serviceMessages, "CV-010013", "There is no one free port in range Network port %1 - %2. At least one free port in this range is required for correct work"},
// zipMessages
    {&zipMessages, "Z-0001", "Archive unpacking error"},
    {&zipMessages, "Z-0002", "Archive packing error"},
};
// clang-format on

struct FixedRow {
    const MessageCatalogue* catalogue;
    const char* id;
    const char* russian;
    const char* ukrainian;
};

// Russian and Ukrainian words that are fixed as the product ships them, slips and all.
// clang-format off
const FixedRow fixedRows[] = {
    {&panelMessages, "CVCP-000001", "Запустить", "Запустити"},
    {&panelMessages, "CVCP-000003", "д. : ", "д. : "},
    {&panelMessages, "CVCP-000004", "ч. : ", "г. : "},
    {&panelMessages, "CVCP-000005", "м. : ", "х. : "},
    {&panelMessages, "CVCP-000006", "с.", "с."},
    {&panelMessages, "CVCP-000009", "Запущен", "Запущений"},
    {&panelMessages, "CVCP-005007", "Время работы:", "Час работи:"},
    {&panelMessages, "CVCP-005009", "Уровень журналирования:\n(требуется перезапуск)", "Рівень журналювання:\n(потребує перезапуску)"},
    {&panelMessages, "CVCP-005101", "Русский", "Російська"},
    {&panelMessages, "CVCP-005102", "Английский", "Англійська"},
    {&panelMessages, "CVCP-005103", "Украинский", "Українська"},
    {&panelMessages, "CVCP-006010", "Произошла ошибка во время процесса %1 %2", "Сталася помилка під час процесу %1 %2"},
    {&panelMessages, "CVCP-006011", "запуска", "запуску"},
    {&panelMessages, "CVCP-006018", "Отсутствуют файлы необходимые для запуска/остановки приложения %1", "Відсутні файли, необхідні для запуску/зупинки застосунку %1"},
    {&panelMessages, "CVCP-006102", "Ошибка перезапуска сервера.\nНажмине \"Запустить\" вручную", "Помилка перезавантаження сервера.\nНатисніть \"Запустити\" вручну"},
    {&panelMessages, "CVCP-007002", "Почтовый клиент %1 не поддерживается для отправки сообщения в службу поддержки.\nВыберите другое приложение по умолчанию для электронной почты.", "Поштовий клієнт %1 не підтримується для відправки повідомлення у службу підтримки.\nОберіть інший застосунок за замовчанням для електронної пошти."},
    {&panelMessages, "CVCP-008004", "Информация о системе: %1 %2 x%3%4%5", "Інформація про систему: %1 %2 x%3%4%5"},
    {&panelMessages, "CVCP-008007", "Настройки прокси (%1):\n    Сервер: %2\n    Исключения: %3", "Налаштування проксі (%1):\n    Сервер: %2\n    Вийнятки: %3"},
    {&commonMessages, "CV-0002",     "Ошибка поиска пути к файлу \"%1\"", "Помилка пошуку шляху до файлу \"%1\""},
    {&commonMessages, "CV-0006",     "Ошибка чтения файла \"%1\"", "Помилка читання файлу \"%1\""},
    {&serviceMessages, "CV-002003",   "Клиентское свойство не установлено", "Клієнтська властивість на встановлена"},
    {&serviceMessages, "CV-007004",   "Для \"%1\" смена пароля осуществляется в панели управления, которая была установлена вместе с \"%1\"", "Для \"%1\" зміна пароля здійснюється в панелі управління, що була встановлена разом з \"%1\""},
    {&zipMessages, "Z-0002",      "Ошибка упаковки ZIP", "Помилка пакування ZIP"},
};
// clang-format on

// The shipped Russian and Ukrainian words of this row break the line where the English
// doesn't; the row is kept as it ships.
const std::string lineBreakException = "CVCP-007002";

// The placeholders of a text, %1 to %9, in the order they stand, sorted.
std::vector<std::string> placeholdersOf(const std::string& text) {
    std::vector<std::string> found;
    for (std::size_t at = text.find('%'); at != std::string::npos; at = text.find('%', at + 1)) {
        if (at + 1 < text.size() && text[at + 1] >= '1' && text[at + 1] <= '9') {
            found.push_back(text.substr(at, 2));
        }
    }
    std::sort(found.begin(), found.end());
    return found;
}

long lineFeedsOf(const std::string& text) {
    return std::count(text.begin(), text.end(), '\n');
}

const MessageTable& tableOf(const MessageCatalogue& catalogue, int language) {
    return catalogue.tables.at(language);
}

std::vector<std::string> idsOf(const MessageTable& table) {
    std::vector<std::string> ids;
    for (const auto& [id, words] : table) {
        ids.push_back(id);
    }
    return ids;
}

} // namespace

TEST(CatalogueTables, EachCatalogueHasTheThreeLanguages) {
    for (const CatalogueInfo& info : catalogues) {
        ASSERT_EQ(info.catalogue->tables.size(), 3u) << info.name;
        for (int language : languages) {
            EXPECT_EQ(info.catalogue->tables.count(language), 1u) << info.name;
        }
    }
}

TEST(CatalogueTables, RowCounts) {
    for (const CatalogueInfo& info : catalogues) {
        for (int language : languages) {
            EXPECT_EQ(tableOf(*info.catalogue, language).size(), info.rows)
                << info.name << " language " << language;
        }
    }
}

TEST(CatalogueTables, SameIdsInAllThreeLanguages) {
    for (const CatalogueInfo& info : catalogues) {
        const auto english = idsOf(tableOf(*info.catalogue, Language::English));
        EXPECT_EQ(idsOf(tableOf(*info.catalogue, Language::Russian)), english) << info.name;
        EXPECT_EQ(idsOf(tableOf(*info.catalogue, Language::Ukrainian)), english) << info.name;
    }
}

TEST(CatalogueTables, NoEmptyText) {
    for (const CatalogueInfo& info : catalogues) {
        for (int language : languages) {
            for (const auto& [id, words] : tableOf(*info.catalogue, language)) {
                EXPECT_FALSE(words.empty()) << id << " language " << language;
            }
        }
    }
}

TEST(CatalogueTables, TranslationsKeepThePlaceholders) {
    for (const CatalogueInfo& info : catalogues) {
        for (const auto& [id, english] : tableOf(*info.catalogue, Language::English)) {
            const auto expected = placeholdersOf(english);
            EXPECT_EQ(placeholdersOf(tableOf(*info.catalogue, Language::Russian).at(id)), expected)
                << id;
            EXPECT_EQ(placeholdersOf(tableOf(*info.catalogue, Language::Ukrainian).at(id)),
                      expected)
                << id;
        }
    }
}

TEST(CatalogueTables, TranslationsKeepTheLineFeeds) {
    for (const CatalogueInfo& info : catalogues) {
        for (const auto& [id, english] : tableOf(*info.catalogue, Language::English)) {
            const long russian = lineFeedsOf(tableOf(*info.catalogue, Language::Russian).at(id));
            const long ukrainian =
                lineFeedsOf(tableOf(*info.catalogue, Language::Ukrainian).at(id));
            EXPECT_EQ(russian, ukrainian) << id;
            if (id != lineBreakException) {
                EXPECT_EQ(russian, lineFeedsOf(english)) << id;
            }
        }
    }
}

TEST(CatalogueTables, ShippedTranslationsOfOneRowAddALineBreak) {
    const MessageTable& english = tableOf(panelMessages, Language::English);
    EXPECT_EQ(lineFeedsOf(english.at(lineBreakException)), 0);
    EXPECT_EQ(lineFeedsOf(tableOf(panelMessages, Language::Russian).at(lineBreakException)), 1);
}

TEST(CatalogueTables, EveryNamedIdExists) {
    for (const EnglishRow& row : englishRows) {
        for (int language : languages) {
            EXPECT_EQ(tableOf(*row.catalogue, language).count(row.id), 1u)
                << row.id << " language " << language;
        }
    }
    EXPECT_EQ(std::size(englishRows), 93u + 18u + 82u + 2u);
}

TEST(CatalogueTables, EnglishWordsAsTheProductShipsThem) {
    for (const EnglishRow& row : englishRows) {
        EXPECT_EQ(tableOf(*row.catalogue, Language::English).at(row.id), row.english) << row.id;
    }
}

TEST(CatalogueTables, FixedTranslationsAreKeptByteForByte) {
    for (const FixedRow& row : fixedRows) {
        EXPECT_EQ(tableOf(*row.catalogue, Language::Russian).at(row.id), utf8ToCp1251(row.russian))
            << row.id;
        EXPECT_EQ(tableOf(*row.catalogue, Language::Ukrainian).at(row.id),
                  utf8ToCp1251(row.ukrainian))
            << row.id;
    }
}

TEST(CatalogueTables, TextsAreCodePage1251) {
    // A Cyrillic letter is one byte in code page 1251 and two in UTF-8.
    EXPECT_EQ(std::string(tableOf(panelMessages, Language::Russian).at("CVCP-000001")),
              "\xC7\xE0\xEF\xF3\xF1\xF2\xE8\xF2\xFC");
    for (const CatalogueInfo& info : catalogues) {
        for (int language : languages) {
            for (const auto& [id, words] : tableOf(*info.catalogue, language)) {
                EXPECT_EQ(utf8ToCp1251(cp1251ToUtf8(words)), words) << id;
            }
        }
    }
}
