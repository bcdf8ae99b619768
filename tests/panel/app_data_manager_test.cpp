#include "panel/app_data_manager.h"

#include <filesystem>
#include <fstream>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "foundation/exceptions.h"
#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/corvanite_host.h"
#include "host/host_facts.h"
#include "tests/support/foundation/temp_folder.h"
#include "tests/support/panel/expect_failure.h"
#include "tests/support/panel/layout_documents.h"
#include "tests/support/panel/live_window.h"

using nlohmann::json;

namespace {

const std::string dataFailure = "Error data initializing of control panel";

struct AppDataManagerTest : testing::Test {
    void SetUp() override { panelMessages.setLanguage(Language::English); }

    utils::AppDataManager load(const json& document, DisplayScale scale = {}) {
        return utils::AppDataManager(writeLayoutFile(folder, document.dump()), scale);
    }

    TempFolder folder;
};

// Whole documents that can't be read: the library's words give way to the panel's own.

struct BrokenFile {
    const char* name;
    std::string bytes;
};

std::string smallText() {
    return smallLayoutDocument().dump(2);
}

std::vector<BrokenFile> brokenFiles() {
    const std::string text = smallText();
    json noWindow = smallLayoutDocument();
    noWindow.erase("window");
    json noMenu = smallLayoutDocument();
    noMenu.erase("menu");
    json noWidgets = smallLayoutDocument();
    noWidgets.erase("widgets");
    return {
        {"EmptyFile", ""},
        {"OnlyBlanks", " \r\n\t "},
        {"NotJson", "window: title"},
        {"TruncatedAfterOneByte", text.substr(0, 1)},
        {"TruncatedInAKey", text.substr(0, 8)},
        {"TruncatedHalfway", text.substr(0, text.size() / 2)},
        {"TruncatedBeforeTheLastBrace", text.substr(0, text.size() - 1)},
        {"TruncatedInAString", text.substr(0, text.find("CVCP-001001") + 6)},
        {"PartialBomOfOneByte", "\xEF" + text},
        {"PartialBomOfTwoBytes", "\xEF\xBB" + text},
        {"WrongThirdBomByte", "\xEF\xBB\xBE" + text},
        {"BomAlone", "\xEF\xBB\xBF"},
        {"Utf16Bom", "\xFF\xFE" + text},
        {"BomInTheMiddle", "{\xEF\xBB\xBF}"},
        {"RootIsArray", "[" + text + "]"},
        {"RootIsString", "\"window\""},
        {"RootIsNumber", "42"},
        {"RootIsNull", "null"},
        {"RootIsEmptyObject", "{}"},
        {"NoWindow", noWindow.dump()},
        {"NoMenu", noMenu.dump()},
        {"NoWidgets", noWidgets.dump()},
        {"NulByte", std::string("{\0}", 3)},
        {"UnterminatedEscape", "{\"window\": \"\\u12"},
        {"Comment", "// layout\n" + text},
        {"SingleQuotes", "{'window': {}, 'menu': {}, 'widgets': {}}"},
    };
}

void PrintTo(const BrokenFile& file, std::ostream* out) {
    *out << file.name;
}

struct BrokenLayoutFileTest : testing::TestWithParam<BrokenFile> {
    void SetUp() override { panelMessages.setLanguage(Language::English); }
    TempFolder folder;
};

TEST_P(BrokenLayoutFileTest, FailsWithTheDataInitialisingMessage) {
    const std::string path = writeLayoutFile(folder, GetParam().bytes);
    expectFailure<BasicException>([&] { utils::AppDataManager layout(path, DisplayScale{}); },
                                  dataFailure);
}

INSTANTIATE_TEST_SUITE_P(Files, BrokenLayoutFileTest, testing::ValuesIn(brokenFiles()),
                         [](const testing::TestParamInfo<BrokenFile>& info) {
                             return std::string(info.param.name);
                         });

TEST_F(AppDataManagerTest, MissingFileFailsWithTheDataInitialisingMessage) {
    const std::string path = folder.file("CVHControlPanel.json");
    expectFailure<BasicException>([&] { utils::AppDataManager layout(path, DisplayScale{}); },
                                  dataFailure);
}

TEST_F(AppDataManagerTest, AFolderInPlaceOfTheFileFailsWithTheDataInitialisingMessage) {
    expectFailure<BasicException>(
        [&] { utils::AppDataManager layout(folder.path(), DisplayScale{}); }, dataFailure);
}

TEST_F(AppDataManagerTest, TheDataInitialisingMessageFollowsTheLanguage) {
    panelMessages.setLanguage(Language::Russian);
    const std::string path = writeLayoutFile(folder, "");
    expectFailure<BasicException>([&] { utils::AppDataManager layout(path, DisplayScale{}); },
                                  panelMessages.text("CVCP-006013"));
    EXPECT_EQ(cp1251ToUtf8(panelMessages.text("CVCP-006013")),
              "Ошибка инициализации данных панели управления");
}

TEST_F(AppDataManagerTest, AFullByteOrderMarkIsAccepted) {
    const std::string path = writeLayoutFile(folder, "\xEF\xBB\xBF" + smallText());
    const utils::AppDataManager layout(path, DisplayScale{});
    EXPECT_EQ(layout.window().title, "CVCP-001001");
}

TEST_F(AppDataManagerTest, AFileWithCyrillicLettersInItsFolderIsRead) {
    const std::string cyrillic = folder.file("Панель");
    std::filesystem::create_directory(nativePath(cyrillic));
    const std::string path = cyrillic + "/CVHControlPanel.json";
    std::ofstream(nativePath(path), std::ios::binary) << smallText();
    EXPECT_EQ(utils::AppDataManager(path, DisplayScale{}).window().updateTime, 1000);
}

// The stream input stops after the first complete value: what follows it is never read.
TEST_F(AppDataManagerTest, WordsAfterTheDocumentAreNotRead) {
    const std::string path = writeLayoutFile(folder, smallText() + " trailing {");
    EXPECT_EQ(utils::AppDataManager(path, DisplayScale{}).window().title, "CVCP-001001");
}

TEST_F(AppDataManagerTest, OfTwoDocumentsTheFirstCounts) {
    json second = smallLayoutDocument();
    second["window"]["title"] = "CVCP-003001";
    const std::string path = writeLayoutFile(folder, smallText() + second.dump());
    EXPECT_EQ(utils::AppDataManager(path, DisplayScale{}).window().title, "CVCP-001001");
}

// The path keeps every letter: a folder named in any script is read.
TEST_F(AppDataManagerTest, AFolderWithLettersOutsideCodePage1251IsRead) {
    for (const char* name : {"Ωμέγα", "José Host", "服务器"}) {
        const std::string named = folder.file(name);
        std::filesystem::create_directory(nativePath(named));
        const std::string path = named + "/CVHControlPanel.json";
        std::ofstream(nativePath(path), std::ios::binary) << smallText();
        EXPECT_EQ(utils::AppDataManager(path, DisplayScale{}).window().title, "CVCP-001001")
            << name;
    }
}

// The small layout whose window holds arrays nested so that the whole document is `depth` deep.
// The window is the last member of the dump and is copied when the file is read.
std::string layoutOfDepth(std::size_t depth) {
    const std::string text = smallLayoutDocument().dump();
    const std::size_t arrays = depth - 2;
    return text.substr(0, text.size() - 2) + ",\"deep\":" + std::string(arrays, '[') +
           std::string(arrays, ']') + "}}";
}

TEST_F(AppDataManagerTest, SixtyFourLevelsAreRead) {
    const std::string path = writeLayoutFile(folder, layoutOfDepth(64));
    EXPECT_EQ(utils::AppDataManager(path, DisplayScale{}).window().title, "CVCP-001001");
}

TEST_F(AppDataManagerTest, SixtyFiveLevelsFailWithTheDataInitialisingMessage) {
    const std::string path = writeLayoutFile(folder, layoutOfDepth(65));
    expectFailure<BasicException>([&] { utils::AppDataManager layout(path, DisplayScale{}); },
                                  dataFailure);
}

TEST_F(AppDataManagerTest, TwentyThousandLevelsFailWithTheDataInitialisingMessage) {
    for (const std::string& bytes :
         {layoutOfDepth(20000), std::string(20000, '['), std::string(20000, '{') + "}"}) {
        const std::string path = writeLayoutFile(folder, bytes);
        expectFailure<BasicException>([&] { utils::AppDataManager layout(path, DisplayScale{}); },
                                      dataFailure);
    }
}

// Brackets in texts are words, not nesting.
TEST_F(AppDataManagerTest, BracketsInsideTextsDoNotCount) {
    json document = smallLayoutDocument();
    document["note"] = std::string(100, '[') + "\"\\" + std::string(100, '{');
    EXPECT_EQ(load(document).window().title, "CVCP-001001");
}

TEST_F(AppDataManagerTest, OnlyTheThreeSectionsCountAndUnknownKeysAreIgnored) {
    json document = smallLayoutDocument();
    document["version"] = 7;
    document["widgets"]["buttons"][0]["value"] = "ignored";
    document["widgets"]["buttons"][0]["tab"] = 3;
    document["widgets"]["buttons"][0]["colour"] = "red";
    const utils::AppDataManager layout = load(document);
    EXPECT_EQ(layout.buttons().size(), 1u);
}

// The library's own words, as they stand in the version the program is built with.

TEST(JsonLibraryWordsTest, APartialByteOrderMarkIsRefusedWithTheLibrarysWords) {
    try {
        const json document = json::parse("\xEF\xBB{}");
        static_cast<void>(document);
        FAIL() << "parsed";
    } catch (const json::parse_error& failure) {
        EXPECT_NE(std::string(failure.what()).find("invalid BOM; must be 0xEF 0xBB 0xBF if given"),
                  std::string::npos)
            << failure.what();
    }
}

TEST(JsonLibraryWordsTest, CheckedAccessOnAnArrayNamesTheType) {
    expectFailure<json::type_error>([] { static_cast<void>(json::array().at("title")); },
                                    "[json.exception.type_error.304] cannot use at() with array");
}

TEST(JsonLibraryWordsTest, AMissingKeyIsNamed) {
    expectFailure<json::out_of_range>([] { static_cast<void>(json::object().at("title")); },
                                      "[json.exception.out_of_range.403] key 'title' not found");
}

TEST(JsonLibraryWordsTest, ValueOnANonObjectNamesTheType) {
    expectFailure<json::type_error>(
        [] { static_cast<void>(json::array().value("x", 0)); },
        "[json.exception.type_error.306] cannot use value() with array");
}

TEST(JsonLibraryWordsTest, WrongTypesAreNamed) {
    expectFailure<json::type_error>(
        [] { static_cast<void>(json("7").get<int>()); },
        "[json.exception.type_error.302] type must be number, but is string");
    expectFailure<json::type_error>(
        [] { static_cast<void>(json(7).get<std::string>()); },
        "[json.exception.type_error.302] type must be string, but is number");
}

// Faults inside a section, found by its reader with the library's words as they stand.

enum class Reader { Window, Menu, Tabpanels, Comboboxes, Checkboxes, Syslinks, Buttons, Labels };

enum class Failure { JsonType, JsonRange, Catalogue };

struct SectionFault {
    const char* name;
    std::function<void(json&)> change;
    Reader reader;
    Failure failure;
    std::string words;
};

void read(const utils::AppDataManager& layout, Reader reader) {
    switch (reader) {
    case Reader::Window:
        layout.window();
        break;
    case Reader::Menu:
        layout.menuItems();
        break;
    case Reader::Tabpanels:
        layout.tabpanels();
        break;
    case Reader::Comboboxes:
        layout.comboboxes();
        break;
    case Reader::Checkboxes:
        layout.checkboxes();
        break;
    case Reader::Syslinks:
        layout.syslinks();
        break;
    case Reader::Buttons:
        layout.buttons();
        break;
    case Reader::Labels:
        layout.labels();
        break;
    }
}

std::string typeError(int number, const std::string& words) {
    return "[json.exception.type_error." + std::to_string(number) + "] " + words;
}

std::string missingKey(const std::string& key) {
    return "[json.exception.out_of_range.403] key '" + key + "' not found";
}

const std::string invalidKey = "invalid map<K, T> key";

json& button(json& document) {
    return document["widgets"]["buttons"][0];
}
json& combobox(json& document) {
    return document["widgets"]["comboboxs"][0];
}
json& tabpanel(json& document) {
    return document["widgets"]["tabpanels"][0];
}
json& label(json& document) {
    return document["widgets"]["labels"][0];
}

std::vector<SectionFault> sectionFaults() {
    using F = Failure;
    using R = Reader;
    return {
        // The window.
        {"WindowIsArray", [](json& d) { d["window"] = json::array(); }, R::Window, F::JsonType,
         typeError(304, "cannot use at() with array")},
        {"WindowIsString", [](json& d) { d["window"] = "main"; }, R::Window, F::JsonType,
         typeError(304, "cannot use at() with string")},
        {"WindowIsNull", [](json& d) { d["window"] = nullptr; }, R::Window, F::JsonType,
         typeError(304, "cannot use at() with null")},
        {"WindowWithoutTitle", [](json& d) { d["window"].erase("title"); }, R::Window, F::JsonRange,
         missingKey("title")},
        {"TitleIsNumber", [](json& d) { d["window"]["title"] = 1001; }, R::Window, F::JsonType,
         typeError(302, "type must be string, but is number")},
        {"TitleIsArray", [](json& d) { d["window"]["title"] = {"CVCP-001001"}; }, R::Window,
         F::JsonType, typeError(302, "type must be string, but is array")},
        {"WindowWithoutSize", [](json& d) { d["window"].erase("size"); }, R::Window, F::JsonRange,
         missingKey("size")},
        {"WindowSizeIsArray",
         [](json& d) {
             d["window"]["size"] = {480, 360};
         },
         R::Window, F::JsonType, typeError(306, "cannot use value() with array")},
        {"WindowSizeIsNumber", [](json& d) { d["window"]["size"] = 480; }, R::Window, F::JsonType,
         typeError(306, "cannot use value() with number")},
        {"WindowWidthIsString", [](json& d) { d["window"]["size"]["x"] = "480"; }, R::Window,
         F::JsonType, typeError(302, "type must be number, but is string")},
        {"WindowHeightIsNull", [](json& d) { d["window"]["size"]["y"] = nullptr; }, R::Window,
         F::JsonType, typeError(302, "type must be number, but is null")},
        {"ClassNameIsNumber", [](json& d) { d["window"]["className"] = 5; }, R::Window, F::JsonType,
         typeError(302, "type must be string, but is number")},
        {"ClassNameIsBoolean", [](json& d) { d["window"]["className"] = true; }, R::Window,
         F::JsonType, typeError(302, "type must be string, but is boolean")},
        {"UpdateTimeIsString", [](json& d) { d["window"]["updateTime"] = "1000"; }, R::Window,
         F::JsonType, typeError(302, "type must be number, but is string")},
        {"UpdateTimeIsObject", [](json& d) { d["window"]["updateTime"] = json::object(); },
         R::Window, F::JsonType, typeError(302, "type must be number, but is object")},
        // The menu.
        {"MenuItemIsNumber", [](json& d) { d["menu"]["items"][1] = 4; }, R::Menu, F::JsonType,
         typeError(306, "cannot use value() with number")},
        {"MenuItemIsArray",
         [](json& d) {
             d["menu"]["items"][0] = {4, "CVCP-003001"};
         },
         R::Menu, F::JsonType, typeError(306, "cannot use value() with array")},
        {"MenuItemsIsString", [](json& d) { d["menu"]["items"] = "CVCP-003001"; }, R::Menu,
         F::JsonType, typeError(306, "cannot use value() with string")},
        {"MenuCommandIdIsString", [](json& d) { d["menu"]["items"][0]["commandId"] = "4"; },
         R::Menu, F::JsonType, typeError(302, "type must be number, but is string")},
        {"MenuTextIsNumber", [](json& d) { d["menu"]["items"][0]["text"] = 3001; }, R::Menu,
         F::JsonType, typeError(302, "type must be string, but is number")},
        // One element of a widget array.
        {"ElementIsNumber", [](json& d) { d["widgets"]["buttons"][0] = 24; }, R::Buttons,
         F::JsonType, typeError(304, "cannot use at() with number")},
        {"ElementIsArray", [](json& d) { d["widgets"]["labels"][0] = json::array(); }, R::Labels,
         F::JsonType, typeError(304, "cannot use at() with array")},
        {"ArrayIsSingleString", [](json& d) { d["widgets"]["syslinks"] = "link"; }, R::Syslinks,
         F::JsonType, typeError(304, "cannot use at() with string")},
        {"ElementWithoutId", [](json& d) { button(d).erase("id"); }, R::Buttons, F::JsonRange,
         missingKey("id")},
        {"IdIsString", [](json& d) { button(d)["id"] = "24"; }, R::Buttons, F::JsonType,
         typeError(302, "type must be number, but is string")},
        {"IdIsBoolean", [](json& d) { label(d)["id"] = true; }, R::Labels, F::JsonType,
         typeError(302, "type must be number, but is boolean")},
        {"IdIsNull", [](json& d) { tabpanel(d)["id"] = nullptr; }, R::Tabpanels, F::JsonType,
         typeError(302, "type must be number, but is null")},
        {"ElementWithoutCommandId", [](json& d) { button(d).erase("commandId"); }, R::Buttons,
         F::JsonRange, missingKey("commandId")},
        {"ComboboxWithoutCommandId", [](json& d) { combobox(d).erase("commandId"); }, R::Comboboxes,
         F::JsonRange, missingKey("commandId")},
        {"CommandIdIsString", [](json& d) { d["widgets"]["checkboxs"][0]["commandId"] = "14"; },
         R::Checkboxes, F::JsonType, typeError(302, "type must be number, but is string")},
        {"CommandIdIsBoolean", [](json& d) { d["widgets"]["syslinks"][0]["commandId"] = false; },
         R::Syslinks, F::JsonType, typeError(302, "type must be number, but is boolean")},
        {"ElementWithoutDisposition", [](json& d) { label(d).erase("disposition"); }, R::Labels,
         F::JsonRange, missingKey("disposition")},
        {"DispositionIsArray", [](json& d) { button(d)["disposition"] = json::array(); },
         R::Buttons, F::JsonType, typeError(304, "cannot use at() with array")},
        {"DispositionWithoutSize", [](json& d) { button(d)["disposition"].erase("size"); },
         R::Buttons, F::JsonRange, missingKey("size")},
        {"DispositionWithoutPosition", [](json& d) { button(d)["disposition"].erase("position"); },
         R::Buttons, F::JsonRange, missingKey("position")},
        {"SizeIsArray",
         [](json& d) {
             button(d)["disposition"]["size"] = {80, 24};
         },
         R::Buttons, F::JsonType, typeError(306, "cannot use value() with array")},
        {"PositionIsString", [](json& d) { label(d)["disposition"]["position"] = "top"; },
         R::Labels, F::JsonType, typeError(306, "cannot use value() with string")},
        {"WidthIsString", [](json& d) { button(d)["disposition"]["size"]["x"] = "80"; }, R::Buttons,
         F::JsonType, typeError(302, "type must be number, but is string")},
        {"TopIsObject", [](json& d) { label(d)["disposition"]["position"]["y"] = json::object(); },
         R::Labels, F::JsonType, typeError(302, "type must be number, but is object")},
        {"TextIsNumber", [](json& d) { button(d)["text"] = 4001; }, R::Buttons, F::JsonType,
         typeError(302, "type must be string, but is number")},
        {"TextIsNull", [](json& d) { label(d)["text"] = nullptr; }, R::Labels, F::JsonType,
         typeError(302, "type must be string, but is null")},
        {"TextIsUnknownCatalogueId", [](json& d) { button(d)["text"] = "CVCP-999999"; }, R::Buttons,
         F::Catalogue, invalidKey},
        {"ElementWithoutTabIndex", [](json& d) { button(d).erase("tabIndex"); }, R::Buttons,
         F::JsonRange, missingKey("tabIndex")},
        {"TabIndexIsString", [](json& d) { label(d)["tabIndex"] = "0"; }, R::Labels, F::JsonType,
         typeError(302, "type must be number, but is string")},
        {"ComboboxWithoutValues", [](json& d) { combobox(d).erase("values"); }, R::Comboboxes,
         F::JsonRange, missingKey("values")},
        {"ValueIsNumber", [](json& d) { combobox(d)["values"][1] = 5102; }, R::Comboboxes,
         F::JsonType, typeError(302, "type must be string, but is number")},
        {"TabpanelWithoutTabs", [](json& d) { tabpanel(d).erase("tabs"); }, R::Tabpanels,
         F::JsonRange, missingKey("tabs")},
        {"TabIsObject", [](json& d) { tabpanel(d)["tabs"][0] = json::object(); }, R::Tabpanels,
         F::JsonType, typeError(302, "type must be string, but is object")},
        // Several faults in one element: the first in reading order is told.
        {"IdBeforeCommandId",
         [](json& d) {
             button(d).erase("id");
             button(d).erase("commandId");
         },
         R::Buttons, F::JsonRange, missingKey("id")},
        {"CommandIdBeforeDisposition",
         [](json& d) {
             button(d)["commandId"] = "5";
             button(d).erase("disposition");
         },
         R::Buttons, F::JsonType, typeError(302, "type must be number, but is string")},
        {"SizeBeforePosition",
         [](json& d) {
             button(d)["disposition"]["position"] = 1;
             button(d)["disposition"]["size"] = 2;
         },
         R::Buttons, F::JsonType, typeError(306, "cannot use value() with number")},
        {"PositionBeforeText",
         [](json& d) {
             button(d)["disposition"].erase("position");
             button(d)["text"] = "CVCP-999999";
         },
         R::Buttons, F::JsonRange, missingKey("position")},
        {"TextBeforeTabIndex",
         [](json& d) {
             button(d)["text"] = "CVCP-999999";
             button(d).erase("tabIndex");
         },
         R::Buttons, F::Catalogue, invalidKey},
        {"TabIndexBeforeValues",
         [](json& d) {
             combobox(d).erase("tabIndex");
             combobox(d).erase("values");
         },
         R::Comboboxes, F::JsonRange, missingKey("tabIndex")},
    };
}

void PrintTo(const SectionFault& fault, std::ostream* out) {
    *out << fault.name;
}

struct SectionFaultTest : testing::TestWithParam<SectionFault> {
    void SetUp() override { panelMessages.setLanguage(Language::English); }
    TempFolder folder;
};

TEST_P(SectionFaultTest, ReaderFailsWithTheLibrarysWords) {
    json document = smallLayoutDocument();
    GetParam().change(document);
    const utils::AppDataManager layout(writeLayoutFile(folder, document.dump()), DisplayScale{});
    const auto action = [&] { read(layout, GetParam().reader); };
    switch (GetParam().failure) {
    case Failure::JsonType:
        expectFailure<json::type_error>(action, GetParam().words);
        break;
    case Failure::JsonRange:
        expectFailure<json::out_of_range>(action, GetParam().words);
        break;
    case Failure::Catalogue:
        expectFailure<std::out_of_range>(action, GetParam().words);
        break;
    }
}

INSTANTIATE_TEST_SUITE_P(Sections, SectionFaultTest, testing::ValuesIn(sectionFaults()),
                         [](const testing::TestParamInfo<SectionFault>& info) {
                             return std::string(info.param.name);
                         });

// A section's fault stays in its reader: the others read on.
TEST_F(AppDataManagerTest, AFaultyWidgetArrayLeavesTheOtherReadersAlone) {
    json document = smallLayoutDocument();
    button(document).erase("id");
    const utils::AppDataManager layout = load(document);
    EXPECT_THROW(layout.buttons(), json::out_of_range);
    EXPECT_EQ(layout.labels().size(), 1u);
    EXPECT_EQ(layout.window().title, "CVCP-001001");
}

// The records of a good file.

TEST_F(AppDataManagerTest, WindowRecordHoldsTheFilesValues) {
    const WindowRecord window = load(smallLayoutDocument()).window();
    EXPECT_EQ(window.title, "CVCP-001001");
    EXPECT_EQ(window.size, PixelPair(480, 360));
    EXPECT_EQ(window.className, "CVHControlPanel");
    EXPECT_EQ(window.updateTime, 1000);
}

TEST_F(AppDataManagerTest, WidgetRecordsHoldTheFilesValuesInFileOrder) {
    json document = smallLayoutDocument();
    json second = button(document);
    second["id"] = 26;
    second["commandId"] = 4;
    second["text"] = "CVCP-004002";
    document["widgets"]["buttons"].push_back(second);
    const utils::AppDataManager layout = load(document);

    const std::vector<ButtonRecord> buttons = layout.buttons();
    ASSERT_EQ(buttons.size(), 2u);
    EXPECT_EQ(buttons[0].id, 24);
    EXPECT_EQ(buttons[0].commandId, 5);
    EXPECT_EQ(buttons[0].disposition.position, PixelPair(380, 310));
    EXPECT_EQ(buttons[0].disposition.size, PixelPair(80, 24));
    EXPECT_EQ(buttons[0].disposition.text, "CVCP-004001");
    EXPECT_EQ(buttons[0].disposition.displayText, "OK");
    EXPECT_EQ(buttons[0].disposition.tabIndex, -1);
    EXPECT_EQ(buttons[0].command, nullptr);
    EXPECT_EQ(buttons[1].id, 26);
    EXPECT_EQ(buttons[1].disposition.displayText, "Logs");

    const std::vector<ComboboxRecord> comboboxes = layout.comboboxes();
    ASSERT_EQ(comboboxes.size(), 1u);
    EXPECT_EQ(comboboxes[0].commandId, 0);
    EXPECT_EQ(comboboxes[0].values,
              (std::vector<std::string>{"CVCP-005101", "CVCP-005102", "CVCP-005103"}));
    EXPECT_EQ(comboboxes[0].disposition.text, "");

    const std::vector<TabpanelRecord> tabpanels = layout.tabpanels();
    ASSERT_EQ(tabpanels.size(), 1u);
    EXPECT_EQ(tabpanels[0].tabs, (std::vector<std::string>{"CVCP-002001", "CVCP-002002"}));

    EXPECT_EQ(layout.checkboxes().at(0).disposition.displayText, "Allow to use the UNC paths");
    EXPECT_EQ(layout.syslinks().at(0).disposition.displayText, "<a>Get information</a>");
}

TEST_F(AppDataManagerTest, ReadersBuildTheirRecordsAnewAtEachCall) {
    const utils::AppDataManager layout = load(smallLayoutDocument());
    EXPECT_EQ(layout.buttons()[0].disposition.displayText, "OK");
    panelMessages.setLanguage(Language::Russian);
    EXPECT_EQ(cp1251ToUtf8(layout.buttons()[0].disposition.displayText), "OK");
    EXPECT_EQ(cp1251ToUtf8(layout.syslinks()[0].disposition.displayText),
              "<a>Получить информацию</a>");
}

TEST_F(AppDataManagerTest, LiteralTextIsShownInCodePage1251AndFollowsNoLanguage) {
    const LabelRecord label = load(smallLayoutDocument()).labels().at(0);
    EXPECT_EQ(label.disposition.text, "");
    EXPECT_EQ(label.disposition.displayText, utf8ToCp1251("Corvanite Панель"));
}

TEST_F(AppDataManagerTest, AWidgetWithoutTextShowsNothing) {
    json document = smallLayoutDocument();
    button(document).erase("text");
    const ButtonRecord record = load(document).buttons().at(0);
    EXPECT_EQ(record.disposition.text, "");
    EXPECT_EQ(record.disposition.displayText, "");
}

TEST_F(AppDataManagerTest, ListEntriesAreKeptAsTheyStandWithoutLookup) {
    json document = smallLayoutDocument();
    combobox(document)["values"] = {"no id", "CVCP-999999"};
    EXPECT_EQ(load(document).comboboxes()[0].values,
              (std::vector<std::string>{"no id", "CVCP-999999"}));
}

TEST_F(AppDataManagerTest, SizesAndPositionsAreScaledToTheScreen) {
    const utils::AppDataManager layout = load(smallLayoutDocument(), DisplayScale{144, 120});
    EXPECT_EQ(layout.window().size, PixelPair(720, 450));
    const ButtonRecord record = layout.buttons().at(0);
    EXPECT_EQ(record.disposition.position, PixelPair(570, 388)); // 387.5 rounds up
    EXPECT_EQ(record.disposition.size, PixelPair(120, 30));
}

TEST_F(AppDataManagerTest, MissingCoordinatesAreZero) {
    json document = smallLayoutDocument();
    button(document)["disposition"]["position"] = json::object({{"x", 7}});
    document["window"]["size"] = json::object({{"y", 300}});
    const utils::AppDataManager layout = load(document);
    EXPECT_EQ(layout.buttons()[0].disposition.position, PixelPair(7, 0));
    EXPECT_EQ(layout.window().size, PixelPair(0, 300));
}

TEST_F(AppDataManagerTest, IdsTakeFloatingPointNumbersTruncatedTowardZero) {
    json document = smallLayoutDocument();
    button(document)["id"] = 24.9;
    button(document)["commandId"] = 5.99;
    label(document)["id"] = -25.7;
    const utils::AppDataManager layout = load(document);
    EXPECT_EQ(layout.buttons()[0].id, 24);
    EXPECT_EQ(layout.buttons()[0].commandId, 5);
    EXPECT_EQ(layout.labels()[0].id, -25);
}

TEST_F(AppDataManagerTest, CoordinatesTakeBooleansAndFloatingPointNumbers) {
    json document = smallLayoutDocument();
    button(document)["disposition"]["position"] = {{"x", true}, {"y", false}};
    button(document)["disposition"]["size"] = {{"x", 80.6}, {"y", -3.5}};
    document["window"]["updateTime"] = 250.75;
    const utils::AppDataManager layout = load(document);
    EXPECT_EQ(layout.buttons()[0].disposition.position, PixelPair(1, 0));
    EXPECT_EQ(layout.buttons()[0].disposition.size, PixelPair(80, -3));
    EXPECT_EQ(layout.window().updateTime, 250);
}

TEST_F(AppDataManagerTest, NumbersBeyondAnyIntegerGiveZeroWithoutFailing) {
    json document = smallLayoutDocument();
    button(document)["id"] = 1e300;
    button(document)["tabIndex"] = -1e300;
    const ButtonRecord record = load(document).buttons().at(0);
    EXPECT_EQ(record.id, 0);
    EXPECT_EQ(record.disposition.tabIndex, 0);
}

TEST_F(AppDataManagerTest, ClassNameIsConvertedToCodePage1251) {
    json document = smallLayoutDocument();
    document["window"]["className"] = "Панель";
    EXPECT_EQ(load(document).window().className, utf8ToCp1251("Панель"));
}

TEST_F(AppDataManagerTest, AnObjectInPlaceOfAnArrayIsWalkedOverItsValuesInKeyOrder) {
    json document = smallLayoutDocument();
    json first = button(document);
    json second = button(document);
    second["id"] = 30;
    document["widgets"]["buttons"] = {{"b", first}, {"a", second}};
    const std::vector<ButtonRecord> buttons = load(document).buttons();
    ASSERT_EQ(buttons.size(), 2u);
    EXPECT_EQ(buttons[0].id, 30);
    EXPECT_EQ(buttons[1].id, 24);
}

TEST_F(AppDataManagerTest, ANullInPlaceOfAnArrayYieldsNoWidget) {
    json document = smallLayoutDocument();
    document["widgets"]["labels"] = nullptr;
    EXPECT_TRUE(load(document).labels().empty());
}

TEST_F(AppDataManagerTest, WidgetsThatAreNoObjectHoldNoWidget) {
    json document = smallLayoutDocument();
    document["widgets"] = json::array({1, 2});
    const utils::AppDataManager layout = load(document);
    EXPECT_TRUE(layout.buttons().empty());
    EXPECT_TRUE(layout.tabpanels().empty());
}

TEST_F(AppDataManagerTest, DuplicateWidgetIdsAreAllRead) {
    json document = smallLayoutDocument();
    document["widgets"]["buttons"].push_back(button(document));
    const std::vector<ButtonRecord> buttons = load(document).buttons();
    ASSERT_EQ(buttons.size(), 2u);
    EXPECT_EQ(buttons[0].id, buttons[1].id);
}

TEST_F(AppDataManagerTest, ADuplicateKeyInOneElementCountsWithItsLastValue) {
    const std::string text = smallText();
    std::string doubled = text;
    const std::string key = "\"id\": 24";
    doubled.replace(doubled.find(key), key.size(), "\"id\": 40, \"id\": 24");
    const std::string path = writeLayoutFile(folder, doubled);
    EXPECT_EQ(utils::AppDataManager(path, DisplayScale{}).buttons().at(0).id, 24);
}

// Edge cases of the file format.

TEST_F(AppDataManagerTest, AFileWithoutSyslinksReadsNoLinks) {
    json document = smallLayoutDocument();
    document["widgets"].erase("syslinks");
    const utils::AppDataManager layout = load(document);
    EXPECT_TRUE(layout.syslinks().empty());
    EXPECT_EQ(layout.buttons().size(), 1u);
}

TEST_F(AppDataManagerTest, AnEmptySizeObjectGivesWidthAndHeightZero) {
    json document = smallLayoutDocument();
    button(document)["disposition"]["size"] = json::object();
    EXPECT_EQ(load(document).buttons().at(0).disposition.size, PixelPair(0, 0));
}

TEST_F(AppDataManagerTest, TextWithACatalogueIdAndFurtherWordsFailsWithInvalidMapKey) {
    json document = smallLayoutDocument();
    button(document)["text"] = "Press CVCP-004001 now";
    const utils::AppDataManager layout = load(document);
    expectFailure<std::out_of_range>([&] { layout.buttons(); }, invalidKey);
}

TEST_F(AppDataManagerTest, TabIndexTrueReadsAsOneWhileIdTrueIsATypeError) {
    json document = smallLayoutDocument();
    button(document)["tabIndex"] = true;
    EXPECT_EQ(load(document).buttons().at(0).disposition.tabIndex, 1);
    button(document)["id"] = true;
    const utils::AppDataManager layout = load(document);
    expectFailure<json::type_error>([&] { layout.buttons(); },
                                    typeError(302, "type must be number, but is boolean"));
}

TEST_F(AppDataManagerTest, UpdateTimeAbsentGivesPeriodZero) {
    json document = smallLayoutDocument();
    document["window"].erase("updateTime");
    EXPECT_EQ(load(document).window().updateTime, 0);
}

TEST_F(AppDataManagerTest, AnEmptyClassNameIsReadAsAnEmptyName) {
    json document = smallLayoutDocument();
    document["window"]["className"] = "";
    EXPECT_EQ(load(document).window().className, "");
    document["window"].erase("className");
    EXPECT_EQ(load(document).window().className, "");
}

TEST_F(AppDataManagerTest, TheTitleIsKeptAsItsCatalogueIdWithoutLookup) {
    json document = smallLayoutDocument();
    document["window"]["title"] = "no catalogue id";
    EXPECT_EQ(load(document).window().title, "no catalogue id");
}

// The menu's Run and Stop, as the server stands when the menu is read.

struct MenuReaderTest : AppDataManagerTest {
    PanelLiveWindow panel;

