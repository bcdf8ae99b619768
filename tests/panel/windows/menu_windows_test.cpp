#include "tests/panel/windows/native_fixture_windows.h"

#include "foundation/exceptions.h"
#include "foundation/text.h"
#include "panel/tray_tip.h"
#include "panel/windows/menu_imp_windows.h"

using namespace native_test;

namespace {

// The tray icon is the program's icon resource 202, which this test program doesn't hold: the
// menus take the program's file as their module, loaded for its resources only.
HMODULE loadProgramResources() {
    const std::string unixPath = CORVANITE_BUILD_DIR "/core/CVHControlPanel.exe";
    std::wstring path = L"Z:";
    for (const char letter : unixPath) {
        path += letter == '/' ? L'\\' : static_cast<wchar_t>(letter);
    }
    return LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_AS_DATAFILE);
}

struct NativeMenu : NativeFixture {
    void SetUp() override {
        NativeFixture::SetUp();
        layout = layoutOf(windowLayout("CVHControlPanelMenuTest", 1000));
        resources = loadProgramResources();
        ASSERT_NE(resources, nullptr) << "the program CVHControlPanel.exe is built with the tests";
    }
    void TearDown() override {
        FreeLibrary(resources);
        NativeFixture::TearDown();
    }
    std::shared_ptr<MenuImpWindows> makeMenu() {
        return std::make_shared<MenuImpWindows>(parent, resources, *layout);
    }
    static MenuItem item(const char* text, std::int32_t id) {
        return {text, std::make_shared<CountingCommand>(id)};
    }
    static std::wstring entryText(HMENU menu, int position) {
        wchar_t text[128] = {};
        GetMenuStringW(menu, static_cast<UINT>(position), text, 128, MF_BYPOSITION);
        return text;
    }

    std::unique_ptr<utils::AppDataManager> layout;
    HMODULE resources = nullptr;
};

} // namespace

TEST_F(NativeMenu, EntriesCarryTheirCommandIdsAndWords) {
    auto menu = makeMenu();
    menu->addItem(item("CVCP-003001", 4));
    menu->addItem(item("CVCP-000002", 2));
    menu->addItem(item("CVCP-003002", 6));
    HMENU native = menu->nativeMenu();
    ASSERT_EQ(GetMenuItemCount(native), 3);
    EXPECT_EQ(GetMenuItemID(native, 0), 4u);
    EXPECT_EQ(GetMenuItemID(native, 1), 2u);
    EXPECT_EQ(entryText(native, 2), L"Exit");
}

TEST_F(NativeMenu, ReplacedEntryKeepsItsPlace) {
    auto menu = makeMenu();
    menu->addItem(item("CVCP-003001", 4));
    menu->addItem(item("CVCP-000002", 2));
    menu->addItem(item("CVCP-003002", 6));
    menu->replaceItem(2, item("CVCP-000001", 1));
    menu->updateTexts();
    EXPECT_EQ(GetMenuItemID(menu->nativeMenu(), 1), 1u);
    EXPECT_EQ(entryText(menu->nativeMenu(), 1), L"Run");
    EXPECT_EQ(GetMenuItemCount(menu->nativeMenu()), 3);
}

TEST_F(NativeMenu, TwoItemsWithOneIdAreBothInTheMenuAndRemovedTogether) {
    auto menu = makeMenu();
    menu->addItem(item("CVCP-003001", 4));
    menu->addItem(item("CVCP-003001", 4));
    EXPECT_EQ(GetMenuItemCount(menu->nativeMenu()), 2);
    menu->removeItem(4);
    EXPECT_TRUE(menu->items().empty());
}

TEST_F(NativeMenu, ItemWithoutACatalogueTextIsRefusedBeforeTheMenuChanges) {
    auto menu = makeMenu();
    EXPECT_THROW(menu->addItem(item("Control panel", 4)), std::out_of_range);
    EXPECT_EQ(GetMenuItemCount(menu->nativeMenu()), 0);
}

TEST_F(NativeMenu, DisabledIsNotGreyed) {
    auto menu = makeMenu();
    menu->addItem(item("CVCP-000001", 1));
    menu->enableItem(1, false);
    const UINT state = GetMenuState(menu->nativeMenu(), 1, MF_BYCOMMAND);
    EXPECT_NE(state & MF_DISABLED, 0u);
    EXPECT_EQ(state & MF_GRAYED & ~MF_DISABLED, 0u);
    menu->enableItem(1, true);
    EXPECT_EQ(GetMenuState(menu->nativeMenu(), 1, MF_BYCOMMAND) & (MF_DISABLED | MF_GRAYED), 0u);
    // An id that the menu lacks is ignored.
    menu->enableItem(2, false);
}

TEST_F(NativeMenu, TooltipShowsTheNewTitleRightAfterALanguageChange) {
    auto menu = makeMenu();
    menu->addItem(item("CVCP-003001", 4));
    EXPECT_EQ(menu->tooltip(), fromCp1251(trayTipText("CVCP-001001")));
    panelMessages.setLanguage(Russian);
    menu->updateTexts();
    EXPECT_EQ(menu->tooltip(), fromCp1251(trayTipText("CVCP-001001")));
    EXPECT_EQ(entryText(menu->nativeMenu(), 0), fromCp1251(panelMessages.text("CVCP-003001")));
}

TEST_F(NativeMenu, MenuWithoutAWindowFailsWithCVCP006002) {
    try {
        MenuImpWindows menu(nullptr, instance, *layout);
        FAIL() << "no exception";
    } catch (const BasicException& failure) {
        EXPECT_STREQ(failure.what(), "Error creating control panel menu element");
    }
}

TEST_F(NativeMenu, ExecuteRunsTheFirstItemsCommand) {
    auto menu = makeMenu();
    auto first = std::make_shared<CountingCommand>(4);
    menu->addItem({"CVCP-003001", first});
    menu->addItem(item("CVCP-003001", 4));
    EXPECT_TRUE(menu->execute(4));
    EXPECT_EQ(first->runs, 1);
    EXPECT_FALSE(menu->execute(6));
}

TEST_F(NativeMenu, ModuleWithoutTheTrayIconFailsWithCVCP006002) {
    // This test program has no programIconId among its resources.
    try {
        MenuImpWindows menu(parent, instance, *layout);
        FAIL() << "no exception";
    } catch (const BasicException& failure) {
        EXPECT_STREQ(failure.what(), "Error creating control panel menu element");
    }
}

TEST_F(NativeMenu, MenuWithNeitherRunNorStopGetsTheEntryInTheModelOnly) {
    // What a tick does when the menu lacks the pair: the wanted entry replaces the other one,
    // which isn't there.
    auto menu = makeMenu();
    menu->addItem(item("CVCP-003001", 4));
    menu->addItem(item("CVCP-003002", 6));
    menu->replaceItem(2, item("CVCP-000001", 1));
    menu->updateTexts();
    ASSERT_EQ(menu->items().size(), 3u);
    EXPECT_EQ(menu->items().back().id(), 1);
    // The native menu had no entry to change, and the texts' rewrite finds none either.
    EXPECT_EQ(GetMenuItemCount(menu->nativeMenu()), 2);
    EXPECT_EQ(GetMenuState(menu->nativeMenu(), 1, MF_BYCOMMAND), static_cast<UINT>(-1));
    EXPECT_EQ(menu->find(1).id(), 1);
}
