#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "panel/window_imp.h"
#include "tests/support/panel/recording_menu.h"
#include "tests/support/panel/recording_widget.h"

// The native half of the window for tests and for systems without a window: it builds recording
// widgets and a recording menu, keeps the caption and the visibility, and records every call.
class RecordingWindow : public WindowImp {
public:
    struct Options {
        // What create answers.
        bool createSucceeds = true;
        // Whether createMenu can make the tray.
        bool menuSucceeds = true;
    };

    RecordingWindow(std::string title, PixelPair size, Options options);
    RecordingWindow(std::string title, PixelPair size);

    bool create() override;
    void show() override;
    void hide() override;
    void destroy() override;
    bool isVisible() const override { return visible_; }
    void addTabpanel(const TabpanelRecord& record) override;
    void addCombobox(const ComboboxRecord& record) override;
    void addLabel(const LabelRecord& record) override;
    void addButton(const ButtonRecord& record) override;
    void addSyslink(const ButtonRecord& record) override;
    void addCheckbox(const ButtonRecord& record) override;
    void createMenu() override;
    // Keeps a worker's result until the test delivers it, as the message queue keeps it until the
    // interface thread's loop takes it.
    void postLaneResult(LaneResult result, std::int32_t value) override;

    // Hands the kept results to laneResultArrived in their order, on the calling thread, which
    // stands for the interface thread; returns how many there were.
    std::size_t deliverLaneResults();

    // The widget with the id as the recording kind; "widget is not found" as widget() does.
    std::shared_ptr<RecordingWidget> recorded(std::int32_t id) const;
    // The menu as the recording kind, or nullptr without a menu.
    std::shared_ptr<RecordingMenu> recordedMenu() const;
    const std::string& caption() const { return caption_; }
    bool destroyed() const { return destroyed_; }
    const std::vector<std::string>& calls() const { return calls_; }
    // Every call of every widget, in order, as "<widget id> <call>".
    const std::vector<std::string>& widgetJournal() const { return *journal_; }
    void clearWidgetJournal() { journal_->clear(); }

protected:
    void setCaption(const std::string& text) override;

private:
    void enter(std::int32_t id, std::shared_ptr<RecordingWidget> widget, const char* call);

    Options options_;
    bool created_ = false;
    bool visible_ = false;
    bool destroyed_ = false;
    std::string caption_;
    std::vector<std::string> calls_;
    RecordingWidget::Journal journal_ = std::make_shared<std::vector<std::string>>();
    std::mutex laneResultsLock_;
    std::vector<std::pair<LaneResult, std::int32_t>> laneResults_;
};
