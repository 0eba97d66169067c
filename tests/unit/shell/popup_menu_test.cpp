// The items of the channel list's popup menu, seen while it is open.
#include "shell/popup_menu.h"

#include <commctrl.h>

#include <map>
#include <string>
#include <vector>

#include "tests/support/own_device.h"
#include "tests/unit/shell/shell_test.h"

static std::wstring g_opened;

// The linker sends the program's calls of ShellExecuteEx here.
BOOL WINAPI NoteOpened(SHELLEXECUTEINFOW* info) __asm__("__wrap_ShellExecuteEx");
BOOL WINAPI NoteOpened(SHELLEXECUTEINFOW* info) {
    g_opened = std::wstring(info->lpVerb) + L" " + info->lpFile + L" " + info->lpParameters + L", " +
               std::to_wstring(info->nShow);
    return TRUE;
}

namespace {

constexpr UINT kGetMenu = 0x01E1;  // MN_GETHMENU
constexpr UINT_PTR kLook = 77;

struct Item {
    std::wstring text;
    bool enabled;
};
std::map<UINT, Item> g_items;
std::vector<WPARAM> g_keys;  // what is pressed once the menu was seen

void CALLBACK LookAndLeave(HWND window, UINT, UINT_PTR, DWORD) {
    const HWND popup = FindWindowW(L"#32768", nullptr);
    if (popup == nullptr) return;
    const auto menu = reinterpret_cast<HMENU>(SendMessageW(popup, kGetMenu, 0, 0));
    for (const UINT id : {501u, 502u, 503u, 505u}) {
        WCHAR text[100] = L"";
        MENUITEMINFOW item = {};
        item.cbSize = sizeof item;
        item.fMask = MIIM_STATE | MIIM_STRING;
        item.dwTypeData = text;
        item.cch = 100;
        if (GetMenuItemInfoW(menu, id, FALSE, &item)) {
            g_items[id] = {text, (item.fState & (MFS_GRAYED | MFS_DISABLED)) == 0};
        }
    }
    KillTimer(window, kLook);
    for (const WPARAM key : g_keys) PostMessageW(window, WM_KEYDOWN, key, 1);
}

class PopupMenu : public test::ShellTest {
  protected:
    const test::OwnDevice ownDevice{L"Software\\Kora Popup Test"};

    PopupMenu() { ShowWindow(window, SW_SHOW); }

    CEOID Store(const wchar_t* name, DWORD value, const wchar_t* guide) {
        PropRecord record = {};
        wcscpy(record.szCountryName, L"Mine");
        wcscpy(record.szPropRecord_ChannelName, name);
        record.dwPropRecord_ChannelValue = value;
        wcscpy(record.szPropRecord_ChannelPGuide, guide);
        return state->m_ChannelDB.CEDB_InsertRecord(record);
    }
    void AddRow(CEOID oid, UINT itemState) {
        LVITEMW item = {};
        item.mask = LVIF_PARAM | LVIF_STATE;
        item.lParam = static_cast<LPARAM>(oid);
        SendMessageW(state->m_hListView, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        SendMessageW(state->m_hListView, LVM_SETSELECTIONMARK, 0, 0);
        item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        item.state = itemState;
        SendMessageW(state->m_hListView, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&item));
    }
    void Open(const std::vector<WPARAM>& keys = {VK_ESCAPE}) {
        g_items.clear();
        g_keys = keys;
        SetTimer(window, kLook, 50, LookAndLeave);
        ShowChannelPopup(*state, window, 100, 100);
        ASSERT_EQ(g_items.size(), 4u);
    }
};

TEST_F(PopupMenu, WithoutASelectedRowOnlyAddCanBeChosen) {
    Open();
    EXPECT_TRUE(g_items[501].enabled);
    EXPECT_FALSE(g_items[502].enabled);
    EXPECT_FALSE(g_items[503].enabled);
    EXPECT_FALSE(g_items[505].enabled);
}

TEST_F(PopupMenu, ASelectedAndFocusedRowCanBeDeletedAndEdited) {
    AddRow(Store(L"One", 9850, L""), LVIS_SELECTED | LVIS_FOCUSED);
    Open();
    EXPECT_TRUE(g_items[501].enabled);
    EXPECT_TRUE(g_items[502].enabled);
    EXPECT_TRUE(g_items[503].enabled);
}

TEST_F(PopupMenu, ARowThatIsOnlySelectedCountsAsNone) {
    AddRow(Store(L"One", 9850, L""), LVIS_SELECTED);
    Open();
    EXPECT_FALSE(g_items[502].enabled);
    EXPECT_FALSE(g_items[503].enabled);
}

TEST_F(PopupMenu, TheGuideCanBeOpenedWhenTheChannelHasOne) {
    AddRow(Store(L"One", 9850, L"http://one"), LVIS_SELECTED | LVIS_FOCUSED);
    Open();
    EXPECT_TRUE(g_items[505].enabled);
}

TEST_F(PopupMenu, TheGuideIsOpenedInTheBrowser) {
    AddRow(Store(L"One", 9850, L"http://one"), LVIS_SELECTED | LVIS_FOCUSED);
    g_opened.clear();
    Open({VK_UP, VK_RETURN});
    EXPECT_EQ(g_opened, L"Open iexplore.exe http://one, 5");
}

TEST_F(PopupMenu, WithoutARowTheStoreIsLeftAloneAndTheGuideIsGrey) {
    Store(L"One", 9850, L"http://one");
    EXPECT_EQ(test::TraceOf([this] { Open(); }), "");
    EXPECT_FALSE(g_items[505].enabled);
}

TEST_F(PopupMenu, TheGuideIsGreyForAChannelWithout) {
    AddRow(Store(L"One", 9850, L""), LVIS_SELECTED | LVIS_FOCUSED);
    Open();
    EXPECT_FALSE(g_items[505].enabled);
}

TEST_F(PopupMenu, LeavingTheMenuChangesNothing) {
    const CEOID oid = Store(L"One", 9850, L"");
    AddRow(oid, LVIS_SELECTED | LVIS_FOCUSED);
    Open();
    PropRecord record = {};
    state->m_ChannelDB.CEDB_ReadRecord(oid, &record);
    EXPECT_STREQ(record.szPropRecord_ChannelName, L"One");
    EXPECT_EQ(SendMessageW(state->m_hListView, LVM_GETITEMCOUNT, 0, 0), 1);
}

}  // namespace
