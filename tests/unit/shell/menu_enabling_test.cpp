// The menus as they are opened, by the message that the window gets for it.
#include "shell/ui.h"

#include "resources/resource_ids.h"
#include "shell/settings_key.h"
#include "skin/skin_access.h"
#include "tests/support/own_device.h"
#include "tests/unit/shell/shell_test.h"

namespace {

class MenuEnabling : public test::ShellTest {
  protected:
    const test::OwnDevice ownDevice{L"Software\\Kora Menu Test"};

    MenuEnabling() {
        WriteSelectedGroup(L"Mine");
        PropRecord record = {};
        wcscpy(record.szCountryName, L"Mine");
        wcscpy(record.szPropRecord_ChannelName, L"One");
        record.dwPropRecord_ChannelValue = 9850;
        EXPECT_NE(state->m_ChannelDB.CEDB_InsertRecord(record), 0u);
        AppendMenuW(menu, MF_STRING, IDC_ADD_CURRENT, L"add");
        SetWindowLongW(window, GWL_USERDATA, reinterpret_cast<LONG_PTR>(state));
    }
    ~MenuEnabling() override { DestroyMenu(menu); }
    bool IsGrey(UINT id) {
        // As the menu's opening asks for it.
        WndProc(window, WM_INITMENUPOPUP, reinterpret_cast<WPARAM>(menu), 0);
        MENUITEMINFOW item = {};
        item.cbSize = sizeof item;
        item.fMask = MIIM_STATE;
        GetMenuItemInfoW(menu, id, FALSE, &item);
        return (item.fState & MFS_GRAYED) != 0;
    }
    bool AddIsGrey() { return IsGrey(IDC_ADD_CURRENT); }
    HMENU menu = CreatePopupMenu();
};

TEST_F(MenuEnabling, AddCurrentChannelIsGreyWhenTheTunedFrequencyAlreadyStandsInTheSelectedList) {
    device.channel = 9850;
    EXPECT_TRUE(AddIsGrey());
}

TEST_F(MenuEnabling, AddCurrentChannelCanBeChosenForAFrequencyThatIsNotStored) {
    device.channel = 9860;
    EXPECT_FALSE(AddIsGrey());
}

TEST_F(MenuEnabling, WithoutATunerAddCurrentChannelCanBeChosen) {
    device.channel = 9850;
    g_app.pFMDevice = nullptr;
    EXPECT_FALSE(AddIsGrey());
}

TEST_F(MenuEnabling, TheEntryOfADisabledButtonIsGreyUntilTheButtonIsEnabled) {
    static_cast<SkinTables&>(state->m_skin) = MainScreenTables();
    constexpr UINT kEntry = IDC_CONTROL_0 + SKIN_SEEK_UP;
    AppendMenuW(menu, MF_STRING, kEntry, L"seek");
    EXPECT_FALSE(IsGrey(kEntry));
    EnableButton(state->m_skin, SKIN_SEEK_UP, 1);
    EXPECT_TRUE(IsGrey(kEntry));
    EnableButton(state->m_skin, SKIN_SEEK_UP, 0);
    EXPECT_FALSE(IsGrey(kEntry));
}

}  // namespace
