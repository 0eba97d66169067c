// A row of the channel list that is tapped.
#include "channels/list_selection.h"

#include <commctrl.h>

#include "shell/app_block.h"
#include "shell/main_state.h"
#include "tests/support/fake_fm_device.h"
#include "tests/unit/channels/channels_test.h"

namespace {

class ListSelection : public test::ChannelsTest {
  protected:
    ListSelection() {
        g_app.pFMDevice = &device;
        InitCommonControls();
        state.m_hListView = CreateWindowExW(0, WC_LISTVIEWW, L"", WS_POPUP | LVS_REPORT, 0, 0, 240, 105,
                                            nullptr, nullptr, GetModuleHandleW(nullptr), nullptr);
    }
    ~ListSelection() override {
        DestroyWindow(state.m_hListView);
        g_app.pFMDevice = nullptr;
    }
    test::FakeFMDevice device;
    CMainState state{GetModuleHandleW(nullptr), SkinTables()};
};

TEST_F(ListSelection, ARowWhoseRecordIsGoneTunesNothing) {
    LVITEMW item = {};
    item.mask = LVIF_PARAM;
    item.lParam = 4711;
    SendMessageW(state.m_hListView, LVM_INSERTITEMW, 0, reinterpret_cast<LPARAM>(&item));
    test::TraceOf([&] { TuneToRow(state, nullptr, 0); });
    EXPECT_THAT(device.Calls(), testing::IsEmpty());
}

}  // namespace
