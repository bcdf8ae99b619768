#include "panel/command_table.h"

#include <algorithm>
#include <cstdint>
#include <fstream>
#include <limits>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "panel/layout_check.h"
#include "tests/support/foundation/temp_folder.h"
#include "tests/support/panel/layout_documents.h"

using nlohmann::json;

namespace {

json treeDocument(const std::string& path) {
    std::ifstream stream(nativePath(path), std::ios::binary);
    return json::parse(stream);
}

bool hasRow(std::int32_t id) {
    return std::any_of(commandTable.begin(), commandTable.end(),
                       [id](const CommandRow& row) { return row.id == id; });
}

// Ids around the table's and the ends of the number range, some with a row and most without.
std::vector<std::int32_t> probedIds() {
    std::vector<std::int32_t> ids{std::numeric_limits<std::int32_t>::min(),
                                  std::numeric_limits<std::int32_t>::max(), 100, 1000};
    for (std::int32_t id = -3; id <= 20; ++id) {
        ids.push_back(id);
    }
    return ids;
}

std::set<std::int32_t> madeIds() {
    std::set<std::int32_t> ids;
    for (const CommandRow& row : commandTable) {
        if (commandIsMade(row.id)) {
            ids.insert(row.id);
        }
    }
    return ids;
}

// The ids that the schema lets a widget or a menu item carry are those the application makes a
// command for: an editor that validates the file refuses what the program would refuse.
TEST(CommandTable, TheSchemasCommandIdsAreTheIdsTheTableMakes) {
    const json schema = treeDocument(treeSchemaPath());
    std::set<std::int32_t> listed;
    for (const json& id : schema.at("$defs").at("commandId").at("enum")) {
        EXPECT_TRUE(listed.insert(id.get<std::int32_t>()).second) << "listed twice: " << id;
    }
    EXPECT_EQ(listed, madeIds());
}

TEST(CommandTable, TheMenuAndTheWidgetsOfTheSchemaTakeItsCommandIds) {
    const json schema = treeDocument(treeSchemaPath());
    const json& defs = schema.at("$defs");
    const std::string reference = "#/$defs/commandId";
    EXPECT_EQ(defs.at("menu")
                  .at("properties")
                  .at("items")
                  .at("items")
                  .at("properties")
                  .at("commandId")
                  .at("$ref"),
              reference);
    EXPECT_EQ(defs.at("button").at("properties").at("commandId").at("$ref"), reference);
    // A drop-down list may also go without a command.
    const json& widget = defs.at("withCommand").at("properties").at("commandId").at("anyOf");
    EXPECT_EQ(widget, json::parse(R"([{"$ref": "#/$defs/commandId"}, {"const": 0}])"));
}

TEST(CommandTable, AnIdWithoutARowIsRefused) {
    for (const std::int32_t id : probedIds()) {
        if (hasRow(id)) {
            continue;
        }
        EXPECT_EQ(commandRoute(id), CommandRoute::refused) << id;
        EXPECT_FALSE(commandIsMade(id)) << id;
        EXPECT_FALSE(hasHostAction(id)) << id;
        EXPECT_FALSE(isLongRunning(id)) << id;
        EXPECT_FALSE(isReport(id)) << id;
        EXPECT_EQ(carrierOf(id), noCarrier) << id;
        EXPECT_EQ(actionWordOf(id), nullptr) << id;
    }
}

TEST(CommandTable, TheLayoutCheckerRefusesAnIdWithoutARow) {
    panelMessages.setLanguage(Language::English);
    for (const std::int32_t id : probedIds()) {
        if (hasRow(id) || id == commandid::none) {
            continue;
        }
        json document = treeDocument(treeLayoutPath());
        document["widgets"]["buttons"][3]["commandId"] = id;
        const std::vector<LayoutProblem> problems = checkLayoutDocument(document);
        EXPECT_TRUE(std::any_of(problems.begin(), problems.end(),
                                [](const LayoutProblem& problem) {
                                    return problem.path == "/widgets/buttons/3/commandId" &&
                                           problem.message.find("refused") != std::string::npos;
                                }))
            << "command id " << id;
    }
}

// Run, Stop and a new log level go to the worker, which takes them from their widgets; the
// layout must give each of those widgets its command.
TEST(CommandTable, TheWorkersCommandsAreTheHostOperationsWithTheirCarriers) {
    EXPECT_TRUE(isLongRunning(commandid::run));
    EXPECT_TRUE(isLongRunning(commandid::stop));
    EXPECT_TRUE(isLongRunning(commandid::logLevel));
    EXPECT_EQ(carrierOf(commandid::run), widgetid::runButton);
    EXPECT_EQ(carrierOf(commandid::stop), widgetid::stopButton);
    EXPECT_EQ(carrierOf(commandid::logLevel), widgetid::logLevelBox);
    EXPECT_EQ(commandCarriedBy(widgetid::runButton), commandid::run);
    EXPECT_EQ(commandCarriedBy(widgetid::logLevelBox), commandid::logLevel);
    EXPECT_EQ(commandCarriedBy(widgetid::uncPathsBox), commandid::useUncPaths);
    EXPECT_EQ(commandCarriedBy(widgetid::languageBox), commandid::none);
}

TEST(CommandTable, SevenAndEightHaveRowsThatRefuseThem) {
    EXPECT_EQ(commandRoute(commandid::refused), CommandRoute::refused);
    EXPECT_EQ(commandRoute(commandid::missingOperation), CommandRoute::hostMissing);
    EXPECT_FALSE(commandIsMade(commandid::refused));
    EXPECT_FALSE(commandIsMade(commandid::missingOperation));
}

} // namespace
