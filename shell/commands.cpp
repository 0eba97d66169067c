#include "shell/commands.h"

#include "channels/group_dialog.h"
#include "resources/resource_ids.h"
#include "schedule/schedule_dialog.h"
#include "shell/app_block.h"
#include "shell/button_menu.h"
#include "shell/information_dialog.h"
#include "shell/keys.h"
#include "shell/main_state.h"
#include "shell/menu_bar.h"
#include "shell/messages.h"
#include "shell/popup_menu.h"
#include "shell/settings_dialog.h"
#include "shell/sleep_timer.h"
#include "tuner/auto_scan.h"

namespace {

constexpr DWORD kFileClosing_ms = 1000;
// Any of the letters that come with Ctrl: none of them lights the display.
constexpr WPARAM kLetterKey = 'A';

void Settings(CMainState&, HWND window) {
    ShowSettings(window);
}

void Information(CMainState&, HWND window) {
    ShowInformation(window);
}

void SleepOff(CMainState&, HWND window) {
    SetSleepTimer(0, IDC_SLEEP_OFF, window);
}
void Sleep15(CMainState&, HWND window) {
    SetSleepTimer(15 * 60, IDC_SLEEP_15, window);
}
void Sleep30(CMainState&, HWND window) {
    SetSleepTimer(30 * 60, IDC_SLEEP_30, window);
}
void Sleep60(CMainState&, HWND window) {
    SetSleepTimer(60 * 60, IDC_SLEEP_60, window);
}

void Exit(CMainState&, HWND window) {
    if (g_app.bRecordingActive) {
        SendMessageW(window, WM_SKIN_CLICK, SKIN_STOP_RECORD, 0);
        Sleep(kFileClosing_ms);
    }
    NKDbgPrintfW(L"== CLOSE FM ==\r\n");
    SendMessageW(window, WM_CLOSE, 0, 0);
}

struct CommandRow {
    WORD wId;
    void (*handler)(CMainState&, HWND);
};

// clang-format off
constexpr CommandRow kCommands[] = {
    {IDC_AUTOSCAN,      StartAutoScan},
    {IDC_CHANNEL_LISTS, ShowGroupDialog},
    {IDC_SETTINGS,      Settings},
    {IDC_INFORMATION,   Information},
    {IDC_SLEEP_OFF,     SleepOff},
    {IDC_SLEEP_15,      Sleep15},
    {IDC_SLEEP_30,      Sleep30},
    {IDC_SLEEP_60,      Sleep60},
    {IDC_SCHEDULE,      ShowScheduleDialog},
    {IDC_ADD_CURRENT,   AddCurrentChannel},
    {IDC_SELECTED_CHANNEL, ShowSelectedChannel},
    {static_cast<WORD>(IDC_EXIT), Exit},
};
// clang-format on

bool IsDigit(WORD id) {
    return id >= IDC_DIGIT_0 && id <= IDC_DIGIT_0 + 9;
}

}  // namespace

bool RunCommand(CMainState& state, HWND window, WORD id) {
    if (IsDigit(id)) {
        HandleKeyDown(state, window, static_cast<WPARAM>('0' + (id - IDC_DIGIT_0)));
        return true;
    }
    for (const CommandRow& row : kCommands) {
        if (row.wId != id) continue;
        row.handler(state, window);
        return true;
    }
    return TapButtonOf(state, window, id);
}

bool RunShortcut(CMainState& state, HWND window, WORD id) {
    // A digit asks for itself whether it passes.
    if (!IsDigit(id) && (!KeyPasses(state, kLetterKey) || IsCommandGrey(state, id))) return true;
    return RunCommand(state, window, id);
}
