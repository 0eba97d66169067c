#include "channels/list_selection.h"

#include <commctrl.h>

#include <cwchar>

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/layout.h"
#include "shell/main_state.h"
#include "tuner/frequency.h"
#include "tuner/frequency_display.h"
#include "tuner/wait_cursor.h"

namespace {

constexpr UINT kSelectionRest_ms = 1500;
constexpr int kRowTextCapacity = 32;

// The frequency of the channel stored behind a row; 0 when it could not be read, as that of a row whose
// record was deleted just now.
std::uint32_t ChannelOfRow(const CMainState& state, int row) {
    LVITEMW item = {};
    item.mask = LVIF_PARAM;
    item.iItem = row;
    SendMessageW(state.m_hListView, LVM_GETITEMW, 0, reinterpret_cast<LPARAM>(&item));
    PropRecord record = {};
    // A store of its own: the list may tell of a row while another operation is filling it.
    CChannelDB().CEDB_ReadRecord(static_cast<CEOID>(item.lParam), &record);
    return record.dwPropRecord_ChannelValue;
}

void CALLBACK SelectionTimerProc(HWND window, UINT, UINT_PTR, DWORD) {
    CMainState& state = *MainStateOf(window);
    if (!IsWindowVisible(state.m_hListView) && !state.m_bRecording) {
        // A scan, and not a recording, has hidden the list and has the tuner to itself: a selection of before
        // is not tuned into it.
        KillTimer(window, TIMER_LIST_SELECTION);
        return;
    }
    const WaitCursor wait;
    g_app.pFMDevice->SetChannel(state.m_uSelectedChannel);
    RefreshFrequencyDisplay(state);
    KillTimer(window, TIMER_LIST_SELECTION);
}

}  // namespace

void HighlightTunedChannel(HWND list) {
    std::uint32_t channel = 0;
    g_app.pFMDevice->GetChannel(&channel);
    const FrequencyText tuned = ListFrequencyText(channel);
    NKDbgPrintfW(L"Current szHighLightChannel %.31s ...\n", tuned.sz);
    const int count = static_cast<int>(SendMessageW(list, LVM_GETITEMCOUNT, 0, 0));
    for (int row = 0; row < count; ++row) {
        WCHAR text[kRowTextCapacity] = L"";
        LVITEMW item = {};
        item.iSubItem = 1;
        item.pszText = text;
        item.cchTextMax = kRowTextCapacity;
        SendMessageW(list, LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        if (wcscmp(text, tuned.sz) != 0) continue;
        item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
        item.state = LVIS_SELECTED | LVIS_FOCUSED;
        SendMessageW(list, LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
        return;
    }
}

void TuneToRow(CMainState& state, HWND window, int row) {
    const std::uint32_t channel = ChannelOfRow(state, row);
    if (channel == 0) return;
    g_app.pFMDevice->SetChannel(channel);
    RefreshFrequencyDisplay(state);
    UpdateMainScreen(window);
}

void TuneToRowAfterRest(CMainState& state, HWND window, int row) {
    if (const std::uint32_t channel = ChannelOfRow(state, row); channel != 0) {
        state.m_uSelectedChannel = channel;
        SetTimer(window, TIMER_LIST_SELECTION, kSelectionRest_ms, SelectionTimerProc);
    }
    InvalidateRect(state.m_hListView, nullptr, FALSE);
}
