#include "panel/window.h"

#include <utility>

#include "foundation/exceptions.h"
#include "foundation/message_catalogue.h"

Window::Window(std::shared_ptr<WindowImp> imp) : imp_(std::move(imp)) {
    if (!imp_->create()) {
        throw BasicException(panelMessages.text(panelmsg::windowNotCreated));
    }
}

void Window::show() {
    imp_->show();
}

void Window::hide() {
    imp_->hide();
}

void Window::destroy() {
    imp_->destroy();
}

void Window::addTabpanel(const TabpanelRecord& record) {
    imp_->addTabpanel(record);
}

void Window::addCombobox(const ComboboxRecord& record) {
    imp_->addCombobox(record);
}

void Window::addLabel(const LabelRecord& record) {
    imp_->addLabel(record);
}

void Window::addButton(const ButtonRecord& record) {
    imp_->addButton(record);
}

void Window::addSyslink(const ButtonRecord& record) {
    imp_->addSyslink(record);
}

void Window::addCheckbox(const ButtonRecord& record) {
    imp_->addCheckbox(record);
}

void Window::createMenu() {
    imp_->createMenu();
}

void Window::addMenuItem(const MenuItem& item) {
    imp_->addMenuItem(item);
}
