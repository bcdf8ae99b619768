#include "tests/support/panel/recording_widget.h"

#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "host/corvanite_host.h"
#include "panel/startup_state.h"

RecordingWidget::RecordingWidget(WidgetKind kind, const WidgetDisposition& disposition,
                                 std::int32_t widgetId, std::shared_ptr<Command> command,
                                 std::vector<std::string> entries, Journal journal)
    : WidgetImp(disposition), kind_(kind), widgetId_(widgetId), journal_(std::move(journal)),
      entries_(std::move(entries)), shown_(disposition.displayText) {
    setCommand(std::move(command));
    if (kind_ == WidgetKind::Button || kind_ == WidgetKind::Checkbox ||
        kind_ == WidgetKind::Syslink) {
        requiredCommandId(this->command());
    }
    if (kind_ == WidgetKind::Checkbox) {
        checked_ = startupChecked(widgetId);
    }
    if (kind_ == WidgetKind::Combobox) {
        showEntries();
        selection_ = startupSelection(widgetId);
    }
    if (kind_ == WidgetKind::Tabpanel) {
        showEntries();
        selection_ = 0;
    }
    if (kind_ == WidgetKind::Syslink && this->command()->id == 12) {
        tooltip_ = serviceUrl("");
    }
}

void RecordingWidget::setVisible(bool visible) {
    visible_ = visible;
    record(std::string("setVisible ") + (visible ? "1" : "0"));
}

void RecordingWidget::setEnabled(bool enabled) {
    enabled_ = enabled;
    record(std::string("setEnabled ") + (enabled ? "1" : "0"));
}

void RecordingWidget::updateText() {
    record("updateText");
    if (kind_ == WidgetKind::Combobox || kind_ == WidgetKind::Tabpanel) {
        // The lists are rewritten; a combo box without a selection falls to its first entry.
        showEntries();
        if (kind_ == WidgetKind::Combobox && selection_ == -1) {
            selection_ = 0;
        }
        return;
    }
    WidgetImp::updateText();
}

std::int32_t RecordingWidget::commandId() const {
    if (kind_ == WidgetKind::Button || kind_ == WidgetKind::Checkbox ||
        kind_ == WidgetKind::Syslink) {
        return requiredCommandId(command());
    }
    return WidgetImp::commandId();
}

void RecordingWidget::setTooltipText(const std::wstring& text) {
    // Only the address link's command gives the native link a tooltip.
    record("setTooltipText " + utf16ToUtf8(text));
    if (kind_ == WidgetKind::Syslink && command() && command()->id == 12) {
        tooltip_ = text;
    }
}

void RecordingWidget::showText(const std::string& text) {
    shown_ = text;
    record("showText " + cp1251ToUtf8(text));
}

void RecordingWidget::showEntries() {
    entryTexts_.clear();
    for (const std::string& entry : entries_) {
        entryTexts_.push_back(panelMessages.text(entry.c_str()));
    }
}

void RecordingWidget::record(const std::string& call) {
    calls_.push_back(call);
    if (journal_) {
        journal_->push_back(std::to_string(widgetId_) + " " + call);
    }
}

void RecordingWidget::select(std::int32_t index) {
    // The user's choice and the program's alike: the selection the control keeps.
    selection_ = index;
}
