#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "panel/layout_records.h"
#include "panel/widget_imp.h"

// A native widget of the recording window: it holds the state that a real control would hold
// (enabled, visible, the words shown, a check, a list with a selection, tabs, a tooltip) and
// records every call of the portable half, so that tests can read both.
class RecordingWidget : public WidgetImp {
public:
    // Calls of all widgets of one window in order, each as "<widget id> <call>".
    using Journal = std::shared_ptr<std::vector<std::string>>;

    // A widget with the command it was made with (none for labels and tab panels) and the
    // entries of a combo box or the tabs of a tab panel. A check box and a combo box take their
    // start-up state for the widget id as the native ones do; a button, check box or link needs a
    // command, as its command id is its control id.
    RecordingWidget(WidgetKind kind, const WidgetDisposition& disposition, std::int32_t widgetId,
                    std::shared_ptr<Command> command, std::vector<std::string> entries = {},
                    Journal journal = nullptr);

    WidgetKind kind() const override { return kind_; }
    void setVisible(bool visible) override;
    void setEnabled(bool enabled) override;
    bool isEnabled() const override { return enabled_; }
    void updateText() override;
    std::int32_t commandId() const override;
    bool isChecked() const override { return checked_; }
    std::int32_t selectedIndex() const override { return selection_; }
    void setTooltipText(const std::wstring& text) override;

    // What the user would do to the control.
    void check(bool checked) { checked_ = checked; }
    void select(std::int32_t index) override;

    bool visible() const { return visible_; }
    // The words the control shows now, code page 1251.
    const std::string& shown() const { return shown_; }
    // The catalogue ids of a combo box's entries or a tab panel's tabs.
    const std::vector<std::string>& entries() const { return entries_; }
    // The words of a combo box's entries or a tab panel's tabs, as shown now.
    const std::vector<std::string>& entryTexts() const { return entryTexts_; }
    const std::wstring& tooltip() const { return tooltip_; }
    // Every call of the portable half, in order, as "setEnabled 0", "setText Run", ...
    const std::vector<std::string>& calls() const { return calls_; }

protected:
    void showText(const std::string& text) override;

private:
    void showEntries();
    void record(const std::string& call);

    WidgetKind kind_;
    std::int32_t widgetId_;
    Journal journal_;
    std::vector<std::string> entries_;
    std::vector<std::string> entryTexts_;
    bool enabled_ = true;
    bool visible_ = true;
    bool checked_ = false;
    std::int32_t selection_ = -1;
    std::string shown_;
    std::wstring tooltip_;
    std::vector<std::string> calls_;
};
