#include "panel/layout_ids.h"

#include <fstream>
#include <map>
#include <set>
#include <string>

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include "panel/command_table.h"
#include "tests/support/panel/layout_documents.h"

namespace {

// The layout file of the tree, as the program ships it.
nlohmann::json treeLayout() {
    std::ifstream file(treeLayoutPath(), std::ios::binary);
    return nlohmann::json::parse(file);
}

// Every widget of every section by its id, with its command id (none when it carries none).
std::map<std::int32_t, std::int32_t> commandsOfWidgets(const nlohmann::json& layout) {
    std::map<std::int32_t, std::int32_t> commands;
    for (const auto& section : layout.at("widgets").items()) {
        for (const nlohmann::json& widget : section.value()) {
            commands.emplace(widget.at("id").get<std::int32_t>(),
                             widget.value("commandId", commandid::none));
        }
    }
    return commands;
}

TEST(LayoutIds, EveryAddressedWidgetIsInTheLayoutWithItsCommand) {
    const std::map<std::int32_t, std::int32_t> commands = commandsOfWidgets(treeLayout());
    for (const AddressedWidget& addressed : addressedWidgets) {
        const auto found = commands.find(addressed.id);
        ASSERT_NE(found, commands.end()) << "widget " << addressed.id;
        const std::int32_t command = commandCarriedBy(addressed.id);
        if (command != commandid::none) {
            EXPECT_EQ(found->second, command) << "widget " << addressed.id;
        }
    }
}

TEST(LayoutIds, TheMenuHoldsRunStopAndExit) {
    const nlohmann::json layout = treeLayout();
    std::set<std::int32_t> commands;
    for (const nlohmann::json& item : layout.at("menu").at("items")) {
        commands.insert(item.at("commandId").get<std::int32_t>());
    }
    EXPECT_TRUE(commands.count(commandid::run));
    EXPECT_TRUE(commands.count(commandid::stop));
    EXPECT_TRUE(commands.count(commandid::quit));
}

TEST(LayoutIds, EveryCommandOfTheLayoutIsOneTheApplicationMakes) {
    const nlohmann::json layout = treeLayout();
    for (const auto& [id, command] : commandsOfWidgets(layout)) {
        EXPECT_TRUE(command == commandid::none || commandIsMade(command)) << "widget " << id;
    }
}

} // namespace
