#include "panel/layout_check.h"

#include <algorithm>
#include <array>
#include <exception>
#include <fstream>
#include <optional>
#include <utility>

#include "foundation/filesys.h"
#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "panel/app_data_manager.h"
#include "panel/command_table.h"
#include "panel/layout_ids.h"
#include "panel/layout_numbers.h"
#include "panel/widget_kind.h"

using nlohmann::json;

namespace {

// The layout gives the window's outer size; widgets are placed in its client area, inside the
// caption and the frame of a window that can't be resized (96 dots per inch).
constexpr std::int32_t frameWidth = 16;
constexpr std::int32_t frameHeight = 39;
// A closed drop-down list shows one line; the layout's height is that of the open list.
constexpr std::int32_t closedComboboxHeight = 24;
// The page of a tab panel lies inside its frame, below the row of tab captions.
constexpr std::int32_t tabFrame = 4;
constexpr std::int32_t tabCaptionHeight = 26;
constexpr const char* windowClassName = "CVHControlPanel";

struct Section {
    const char* key;
    WidgetKind kind;
    const char* kindName;
    bool hasCommand;
    // The member of catalogue ids that the kind carries, if any.
    const char* listKey;
};

constexpr std::array<Section, 6> sections{{
    {"tabpanels", WidgetKind::Tabpanel, "tab panel", false, "tabs"},
    {"comboboxs", WidgetKind::Combobox, "drop-down list", true, "values"},
    {"checkboxs", WidgetKind::Checkbox, "check box", true, nullptr},
    {"syslinks", WidgetKind::Syslink, "link", true, nullptr},
    {"buttons", WidgetKind::Button, "push button", true, nullptr},
    {"labels", WidgetKind::Label, "label", false, nullptr},
}};

const Section& sectionOf(WidgetKind kind) {
    for (const Section& section : sections) {
        if (section.kind == kind) {
            return section;
        }
    }
    return sections.back();
}

struct RequiredItem {
    std::int32_t commandId;
    const char* name;
};

constexpr std::array<RequiredItem, 3> requiredMenuItems{
    {{commandid::run, "Run"}, {commandid::stop, "Stop"}, {commandid::quit, "Exit"}}};

constexpr std::array<const char*, 3> languageNames{"Russian", "English", "Ukrainian"};

// The ids for which the application makes a command (the command table's); 0 (no command) only
// where the widget may go without one.
bool acceptedCommand(std::int32_t id, bool noneAllowed) {
    if (id == commandid::none) {
        return noneAllowed;
    }
    return commandIsMade(id);
}

std::string typeProblem(const char* expected, const json& value) {
    return std::string("type must be ") + expected + ", but is " + value.type_name();
}

struct Area {
    std::int32_t left, top, right, bottom;
};

bool inside(const Area& inner, const Area& outer) {
    return inner.left >= outer.left && inner.top >= outer.top && inner.right <= outer.right &&
           inner.bottom <= outer.bottom;
}

// What the checks learn of one widget; a value the file gets wrong stays empty.
struct WidgetFacts {
    std::string path;
    WidgetKind kind;
    std::optional<std::int32_t> id;
    std::optional<std::int32_t> commandId;
    std::optional<std::int32_t> tabIndex;
    std::optional<PixelPair> position;
    std::optional<PixelPair> size;
    std::size_t entries = 0;
};

class LayoutChecker {
public:
    std::vector<LayoutProblem> check(const json& document);

private:
    void report(std::string path, std::string message) {
        problems_.push_back({std::move(path), std::move(message)});
    }

    // Runs one reading step; its failure is reported at the path in the reader's own words.
    template <typename Read>
    auto attempt(const std::string& path, Read read) -> std::optional<decltype(read())> {
        try {
            return read();
        } catch (const std::exception& failure) {
            report(path, failure.what());
            return std::nullopt;
        }
    }

    const json* required(const json& object, const std::string& path, const char* key);
    const json* requiredObject(const json& object, const std::string& path, const char* key);
    std::optional<std::string> text(const json& value, const std::string& path);
    std::optional<PixelPair> pair(const json& object, const std::string& path, const char* key);
    void checkCatalogueId(const std::string& id, const std::string& path);

    std::optional<PixelPair> checkWindow(const json& window);
    void checkMenu(const json& menu);
    void checkWidgets(const json& widgets);
    void checkWidget(const json& element, const Section& section, const std::string& path);
    void checkCommand(WidgetFacts& facts, const json& element);
    void checkList(WidgetFacts& facts, const json& element, const char* key);
    void checkRequiredWidgets();
    void checkRequiredWidget(const AddressedWidget& required);
    void checkUniqueIds();
    void checkTabs();
    void checkPlaces(std::optional<PixelPair> clientSize);
    const WidgetFacts* tabPanel() const;
    void checkOnPage(const WidgetFacts& facts, const Area& area);

