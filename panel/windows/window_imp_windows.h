#pragma once

#include <windows.h>

#include <string>

#include "panel/app_data_manager.h"
#include "panel/window_imp.h"

// The native main window: its class, the fixed-size top-level window, the update timer, and the
// way from window messages to the window's events.
class WindowImpWindows : public WindowImp {
public:
    // Registers the window class that the layout names; "CVCP-006009" when that fails. The layout
    // is the program's, or a test's own.
    WindowImpWindows(std::string title, PixelPair size, HINSTANCE instance,
                     const utils::AppDataManager& layout = utils::AppDataManager::instance());
    ~WindowImpWindows() override;

    // Makes the window, hidden and centred on the primary screen, and starts the update timer.
    bool create() override;
    void show() override;
    void hide() override;
    void destroy() override;
    bool isVisible() const override;

    void addTabpanel(const TabpanelRecord& record) override;
    void addCombobox(const ComboboxRecord& record) override;
    void addLabel(const LabelRecord& record) override;
    void addButton(const ButtonRecord& record) override;
    void addSyslink(const ButtonRecord& record) override;
    void addCheckbox(const ButtonRecord& record) override;
    void createMenu() override;

    virtual LRESULT windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    // Registers the class again, without looking at the result; nothing calls it.
    virtual void registerClass();

    HWND nativeHandle() const { return window; }

protected:
    void setCaption(const std::string& text) override;

private:
    bool registerWindowClass();
    LRESULT onCommand(WPARAM wParam, LPARAM lParam);
    LRESULT onNotify(WPARAM wParam, LPARAM lParam);
    LRESULT onTrayMessage(LPARAM lParam);

    HINSTANCE instance;
    HWND window = nullptr;
    const utils::AppDataManager& layout;
};
