#include "panel/layout_check.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "panel/app_data_manager.h"
#include "tests/support/foundation/temp_folder.h"
#include "tests/support/panel/layout_documents.h"
#include "tests/support/panel/recording_application.h"

using nlohmann::json;

namespace {

json shippedDocument() {
    std::ifstream stream(nativePath(treeLayoutPath()), std::ios::binary);
    return json::parse(stream);
}

bool found(const std::vector<LayoutProblem>& problems, const std::string& path,
           const std::string& words) {
    return std::any_of(problems.begin(), problems.end(), [&](const LayoutProblem& problem) {
        return problem.path == path && problem.message.find(words) != std::string::npos;
    });
}

std::string listed(const std::vector<LayoutProblem>& problems) {
    std::string text;
    for (const LayoutProblem& problem : problems) {
        text += problem.path + ": " + problem.message + "\n";
    }
    return text;
}

struct LayoutCheckTest : testing::Test {
    void SetUp() override { panelMessages.setLanguage(Language::English); }

    TempFolder folder;
};

TEST_F(LayoutCheckTest, TheShippedLayoutIsClean) {
    const std::vector<LayoutProblem> problems = checkLayoutFile(treeLayoutPath());
    EXPECT_TRUE(problems.empty()) << listed(problems);
}

// The shipped file names its schema for editors; the program reads past that member.
TEST_F(LayoutCheckTest, TheProgramReadsTheShippedFileWithItsSchemaMember) {
    ASSERT_TRUE(shippedDocument().contains("$schema"));
    const utils::AppDataManager layout(treeLayoutPath(), DisplayScale{});
    EXPECT_EQ(layout.window().className, "CVHControlPanel");
}

TEST_F(LayoutCheckTest, AFileThatIsNoJsonIsOneProblemOfTheWholeDocument) {
    const std::string path = writeLayoutFile(folder, "{\"window\": ");
    const std::vector<LayoutProblem> problems = checkLayoutFile(path);
    ASSERT_EQ(problems.size(), 1U);
    EXPECT_EQ(problems[0].path, "");
    EXPECT_NE(problems[0].message.find("Error data initializing of control panel"),
              std::string::npos);
    EXPECT_NE(problems[0].message.find("parse_error"), std::string::npos);
}

struct BrokenCopy {
    const char* name;
    std::function<void(json&)> change;
    const char* path;
    const char* words;
};

json& widget(json& document, const char* kind, std::size_t index) {
    return document["widgets"][kind][index];
}

std::vector<BrokenCopy> brokenCopies() {
    return {
        {"no root object", [](json& d) { d = json::array(); }, "", "must be object"},
        {"no widgets", [](json& d) { d.erase("widgets"); }, "/widgets", "key 'widgets' not found"},
        {"menu of wrong type", [](json& d) { d["menu"] = 3; }, "/menu", "must be object"},
        {"no title", [](json& d) { d["window"].erase("title"); }, "/window/title",
         "key 'title' not found"},
        {"title no catalogue id", [](json& d) { d["window"]["title"] = "Panel"; }, "/window/title",
         "'Panel' has no text in English"},
        {"window size of wrong type", [](json& d) { d["window"]["size"]["x"] = "460"; },
         "/window/size/x", "type must be number, but is string"},
        {"other class name", [](json& d) { d["window"]["className"] = "Panel"; },
         "/window/className", "must be CVHControlPanel"},
        {"labels no array", [](json& d) { d["widgets"]["labels"] = json::object(); },
         "/widgets/labels", "type must be array, but is object"},
        {"command id as text", [](json& d) { widget(d, "buttons", 3)["commandId"] = "5"; },
         "/widgets/buttons/3/commandId", "type must be number, but is string"},
        {"no disposition", [](json& d) { widget(d, "labels", 1).erase("disposition"); },
         "/widgets/labels/1/disposition", "key 'disposition' not found"},
        {"size an array",
         [](json& d) {
             widget(d, "labels", 1)["disposition"]["size"] = {1, 2};
         },
         "/widgets/labels/1/disposition/size", "must be object"},
        {"tab index missing", [](json& d) { widget(d, "syslinks", 1).erase("tabIndex"); },
         "/widgets/syslinks/1/tabIndex", "key 'tabIndex' not found"},
        {"list entry a number", [](json& d) { widget(d, "comboboxs", 0)["values"][1] = 2; },
         "/widgets/comboboxs/0/values/1", "type must be string, but is number"},
        {"refused command 7", [](json& d) { widget(d, "buttons", 3)["commandId"] = 7; },
         "/widgets/buttons/3/commandId", "command id 7 is refused"},
        {"refused command 8", [](json& d) { widget(d, "syslinks", 1)["commandId"] = 8; },
         "/widgets/syslinks/1/commandId", "command id 8 is refused"},
        {"no command on a button", [](json& d) { widget(d, "buttons", 3)["commandId"] = 0; },
         "/widgets/buttons/3/commandId", "command id 0 is refused"},
        {"refused menu command", [](json& d) { d["menu"]["items"][0]["commandId"] = 15; },
         "/menu/items/0/commandId", "command id 15 is refused"},
        {"unknown text id", [](json& d) { widget(d, "labels", 0)["text"] = "CVCP-999999"; },
         "/widgets/labels/0/text", "has no text in Ukrainian"},
        {"unknown tab caption", [](json& d) { widget(d, "tabpanels", 0)["tabs"][1] = "Tab"; },
         "/widgets/tabpanels/0/tabs/1", "has no text in Russian"},
        {"no Run button", [](json& d) { d["widgets"]["buttons"].erase(0); }, "/widgets/buttons",
         "no push button 7"},
        {"status label a link",
         [](json& d) {
             widget(d, "labels", 1)["id"] = 33;
             widget(d, "syslinks", 1)["id"] = 3;
         },
         "/widgets/syslinks/1", "is a link, but the program takes widget 3"},
        {"Stop button runs Run", [](json& d) { widget(d, "buttons", 1)["commandId"] = 1; },
         "/widgets/buttons/1/commandId", "must carry command id 2"},
        {"two languages", [](json& d) { widget(d, "comboboxs", 0)["values"].erase(2); },
         "/widgets/comboboxs/0/values", "needs 3 entries"},
        {"id taken twice", [](json& d) { widget(d, "labels", 0)["id"] = 21; },
         "/widgets/labels/2/id", "id 21 is taken by /widgets/labels/0"},
        {"tab that doesn't exist", [](json& d) { widget(d, "labels", 0)["tabIndex"] = 5; },
         "/widgets/labels/0/tabIndex", "tab 5 doesn't exist"},
        {"overlap", [](json& d) { widget(d, "labels", 2)["disposition"]["position"]["y"] = 50; },
         "/widgets/labels/2/disposition", "overlaps /widgets/labels/0"},
        {"overlap with a widget of every tab",
         [](json& d) {
             widget(d, "buttons", 3)["disposition"]["position"] = {{"x", 24}, {"y", 206}};
         },
         "/widgets/buttons/3/disposition", "overlaps /widgets/buttons/0"},
        {"past the right edge",
         [](json& d) { widget(d, "buttons", 3)["disposition"]["position"]["x"] = 360; },
         "/widgets/buttons/3/disposition", "leaves the window"},
        {"above the top",
         [](json& d) { widget(d, "labels", 0)["disposition"]["position"]["y"] = -1; },
         "/widgets/labels/0/disposition", "leaves the window"},
        {"off the tab's page",
         [](json& d) { widget(d, "labels", 0)["disposition"]["position"]["y"] = 20; },
         "/widgets/labels/0/disposition", "leaves the page of /widgets/tabpanels/0"},
        {"menu without Exit", [](json& d) { d["menu"]["items"].erase(3); }, "/menu/items",
         "no item Exit (command id 6)"},
        {"menu without items", [](json& d) { d["menu"].erase("items"); }, "/menu/items",
         "no item Run (command id 1)"},
    };
}

TEST_F(LayoutCheckTest, EachProblemOfABrokenCopyIsFoundAtItsPath) {
    for (const BrokenCopy& copy : brokenCopies()) {
        json document = shippedDocument();
        copy.change(document);
        const std::vector<LayoutProblem> problems = checkLayoutDocument(document);
        EXPECT_TRUE(found(problems, copy.path, copy.words))
            << copy.name << ": expected " << copy.path << ": " << copy.words << ", found\n"
            << listed(problems);
    }
}

TEST_F(LayoutCheckTest, EveryProblemIsToldAtOnce) {
    json document = shippedDocument();
    document["window"].erase("title");
    widget(document, "buttons", 3)["commandId"] = 7;
    document["menu"]["items"].erase(3);
    const std::vector<LayoutProblem> problems = checkLayoutDocument(document);
    EXPECT_EQ(problems.size(), 3U) << listed(problems);
    EXPECT_TRUE(found(problems, "/window/title", "not found"));
    EXPECT_TRUE(found(problems, "/widgets/buttons/3/commandId", "refused"));
    EXPECT_TRUE(found(problems, "/menu/items", "Exit"));
}

// A closed drop-down list is one line high; its open list may lie over what follows.
TEST_F(LayoutCheckTest, AnOpenListMayCoverTheWidgetsBelowIt) {
    json document = shippedDocument();
    widget(document, "comboboxs", 0)["disposition"]["size"]["y"] = 200;
    EXPECT_TRUE(checkLayoutDocument(document).empty());
}

// The checker refuses exactly the command ids for which the application makes no command. A
// host's command that fails for want of an installation has got past the refusal.
bool refusedByTheApplication(RecordingApplication& application, std::int32_t id) {
    try {
        return application.makeCommand(id) == nullptr;
    } catch (const std::exception& failure) {
        const std::string words = failure.what();
        return words == "invalid command id" || words == "unknown server command id";
    }
}

TEST_F(LayoutCheckTest, RefusedCommandIdsAreThoseTheApplicationRefuses) {
    const auto layout = std::make_shared<utils::AppDataManager>(
        writeLayoutFile(folder, smallLayoutDocument().dump()), DisplayScale{});
    RecordingApplication application(makeRecordingWindow(*layout), *layout);
    for (std::int32_t id = -2; id <= 16; ++id) {
        json document = shippedDocument();
        widget(document, "buttons", 3)["commandId"] = id;
        EXPECT_EQ(found(checkLayoutDocument(document), "/widgets/buttons/3/commandId", "refused"),
                  refusedByTheApplication(application, id))
            << "command id " << id;
    }
}

// The broken layouts that the command-line checker and the schema are tried on: the shipped file
// changed by each case's JSON Patch, or the case's raw text where no patch can make the file. Each
// is read as a file, as the program and the checker read it.
TEST_F(LayoutCheckTest, EachBrokenCopyOfTheTreeFailsAtItsExpectedPath) {
    const std::string casesPath =
        std::string(CORVANITE_SOURCE_DIR) + "/layout/check/broken-cases.json";
    std::ifstream stream(nativePath(casesPath), std::ios::binary);
    const json cases = json::parse(stream).at("cases");
    ASSERT_FALSE(cases.empty());
    for (const json& brokenCase : cases) {
        const std::string name = brokenCase.at("name").get<std::string>();
        std::string text;
        if (brokenCase.contains("text")) {
            text = brokenCase.at("text").get<std::string>();
        } else {
            try {
                text = shippedDocument().patch(brokenCase.at("patch")).dump(4);
            } catch (const json::exception& failure) {
                ADD_FAILURE() << name << ": the patch doesn't apply: " << failure.what();
                continue;
            }
        }
        std::string path = brokenCase.at("expectedPath").get<std::string>();
        path = path == "(document)" ? "" : path;
        const std::vector<LayoutProblem> problems = checkLayoutFile(writeLayoutFile(folder, text));
        EXPECT_TRUE(found(problems, path, "")) << name << ": expected " << path << ", found\n"
                                               << listed(problems);
    }
}

} // namespace
