#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

// The product's name: the caption of every box, and the product's word in the messages.
inline constexpr const char* productName = "Corvanite";

// What a box tells, which picks its icon.
enum class MessageBoxKind : int { error = 0, warning = 1, information = 2 };

// The one way to the user. A box has no owner window, so any thread may show one; the texts are
// code page 1251, as every catalogue text and what() is.
void showMessageBox(const char* caption, std::size_t captionLength, const char* text,
                    std::size_t textLength, int kind, unsigned extraFlags = 0);
void showMessageBox(std::string_view caption, std::string_view text, MessageBoxKind kind);
// The same with the text in UTF-16 already: for words that name a path, whose letters may lie
// outside code page 1251.
void showMessageBox(std::string_view caption, const std::wstring& text, MessageBoxKind kind);

// The system flags of a box of this kind: 0 error, 1 warning, 2 information, others plain; every
// box comes to the foreground.
unsigned messageBoxFlags(int kind, unsigned extraFlags);

// Where boxes go instead of the screen while one is set (texts already in UTF-16). Tests record
// boxes with it; an empty function restores the system's box.
using MessageBoxSink =
    std::function<void(const std::wstring& caption, const std::wstring& text, unsigned flags)>;
void setMessageBoxSink(MessageBoxSink sink);

// The system's box; blocks until it is dismissed.
void systemMessageBox(const std::wstring& caption, const std::wstring& text, unsigned flags);
