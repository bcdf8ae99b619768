#include "panel/widget_imp.h"

#include <stdexcept>

#include "foundation/message_catalogue.h"

WidgetImp::WidgetImp(const WidgetDisposition& disposition)
    : size_(disposition.size), position_(disposition.position), text_(disposition.text),
      displayText_(disposition.displayText), tabIndex_(disposition.tabIndex) {}

void WidgetImp::setText(const std::string& text) {
    storeDisplayText(text);
    showText(displayText_);
}

std::string WidgetImp::getDisplayText() const {
    return displayText_;
}

void WidgetImp::updateText() {
    refreshDisplayText();
    showText(displayText_);
}

std::int32_t WidgetImp::commandId() const {
    return 0;
}

void WidgetImp::execute() {
    if (command_) {
        command_->execute();
    }
}

bool WidgetImp::isChecked() const {
    return false;
}

std::int32_t WidgetImp::selectedIndex() const {
    return -1;
}

void WidgetImp::select(std::int32_t) {}

void WidgetImp::setTooltipText(const std::wstring&) {}

void WidgetImp::refreshDisplayText() {
    if (!text_.empty()) {
        displayText_ = panelMessages.text(text_.c_str());
    }
}

std::int32_t WidgetImp::requiredCommandId(const std::shared_ptr<Command>& command) {
    if (!command) {
        throw std::invalid_argument("invalid command id");
    }
    return command->id;
}
