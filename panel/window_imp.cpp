#include "panel/window_imp.h"

#include <stdexcept>
#include <utility>

WindowImp::WindowImp(std::string title, PixelPair size) : title_(std::move(title)), size_(size) {}

void WindowImp::showMenu() {
    if (menu_) {
        menu_->popup();
    }
}

void WindowImp::addMenuItem(const MenuItem& item) {
    if (menu_) {
        menu_->addItem(item);
    }
}

bool WindowImp::isWidgetEnabled(std::int32_t id) const {
    return widget(id)->isEnabled();
}

void WindowImp::addWidget(WidgetEntry entry) {
    widgets_.push_back(std::move(entry));
}

std::shared_ptr<WidgetImp> WindowImp::widget(std::int32_t id) const {
    for (const WidgetEntry& entry : widgets_) {
        if (entry.id == id) {
            return entry.widget;
        }
    }
    throw std::logic_error("widget is not found");
}

void WindowImp::showTab(std::int32_t index) {
    // The tab control counts its tabs in 16 bits.
    const std::int32_t tab = static_cast<std::int16_t>(index);
    for (const WidgetEntry& entry : widgets_) {
        const std::int32_t own = entry.widget->tabIndex();
        if (own != -1 && own != tab) {
            entry.widget->setVisible(false);
        }
    }
    for (const WidgetEntry& entry : widgets_) {
        const std::int32_t own = entry.widget->tabIndex();
        if (own != -1 && own == tab) {
            entry.widget->setVisible(true);
        }
    }
}

void WindowImp::refreshTab(std::int32_t index) {
    for (const WidgetEntry& entry : widgets_) {
        const std::int32_t own = entry.widget->tabIndex();
        if (own != -1 && own == index) {
            entry.widget->setVisible(false);
            entry.widget->setVisible(true);
        }
    }
}
