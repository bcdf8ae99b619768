#include "foundation/message_box.h"

#include <mutex>

#include "foundation/text.h"

namespace {

std::mutex sinkLock;
MessageBoxSink& sink() {
    static MessageBoxSink current;
    return current;
}

} // namespace

unsigned messageBoxFlags(int kind, unsigned extraFlags) {
    constexpr unsigned setForeground = 0x10000;
    constexpr unsigned iconOf[] = {0x10, 0x30, 0x40}; // error, warning, information
    const unsigned icon = kind >= 0 && kind <= 2 ? iconOf[kind] : 0;
    return setForeground | icon | extraFlags;
}

void setMessageBoxSink(MessageBoxSink replacement) {
    const std::lock_guard<std::mutex> guard(sinkLock);
    sink() = std::move(replacement);
}

namespace {

void showWideMessageBox(const std::wstring& wideCaption, const std::wstring& wideText,
                        unsigned flags) {
    MessageBoxSink current;
    {
        const std::lock_guard<std::mutex> guard(sinkLock);
        current = sink();
    }
    if (current) {
        current(wideCaption, wideText, flags);
    } else {
        systemMessageBox(wideCaption, wideText, flags);
    }
}

} // namespace

void showMessageBox(const char* caption, std::size_t captionLength, const char* text,
                    std::size_t textLength, int kind, unsigned extraFlags) {
    showWideMessageBox(fromCp1251(std::string_view(caption, captionLength)),
                       fromCp1251(std::string_view(text, textLength)),
                       messageBoxFlags(kind, extraFlags));
}

void showMessageBox(std::string_view caption, std::string_view text, MessageBoxKind kind) {
    showMessageBox(caption.data(), caption.size(), text.data(), text.size(),
                   static_cast<int>(kind));
}

void showMessageBox(std::string_view caption, const std::wstring& text, MessageBoxKind kind) {
    showWideMessageBox(fromCp1251(caption), text, messageBoxFlags(static_cast<int>(kind), 0));
}
