#include "foundation/message_box.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

struct Box {
    std::wstring caption;
    std::wstring text;
    unsigned flags;
};

// Records the boxes shown while it lives instead of putting them on screen.
class BoxRecorder {
public:
    BoxRecorder() {
        setMessageBoxSink(
            [this](const std::wstring& caption, const std::wstring& text, unsigned flags) {
                boxes.push_back({caption, text, flags});
            });
    }
    ~BoxRecorder() { setMessageBoxSink(nullptr); }
    std::vector<Box> boxes;
};

} // namespace

TEST(MessageBox, KindsGiveTheirIconsAndForeground) {
    EXPECT_EQ(messageBoxFlags(0, 0), 0x10010u);
    EXPECT_EQ(messageBoxFlags(1, 0), 0x10030u);
    EXPECT_EQ(messageBoxFlags(2, 0), 0x10040u);
}

TEST(MessageBox, KindThreeHasNoIcon) {
    EXPECT_EQ(messageBoxFlags(3, 0), 0x10000u);
    EXPECT_EQ(messageBoxFlags(-1, 0), 0x10000u);
}

TEST(MessageBox, ExtraFlagsAreJoined) {
    EXPECT_EQ(messageBoxFlags(0, 0x4), 0x10014u);
}

TEST(MessageBox, TextsAreConvertedFromCp1251) {
    BoxRecorder recorder;
    showMessageBox("Corvanite", "\xCE\xF8\xE8\xE1\xEA\xE0", MessageBoxKind::error); // Ошибка
    ASSERT_EQ(recorder.boxes.size(), 1u);
    EXPECT_EQ(recorder.boxes[0].caption, L"Corvanite");
    EXPECT_EQ(recorder.boxes[0].text, L"\u041E\u0448\u0438\u0431\u043A\u0430");
    EXPECT_EQ(recorder.boxes[0].flags, 0x10010u);
}

TEST(MessageBox, LengthsBoundTheTexts) {
    BoxRecorder recorder;
    showMessageBox("Corvanite!", 9, "abc", 2, 2, 0);
    ASSERT_EQ(recorder.boxes.size(), 1u);
    EXPECT_EQ(recorder.boxes[0].caption, L"Corvanite");
    EXPECT_EQ(recorder.boxes[0].text, L"ab");
}

// Words that name a path come in UTF-16 already and keep every letter, also those that code page
// 1251 lacks.
TEST(MessageBox, AWideTextKeepsLettersOutsideCp1251) {
    BoxRecorder recorder;
    showMessageBox("Corvanite", std::wstring(L"C:\\Jos\x00E9 Host"), MessageBoxKind::error);
    ASSERT_EQ(recorder.boxes.size(), 1u);
    EXPECT_EQ(recorder.boxes[0].caption, L"Corvanite");
    EXPECT_EQ(recorder.boxes[0].text, L"C:\\Jos\x00E9 Host");
    EXPECT_EQ(recorder.boxes[0].flags, 0x10010u);
}
