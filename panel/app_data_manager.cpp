#include "panel/app_data_manager.h"

#include <exception>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <utility>

#include "foundation/exceptions.h"
#include "foundation/filesys.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/host_facts.h"
#include "panel/layout_depth.h"
#include "panel/layout_ids.h"
#include "panel/layout_numbers.h"
#include "panel/text_resolution.h"

using nlohmann::json;

namespace utils {

namespace {

// One element of a widget array. The reading order of the keys decides which fault of a broken
// element is reported: id, commandId, disposition's size and position, text, tabIndex, lists.

std::int32_t readId(const json& element) {
    return identifierNumber(element.at("id"));
}

std::int32_t readCommandId(const json& element) {
    return identifierNumber(element.at("commandId"));
}

PixelPair readPair(const json& element, const char* key, const DisplayScale& scale) {
    const json& pair = element.at("disposition").at(key);
    return scale.scale({numberOrZero(pair, "x"), numberOrZero(pair, "y")});
}

WidgetDisposition readDisposition(const json& element, const DisplayScale& scale) {
    WidgetDisposition disposition;
    disposition.size = readPair(element, "size", scale);
    disposition.position = readPair(element, "position", scale);
    ResolvedText resolved = resolveText(element.value("text", std::string()));
    disposition.text = std::move(resolved.text);
    disposition.displayText = std::move(resolved.displayText);
    disposition.tabIndex = lenientNumber(element.at("tabIndex"));
    return disposition;
}

// Catalogue ids, stored as they stand.
std::vector<std::string> readIds(const json& element, const char* key) {
    std::vector<std::string> ids;
    for (const json& id : element.at(key)) {
        ids.push_back(id.get<std::string>());
    }
    return ids;
}

ButtonRecord readButton(const json& element, const DisplayScale& scale) {
    ButtonRecord record;
    record.id = readId(element);
    record.commandId = readCommandId(element);
    record.disposition = readDisposition(element, scale);
    return record;
}

// A missing array means no widget of that kind. The member is walked as the library walks any
// value: an object over its values, a null not at all, a single value as one element.
template <typename Record, typename Reader>
std::vector<Record> readWidgets(const json& widgets, const char* key, Reader read) {
    std::vector<Record> records;
    const auto found = widgets.find(key);
    if (found == widgets.end()) {
        return records;
    }
    for (const json& element : *found) {
        records.push_back(read(element));
    }
    return records;
}

// Copying and freeing a document recurse over its depth, so a file nested far deeper than any
// layout is refused before it becomes one.
json parseDocument(const std::string& path) {
    std::ifstream file = filesys::openForReading(path);
    std::istringstream stream(std::string(std::istreambuf_iterator<char>(file), {}));
    if (layoutDepth(stream.view()) > maxLayoutDepth) {
        throw std::length_error("layout nested too deeply");
    }
    json document;
    stream >> document;
    return document;
}

} // namespace

const AppDataManager& AppDataManager::instance() {
    static const auto layout = std::make_shared<const AppDataManager>(layoutPath());
    return *layout;
}

AppDataManager::AppDataManager(const std::string& path, const DisplayScale& scale) : scale_(scale) {
    // The library's words mean nothing to the user here: any fault of the file itself is told
    // as one message of the panel's own.
    try {
        json document = parseDocument(path);
        windowData_ = document.at("window");
        menuData_ = document.at("menu");
        widgetData_ = document.at("widgets");
    } catch (const std::exception&) {
        throw BasicException(panelMessages.text(panelmsg::layoutNotRead));
    }
}

WindowRecord AppDataManager::window() const {
    WindowRecord record;
    record.title = windowData_.at("title").get<std::string>();
    const json& size = windowData_.at("size");
    record.size = scale_.scale({numberOrZero(size, "x"), numberOrZero(size, "y")});
    record.className = utf8ToCp1251(windowData_.value("className", std::string()));
    record.updateTime = numberOrZero(windowData_, "updateTime");
    return record;
}

std::vector<MenuItemRecord> AppDataManager::menuItems() const {
    std::vector<MenuItemRecord> items;
    const auto found = menuData_.find("items");
    if (found == menuData_.end()) {
        return items;
    }
    // The file holds Run and Stop side by side; the menu shows the one that fits now, and the
    // update cycle swaps it in place later.
    const std::int32_t unwanted = isServerRunning() ? commandid::run : commandid::stop;
    for (const json& element : *found) {
        MenuItemRecord item;
        item.commandId = numberOrZero(element, "commandId");
        item.text = element.value("text", std::string());
        if (item.commandId != unwanted) {
            items.push_back(std::move(item));
        }
    }
    return items;
}

std::vector<TabpanelRecord> AppDataManager::tabpanels() const {
    return readWidgets<TabpanelRecord>(widgetData_, "tabpanels", [this](const json& element) {
        TabpanelRecord record;
        record.id = readId(element);
        record.disposition = readDisposition(element, scale_);
        record.tabs = readIds(element, "tabs");
        return record;
    });
}

std::vector<ComboboxRecord> AppDataManager::comboboxes() const {
    return readWidgets<ComboboxRecord>(widgetData_, "comboboxs", [this](const json& element) {
        ComboboxRecord record;
        record.id = readId(element);
        record.commandId = readCommandId(element);
        record.disposition = readDisposition(element, scale_);
        record.values = readIds(element, "values");
        return record;
    });
}

std::vector<ButtonRecord> AppDataManager::checkboxes() const {
    return readWidgets<ButtonRecord>(widgetData_, "checkboxs", [this](const json& element) {
        return readButton(element, scale_);
    });
}

std::vector<ButtonRecord> AppDataManager::syslinks() const {
    return readWidgets<ButtonRecord>(widgetData_, "syslinks", [this](const json& element) {
        return readButton(element, scale_);
    });
}

std::vector<ButtonRecord> AppDataManager::buttons() const {
    return readWidgets<ButtonRecord>(widgetData_, "buttons", [this](const json& element) {
        return readButton(element, scale_);
    });
}

std::vector<LabelRecord> AppDataManager::labels() const {
    return readWidgets<LabelRecord>(widgetData_, "labels", [this](const json& element) {
        LabelRecord record;
        record.id = readId(element);
        record.disposition = readDisposition(element, scale_);
        return record;
    });
}

const std::string& layoutPath() {
    static const std::string path = installationPath() + "/CVHControlPanel.json";
    return path;
}

} // namespace utils
