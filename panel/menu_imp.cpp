#include "panel/menu_imp.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <stdexcept>

#include "foundation/message_catalogue.h"
#include "host/host_facts.h"
#include "panel/layout_ids.h"

void MenuImp::update() {
    const bool swaps = !items_.empty() && serverCommands_;
    update(swaps && isServerRunning());
}

void MenuImp::update(bool running) {
    if (!items_.empty() && serverCommands_) {
        const std::int32_t wanted = running ? commandid::stop : commandid::run;
        try {
            find(wanted);
        } catch (const std::exception&) {
            // The entry keeps its place: the other one of the pair is replaced in it.
            replaceItem(
                running ? commandid::run : commandid::stop,
                MenuItem{running ? panelmsg::stop : panelmsg::run, serverCommands_(wanted)});
        }
    }
    updateTexts();
}

void MenuImp::addItem(const MenuItem& item) {
    const std::int32_t id = item.id();
    const std::string shown = panelMessages.text(item.text.c_str());
    insertAt(item, items_.size());
    appendEntry(id, shown);
}

void MenuImp::removeItem(std::int32_t id) {
    items_.remove_if([id](const MenuItem& item) { return item.id() == id; });
    deleteEntry(id);
}

void MenuImp::replaceItem(std::int32_t oldId, const MenuItem& item) {
    const auto old = std::find_if(items_.begin(), items_.end(),
                                  [oldId](const MenuItem& each) { return each.id() == oldId; });
    insertAt(item, static_cast<std::size_t>(std::distance(items_.begin(), old)));
    items_.remove_if([oldId](const MenuItem& each) { return each.id() == oldId; });
    modifyEntry(oldId, item.id(), item.text);
}

bool MenuImp::execute(std::int32_t id) {
    try {
        find(id).command->execute();
        return true;
    } catch (const std::exception&) {
        return false;
    }
}

void MenuImp::updateTexts() {
    for (const MenuItem& item : items_) {
        const std::int32_t id = item.id();
        modifyEntry(id, id, panelMessages.text(item.text.c_str()));
        refreshTrayIcon();
    }
}

MenuItem MenuImp::find(std::int32_t id) const {
    for (const MenuItem& item : items_) {
        if (item.id() == id) {
            return item;
        }
    }
    throw std::logic_error("menu item not found");
}

void MenuImp::insertAt(const MenuItem& item, std::size_t index) {
    const std::int32_t id = item.id();
    // The test for a duplicate ends in the handler whatever it finds, and the handler adds: a
    // duplicate is added like any other item.
    try {
        find(id);
        throw std::logic_error("menu item exist");
    } catch (const std::exception&) {
        items_.insert(
            std::next(items_.begin(), static_cast<std::ptrdiff_t>(std::min(index, items_.size()))),
            item);
    }
}
