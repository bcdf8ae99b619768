#include "panel/widget_imp.h"

#include <memory>
#include <stdexcept>

#include <gtest/gtest.h>

#include "foundation/language.h"
#include "foundation/message_catalogue.h"
#include "foundation/text.h"
#include "tests/support/panel/counting_command.h"
#include "tests/support/panel/expect_failure.h"
#include "tests/support/panel/recording_widget.h"

namespace {

WidgetDisposition catalogueText(const char* id) {
    WidgetDisposition disposition;
    disposition.size = {80, 24};
    disposition.position = {10, 20};
    disposition.text = id;
    disposition.displayText = panelMessages.text(id);
    disposition.tabIndex = 1;
    return disposition;
}

class WidgetImpTest : public testing::Test {
protected:
    void SetUp() override { panelMessages.setLanguage(Language::English); }
};

TEST_F(WidgetImpTest, KeepsTheRecordsValues) {
    const RecordingWidget label(WidgetKind::Label, catalogueText("CVCP-005004"), 40, nullptr);
    EXPECT_EQ(label.size(), PixelPair(80, 24));
    EXPECT_EQ(label.position(), PixelPair(10, 20));
    EXPECT_EQ(label.text(), "CVCP-005004");
    EXPECT_EQ(label.displayText(), "Port:");
    EXPECT_EQ(label.getDisplayText(), "Port:");
    EXPECT_EQ(label.tabIndex(), 1);
    EXPECT_EQ(label.command(), nullptr);
}

TEST_F(WidgetImpTest, SetTextShowsTheNewWordsButUpdateTextPutsTheCatalogueTextBack) {
    RecordingWidget button(WidgetKind::Button, catalogueText("CVCP-000001"), 7,
                           std::make_shared<CountingCommand>(1));
    button.setText("Go");
    EXPECT_EQ(button.shown(), "Go");
    EXPECT_EQ(button.getDisplayText(), "Go");
    EXPECT_EQ(button.text(), "CVCP-000001");
    button.updateText();
    EXPECT_EQ(button.shown(), "Run");
    EXPECT_EQ(button.getDisplayText(), "Run");
}

TEST_F(WidgetImpTest, UpdateTextFollowsTheLanguage) {
    RecordingWidget label(WidgetKind::Label, catalogueText("CVCP-005004"), 40, nullptr);
    panelMessages.setLanguage(Language::Ukrainian);
    label.updateText();
    EXPECT_EQ(cp1251ToUtf8(label.shown()), "Порт:");
}

TEST_F(WidgetImpTest, AWidgetWithoutCatalogueIdKeepsItsWordsInEveryLanguage) {
    WidgetDisposition literal;
    literal.displayText = utf8ToCp1251("Версия");
    RecordingWidget label(WidgetKind::Label, literal, 40, nullptr);
    label.setText("2.3.4");
    panelMessages.setLanguage(Language::Russian);
    label.updateText();
    EXPECT_EQ(label.shown(), "2.3.4");
    EXPECT_EQ(label.calls().back(), "showText 2.3.4");
}

TEST_F(WidgetImpTest, ExecuteOnAWidgetWithoutACommandDoesNothing) {
    RecordingWidget label(WidgetKind::Label, catalogueText("CVCP-005004"), 40, nullptr);
    EXPECT_NO_THROW(label.execute());
    EXPECT_EQ(label.commandId(), 0);
}

TEST_F(WidgetImpTest, ExecuteRunsTheCommand) {
    const auto command = std::make_shared<CountingCommand>(5);
    RecordingWidget button(WidgetKind::Button, catalogueText("CVCP-004001"), 30, command);
    button.execute();
    button.execute();
    EXPECT_EQ(command->runs, 2);
}

TEST_F(WidgetImpTest, ButtonsCheckBoxesAndLinksAnswerTheirCommandsId) {
    for (WidgetKind kind : {WidgetKind::Button, WidgetKind::Checkbox, WidgetKind::Syslink}) {
        const RecordingWidget widget(kind, catalogueText("CVCP-004001"), 30,
                                     std::make_shared<CountingCommand>(5));
        EXPECT_EQ(widget.commandId(), 5);
    }
}

TEST_F(WidgetImpTest, AComboBoxKeepsCommandIdZeroWhateverItsCommand) {
    const RecordingWidget box(WidgetKind::Combobox, WidgetDisposition{}, 40,
                              std::make_shared<CountingCommand>(9), {"CVCP-005201"});
    EXPECT_EQ(box.commandId(), 0);
}

TEST_F(WidgetImpTest, AButtonWithoutACommandIsRefused) {
    expectFailure<std::invalid_argument>(
        [] { RecordingWidget(WidgetKind::Button, WidgetDisposition{}, 30, nullptr); },
        "invalid command id");
}

TEST_F(WidgetImpTest, OtherKindsHaveNoCheckNoSelectionAndNoTooltip) {
    WidgetDisposition disposition;
    RecordingWidget label(WidgetKind::Label, disposition, 40, nullptr);
    EXPECT_FALSE(label.WidgetImp::isChecked());
    EXPECT_EQ(label.WidgetImp::selectedIndex(), -1);
    label.setTooltipText(L"https://x:1");
    EXPECT_EQ(label.tooltip(), L"");
}

} // namespace