    std::vector<std::int32_t> menuIds() {
        std::vector<std::int32_t> result;
        for (const MenuItemRecord& item : load(smallLayoutDocument()).menuItems()) {
            result.push_back(item.commandId);
        }
        return result;
    }
};

TEST_F(MenuReaderTest, ARunningServerKeepsStopAndDropsRun) {
    panel.makeHost();
    ASSERT_TRUE(isServerRunning());
    EXPECT_EQ(menuIds(), (std::vector<std::int32_t>{4, 2, 6}));
    const std::vector<MenuItemRecord> items = load(smallLayoutDocument()).menuItems();
    EXPECT_EQ(items[1].text, "CVCP-000002");
}

TEST_F(MenuReaderTest, AStoppedServerKeepsRunAndDropsStop) {
    panel.makeHost();
    getHost()->stopServer();
    ASSERT_FALSE(isServerRunning());
    EXPECT_EQ(menuIds(), (std::vector<std::int32_t>{4, 1, 6}));
}

TEST_F(MenuReaderTest, AMenuWithoutRunOrStopReadsNeither) {
    json document = smallLayoutDocument();
    document["menu"]["items"] = {{{"commandId", 4}, {"text", "CVCP-003001"}},
                                 {{"commandId", 6}, {"text", "CVCP-003002"}}};
    const std::vector<MenuItemRecord> items = load(document).menuItems();
    ASSERT_EQ(items.size(), 2u);
    EXPECT_EQ(items[0].commandId, 4);
    EXPECT_EQ(items[1].commandId, 6);
}

TEST_F(MenuReaderTest, ItemsTakeDefaultsAndBooleansAndKeepTheirTextAsItStands) {
    json document = smallLayoutDocument();
    document["menu"]["items"] = {
        {{"text", "CVCP-003001"}}, {{"commandId", true}}, {{"commandId", 6.7}, {"text", "no id"}}};
    // No server runs here: true reads as Run, which stays.
    const std::vector<MenuItemRecord> items = load(document).menuItems();
    ASSERT_EQ(items.size(), 3u);
    EXPECT_EQ(items[0].commandId, 0);
    EXPECT_EQ(items[0].text, "CVCP-003001");
    EXPECT_EQ(items[1].commandId, 1);
    EXPECT_EQ(items[1].text, "");
    EXPECT_EQ(items[2].commandId, 6);
    EXPECT_EQ(items[2].text, "no id");
}

TEST_F(MenuReaderTest, AMenuWithoutItemsIsEmpty) {
    json document = smallLayoutDocument();
    document["menu"] = json::object();
    EXPECT_TRUE(load(document).menuItems().empty());
    document["menu"] = json::array();
    EXPECT_TRUE(load(document).menuItems().empty());
}

} // namespace
