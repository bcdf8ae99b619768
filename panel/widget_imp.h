#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "panel/command.h"
#include "panel/display_scale.h"
#include "panel/layout_records.h"
#include "panel/widget_kind.h"

// The portable half of one control of the window. The native half makes the control, gives it
// its command and carries out the operations marked as the platform's below; nothing of the
// platform crosses this class but what its native subclass keeps inside.
class WidgetImp {
public:
    explicit WidgetImp(const WidgetDisposition& disposition);
    virtual ~WidgetImp() = default;

    virtual WidgetKind kind() const = 0;

    // The platform's: show or hide, enable or disable the control.
    virtual void setVisible(bool visible) = 0;
    virtual void setEnabled(bool enabled) = 0;
    virtual bool isEnabled() const = 0;

    // Shows these words (code page 1251) in place of the current ones; the catalogue id stays, so
    // that a later updateText brings the catalogue's words back.
    virtual void setText(const std::string& text);
    virtual std::string getDisplayText() const;
    // Shows the catalogue's words of the widget's id in the language in force. A combo box and a
    // tab panel rewrite their entries instead.
    virtual void updateText();
    // The id of the command of a button, check box or link; 0 for the other kinds.
    virtual std::int32_t commandId() const;
    // Runs the command if there is one.
    virtual void execute();

    // The platform's state of the control as the user left it: a check box's check, the selected
    // entry of a combo box or tab panel (-1 for none). Other kinds answer false and -1.
    virtual bool isChecked() const;
    virtual std::int32_t selectedIndex() const;
    // Selects the entry of a combo box, as the program's own choice: no event follows. Kinds
    // without entries have nothing to select and ignore it.
    virtual void select(std::int32_t index);
    // The link of the server's address shows the service's address as a tooltip; other widgets
    // have none and ignore it. UTF-16 text.
    virtual void setTooltipText(const std::wstring& text);

    std::int32_t tabIndex() const { return tabIndex_; }
    PixelPair size() const { return size_; }
    PixelPair position() const { return position_; }
    const std::string& text() const { return text_; }
    const std::string& displayText() const { return displayText_; }
    const std::shared_ptr<Command>& command() const { return command_; }
    void storeDisplayText(const std::string& text) { displayText_ = text; }
    // The catalogue's words of text() become the display text; without a catalogue id the words
    // stay as they are, whatever the language.
    void refreshDisplayText();

protected:
    // The platform's: puts the words on the control.
    virtual void showText(const std::string& text) = 0;
    // The native subclass stores the command it was made with.
    void setCommand(std::shared_ptr<Command> command) { command_ = std::move(command); }
    // The id of a command that a button, check box or link must have: their id is the native
    // control id. Without a command (commandid::none in the layout) fails with
    // "invalid command id".
    static std::int32_t requiredCommandId(const std::shared_ptr<Command>& command);

private:
    std::shared_ptr<Command> command_;
    PixelPair size_;
    PixelPair position_;
    std::string text_;
    std::string displayText_;
    std::int32_t tabIndex_;
};
