#pragma once

#include <memory>

#include "panel/layout_records.h"
#include "panel/menu_item.h"
#include "panel/window_imp.h"

// The application's handle to its window; every operation forwards to the implementation, which
// it shares with the commands and threads that need it.
class Window {
public:
    // Creates the native window; "CVCP-006019" when that fails.
    explicit Window(std::shared_ptr<WindowImp> imp);
    virtual ~Window() = default;

    void show();
    void hide();
    void destroy();
    void addTabpanel(const TabpanelRecord& record);
    void addCombobox(const ComboboxRecord& record);
    void addLabel(const LabelRecord& record);
    void addButton(const ButtonRecord& record);
    void addSyslink(const ButtonRecord& record);
    void addCheckbox(const ButtonRecord& record);
    void createMenu();
    void addMenuItem(const MenuItem& item);

    const std::shared_ptr<WindowImp>& imp() const { return imp_; }

private:
    std::shared_ptr<WindowImp> imp_;
};
