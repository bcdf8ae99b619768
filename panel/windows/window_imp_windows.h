#pragma once

#include <windows.h>

#include <string>

#include "panel/app_data_manager.h"
#include "panel/window_imp.h"

// A worker's result on its way to the window: the result in wParam, its value in lParam.
constexpr UINT laneResultMessage = WM_APP + 1;

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
    // Posts the result to the window's own queue: any thread may, and the window procedure takes
    // it on the interface thread.
    void postLaneResult(LaneResult result, std::int32_t value) override;

    virtual LRESULT windowProc(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    // Registers the class again, without looking at the result; nothing calls it.
    virtual void registerClass();

    HWND nativeHandle() const { return window_; }

protected:
    void setCaption(const std::string& text) override;

private:
    bool registerWindowClass();
    LRESULT onCommand(WPARAM wParam, LPARAM lParam);
    LRESULT onNotify(WPARAM wParam, LPARAM lParam);
    LRESULT onTrayMessage(LPARAM lParam);

    HINSTANCE instance_;
    HWND window_ = nullptr;
    const utils::AppDataManager& layout_;
};
