// A row of the channel list that is tapped.
#include "channels/list_selection.h"

#include <commctrl.h>

#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/settings_key.h"
#include "tests/support/fake_fm_device.h"
#include "tests/unit/channels/channels_test.h"
#include "tuner/frequency.h"

namespace {

class ListSelection : public test::ChannelsTest {
  protected:
    ListSelection() {
        g_app.pFMDevice = &device;
        InitCommonControls();
        state.m_hListView = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_POPUP | LVS_REPORT | LVS_SINGLESEL, 0, 0,
                                            240, 105, nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
        for (const int column : {0, 1}) {
            LVCOLUMNW room = {};
            room.mask = LVCF_WIDTH;
            room.cx = 120;
            SendMessageW(state.m_hListView, LVM_INSERTCOLUMNW, static_cast<WPARAM>(column),
                         reinterpret_cast<LPARAM>(&room));
        }
    }
    ~ListSelection() override {
        DestroyWindow(state.m_hListView);
        g_app.pFMDevice = nullptr;
    }
    // A row at the end of the list, of that record.
    void AddRow(CEOID oid, const WCHAR* frequency) const {
        LVITEMW item = {};
        item.mask = LVIF_PARAM;
        item.iItem = 1000;
        item.lParam = static_cast<LPARAM>(oid);
        const LRESULT row =
            SendMessageW(state.m_hListView, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
        item.iSubItem = 1;
        item.pszText = const_cast<WCHAR*>(frequency);
        SendMessageW(state.m_hListView, LVM_SETITEMTEXTW, static_cast<WPARAM>(row),
                     reinterpret_cast<LPARAM>(&item));
    }
    int Selected() const {
        return static_cast<int>(
            SendMessageW(state.m_hListView, LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_SELECTED));
    }
    test::FakeFMDevice device;
    CMainState state{GetModuleHandleW(nullptr), SkinTables()};
};

TEST_F(ListSelection, ARowWhoseRecordIsGoneTunesNothing) {
    AddRow(4711, L"");
    test::TraceOf([&] { TuneToRow(state, nullptr, 0); });
    EXPECT_THAT(device.Calls(), testing::IsEmpty());
}

TEST_F(ListSelection, AnActivatedRowIsTunedAndItsFrequencyShownBeforeTheScreenIsPaintedAnew) {
    WriteSelectedGroup(L"Test");
    AddRow(Put(L"Test", L"Alpha", 8760), L"");
    const HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr,
                                        GetModuleHandleW(nullptr), nullptr);
    TuneToRow(state, window, 0);
    EXPECT_THAT(device.Calls(), testing::ElementsAre("SetChannel 8760", "GetChannel"));
    DestroyWindow(window);
}

TEST_F(ListSelection, TheRowOfTheTunedFrequencyIsSelectedAlsoWhenItIsTheFirstOrTheLast) {
    const std::uint32_t channels[] = {8760, 9850, 10790};
    for (const std::uint32_t channel : channels) AddRow(1, ListFrequencyText(channel).sz);
    for (int row = 0; row < 3; ++row) {
        device.channel = channels[row];
        test::TraceOf([this] { HighlightTunedChannel(state.m_hListView); });
        EXPECT_EQ(Selected(), row);
    }
}

}  // namespace