    std::vector<LayoutProblem> problems_;
    std::vector<WidgetFacts> widgets_;
};

const json* LayoutChecker::required(const json& object, const std::string& path, const char* key) {
    return attempt(path + "/" + key, [&] { return &object.at(key); }).value_or(nullptr);
}

const json* LayoutChecker::requiredObject(const json& object, const std::string& path,
                                          const char* key) {
    const json* value = required(object, path, key);
    if (value != nullptr && !value->is_object()) {
        report(path + "/" + key, typeProblem("object", *value));
        return nullptr;
    }
    return value;
}

std::optional<std::string> LayoutChecker::text(const json& value, const std::string& path) {
    return attempt(path, [&] { return value.get<std::string>(); });
}

std::optional<PixelPair> LayoutChecker::pair(const json& object, const std::string& path,
                                             const char* key) {
    const json* value = requiredObject(object, path, key);
    if (value == nullptr) {
        return std::nullopt;
    }
    const std::string at = path + "/" + key;
    const auto x = attempt(at + "/x", [&] { return numberOrZero(*value, "x"); });
    const auto y = attempt(at + "/y", [&] { return numberOrZero(*value, "y"); });
    if (!x || !y) {
        return std::nullopt;
    }
    return PixelPair{*x, *y};
}

void LayoutChecker::checkCatalogueId(const std::string& id, const std::string& path) {
    for (const auto& [language, table] : panelMessages.tables) {
        const auto found = table.find(id);
        if (found == table.end() || found->second.empty()) {
            const auto index = static_cast<std::size_t>(language);
            const char* name = index < languageNames.size() ? languageNames[index] : "?";
            report(path, "catalogue id '" + id + "' has no text in " + name);
        }
    }
}

std::optional<PixelPair> LayoutChecker::checkWindow(const json& window) {
    if (const json* title = required(window, "/window", "title")) {
        if (const auto id = text(*title, "/window/title")) {
            checkCatalogueId(*id, "/window/title");
        }
    }
    const auto size = pair(window, "/window", "size");
    const auto className = window.find("className");
    if (className == window.end()) {
        report("/window/className", std::string("missing: the window class must be ") +
                                        windowClassName + ", by which a second start finds it");
    } else if (const auto name = text(*className, "/window/className");
               name && *name != windowClassName) {
        report("/window/className", std::string("must be ") + windowClassName +
                                        ", by which a second start finds the window");
    }
    if (const auto period = window.find("updateTime"); period != window.end()) {
        attempt("/window/updateTime", [&] { return lenientNumber(*period); });
    }
    if (!size) {
        return std::nullopt;
    }
    return PixelPair{size->first - frameWidth, size->second - frameHeight};
}

void LayoutChecker::checkMenu(const json& menu) {
    std::vector<std::int32_t> commands;
    const auto items = menu.find("items");
    if (items != menu.end() && !items->is_array()) {
        report("/menu/items", typeProblem("array", *items));
    } else if (items != menu.end()) {
        for (std::size_t index = 0; index < items->size(); ++index) {
            const json& item = (*items)[index];
            const std::string path = "/menu/items/" + std::to_string(index);
            const auto command = attempt(path, [&] { return numberOrZero(item, "commandId"); });
            if (command && !acceptedCommand(*command, false)) {
                report(path + "/commandId", "command id " + std::to_string(*command) +
                                                " is refused: the item is left out");
            } else if (command) {
                commands.push_back(*command);
            }
            if (const auto id = attempt(path, [&] { return item.value("text", std::string()); })) {
                checkCatalogueId(*id, path + "/text");
            }
        }
    }
    for (const RequiredItem& required : requiredMenuItems) {
        if (std::find(commands.begin(), commands.end(), required.commandId) == commands.end()) {
            report("/menu/items", std::string("no item ") + required.name + " (command id " +
                                      std::to_string(required.commandId) + ")");
        }
    }
}

void LayoutChecker::checkWidgets(const json& widgets) {
    for (const Section& section : sections) {
        const auto found = widgets.find(section.key);
        if (found == widgets.end()) {
            continue;
        }
        const std::string path = std::string("/widgets/") + section.key;
        if (!found->is_array()) {
            report(path, typeProblem("array", *found));
            continue;
        }
        for (std::size_t index = 0; index < found->size(); ++index) {
            checkWidget((*found)[index], section, path + "/" + std::to_string(index));
        }
    }
}

void LayoutChecker::checkWidget(const json& element, const Section& section,
                                const std::string& path) {
    WidgetFacts facts{path, section.kind, {}, {}, {}, {}, {}, 0};
    if (!element.is_object()) {
        report(path, typeProblem("object", element));
        widgets_.push_back(std::move(facts));
        return;
    }
    facts.id = attempt(path + "/id", [&] { return identifierNumber(element.at("id")); });
    if (section.hasCommand) {
        checkCommand(facts, element);
    }
    if (const json* disposition = requiredObject(element, path, "disposition")) {
        facts.size = pair(*disposition, path + "/disposition", "size");
        facts.position = pair(*disposition, path + "/disposition", "position");
    }
    if (const auto found = element.find("text"); found != element.end()) {
        const auto value = text(*found, path + "/text");
        if (value && value->find("CVCP-") != std::string::npos) {
            checkCatalogueId(*value, path + "/text");
        }
    }
    facts.tabIndex =
        attempt(path + "/tabIndex", [&] { return lenientNumber(element.at("tabIndex")); });
    if (section.listKey != nullptr) {
        checkList(facts, element, section.listKey);
    }
    widgets_.push_back(std::move(facts));
}

void LayoutChecker::checkCommand(WidgetFacts& facts, const json& element) {
    const std::string path = facts.path + "/commandId";
    facts.commandId = attempt(path, [&] { return identifierNumber(element.at("commandId")); });
    if (facts.commandId && !acceptedCommand(*facts.commandId, facts.kind == WidgetKind::Combobox)) {
        report(path, "command id " + std::to_string(*facts.commandId) +
                         " is refused: the window can't be built");
    }
}

void LayoutChecker::checkList(WidgetFacts& facts, const json& element, const char* key) {
    const json* list = required(element, facts.path, key);
    const std::string path = facts.path + "/" + key;
    if (list == nullptr) {
        return;
    }
    if (!list->is_array()) {
        report(path, typeProblem("array", *list));
        return;
    }
    facts.entries = list->size();
    for (std::size_t index = 0; index < list->size(); ++index) {
        const std::string at = path + "/" + std::to_string(index);
        if (const auto id = text((*list)[index], at)) {
            checkCatalogueId(*id, at);
        }
    }
}

void LayoutChecker::checkRequiredWidgets() {
    for (const AddressedWidget& required : addressedWidgets) {
        checkRequiredWidget(required);
    }
}

// The program takes the first widget of an id, whatever its kind.
void LayoutChecker::checkRequiredWidget(const AddressedWidget& required) {
    const Section& expected = sectionOf(required.kind);
    const auto found = std::find_if(widgets_.begin(), widgets_.end(), [&](const WidgetFacts& each) {
        return each.id == required.id;
    });
    const std::string name = std::string(expected.kindName) + " " + std::to_string(required.id) +
                             " (" + required.role + ")";
    if (found == widgets_.end()) {
        report(std::string("/widgets/") + expected.key, "no " + name);
        return;
    }
    if (found->kind != required.kind) {
        report(found->path, std::string("is a ") + sectionOf(found->kind).kindName +
                                ", but the program takes widget " + std::to_string(required.id) +
                                " for the " + name);
        return;
    }
    const std::int32_t command = commandCarriedBy(required.id);
    if (command != commandid::none && found->commandId && *found->commandId != command) {
        report(found->path + "/commandId",
               "the " + name + " must carry command id " + std::to_string(command));
    }
    if (required.entries != 0 && found->entries != required.entries) {
        report(found->path + "/" + expected.listKey,
               "the " + name + " needs " + std::to_string(required.entries) + " entries");
    }
}

void LayoutChecker::checkUniqueIds() {
    for (auto later = widgets_.begin(); later != widgets_.end(); ++later) {
        const auto first = std::find_if(widgets_.begin(), later, [&](const WidgetFacts& each) {
            return each.id && each.id == later->id;
        });
        if (first != later) {
            report(later->path + "/id", "id " + std::to_string(*later->id) + " is taken by " +
                                            first->path + ": the program finds only that one");
        }
    }
}

const WidgetFacts* LayoutChecker::tabPanel() const {
    const auto panel = std::find_if(widgets_.begin(), widgets_.end(), [](const WidgetFacts& each) {
        return each.id == widgetid::tabPanel && each.kind == WidgetKind::Tabpanel;
    });
    return panel == widgets_.end() ? nullptr : &*panel;
}

// A widget on a tab that the tab panel hasn't is never shown.
void LayoutChecker::checkTabs() {
    const WidgetFacts* panel = tabPanel();
    if (panel == nullptr) {
        return;
    }
    const auto tabs = static_cast<std::int32_t>(panel->entries);
    for (const WidgetFacts& facts : widgets_) {
        if (facts.tabIndex && *facts.tabIndex != -1 &&
            (*facts.tabIndex < 0 || *facts.tabIndex >= tabs)) {
            report(facts.path + "/tabIndex", "tab " + std::to_string(*facts.tabIndex) +
                                                 " doesn't exist: the widget is never shown");
        }
    }
}

std::optional<Area> areaOf(const WidgetFacts& facts) {
    if (!facts.position || !facts.size || !facts.tabIndex) {
        return std::nullopt;
    }
    const std::int32_t height = facts.kind == WidgetKind::Combobox
                                    ? std::min(facts.size->second, closedComboboxHeight)
                                    : facts.size->second;
    return Area{facts.position->first, facts.position->second,
                facts.position->first + facts.size->first, facts.position->second + height};
}

bool shownTogether(const WidgetFacts& one, const WidgetFacts& other) {
    return *one.tabIndex == -1 || *other.tabIndex == -1 || *one.tabIndex == *other.tabIndex;
}

bool overlap(const Area& one, const Area& other) {
    return one.left < other.right && other.left < one.right && one.top < other.bottom &&
           other.top < one.bottom;
}

// The tab panel holds the others; every other pair shown at the same time must keep apart.
void LayoutChecker::checkPlaces(std::optional<PixelPair> clientSize) {
    for (std::size_t index = 0; index < widgets_.size(); ++index) {
        const WidgetFacts& facts = widgets_[index];
        const auto area = areaOf(facts);
        if (!area) {
            continue;
        }
        if (clientSize && !inside(*area, Area{0, 0, clientSize->first, clientSize->second})) {
            report(facts.path + "/disposition", "leaves the window, whose client area is " +
                                                    std::to_string(clientSize->first) + " by " +
                                                    std::to_string(clientSize->second));
        }
        if (facts.kind == WidgetKind::Tabpanel) {
            continue;
        }
        checkOnPage(facts, *area);
        for (std::size_t earlier = 0; earlier < index; ++earlier) {
            const WidgetFacts& other = widgets_[earlier];
            const auto otherArea = areaOf(other);
            if (other.kind != WidgetKind::Tabpanel && otherArea && shownTogether(facts, other) &&
                overlap(*area, *otherArea)) {
                report(facts.path + "/disposition", "overlaps " + other.path);
            }
        }
    }
}

// A widget of one tab lies on the page of the tab panel.
void LayoutChecker::checkOnPage(const WidgetFacts& facts, const Area& area) {
    const WidgetFacts* panel = tabPanel();
    if (*facts.tabIndex == -1 || panel == nullptr) {
        return;
    }
    if (const auto frame = areaOf(*panel)) {
        const Area page{frame->left + tabFrame, frame->top + tabCaptionHeight,
                        frame->right - tabFrame, frame->bottom - tabFrame};
        if (!inside(area, page)) {
            report(facts.path + "/disposition", "leaves the page of " + panel->path);
        }
    }
}

std::vector<LayoutProblem> LayoutChecker::check(const json& document) {
    if (!document.is_object()) {
        report("", typeProblem("object", document));
        return problems_;
    }
    std::optional<PixelPair> clientSize;
    if (const json* window = requiredObject(document, "", "window")) {
        clientSize = checkWindow(*window);
    }
    if (const json* menu = requiredObject(document, "", "menu")) {
        checkMenu(*menu);
    }
    if (const json* widgetSection = requiredObject(document, "", "widgets")) {
        checkWidgets(*widgetSection);
    }
    checkUniqueIds();
    checkRequiredWidgets();
    checkTabs();
    checkPlaces(clientSize);
    return problems_;
}

// The library's words for a file that the program's reader refuses with its own.
std::string readingFailure(const std::string& path) {
    try {
        std::ifstream stream = filesys::openForReading(path);
        json document;
        stream >> document;
        document.at("window");
        document.at("menu");
        document.at("widgets");
    } catch (const std::exception& failure) {
        return failure.what();
    }
    return std::string();
}

} // namespace

std::vector<LayoutProblem> checkLayoutFile(const std::string& path) {
    try {
        const utils::AppDataManager layout(path, DisplayScale{});
    } catch (const std::exception& failure) {
        return {{"", std::string(failure.what()) + ": " + readingFailure(path)}};
    }
    std::ifstream stream = filesys::openForReading(path);
    json document;
    stream >> document;
    return checkLayoutDocument(document);
}

std::vector<LayoutProblem> checkLayoutDocument(const json& document) {
    return LayoutChecker().check(document);
}
