#include "recording/record_screen.h"

#include <initializer_list>

#include "recording/record_time.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "skin/skin_access.h"
#include "skin/skin_paint.h"
#include "skin/skin_rows.h"
#include "skin/skin_window.h"
#include "tuner/frequency_display.h"

namespace {

constexpr int kIdle = 0;
constexpr int kTuningButtons[] = {SKIN_SEEK_UP, SKIN_SEEK_DOWN, SKIN_STEP_UP, SKIN_STEP_DOWN};

// The skin's "enable" turns the state over, hence the look before it.
void EnableTuning(CSkin& skin) {
    for (const int id : kTuningButtons) {
        const SkinButton* button = FindButton(skin, id);
        if (button != nullptr && (button->dwLook & kLookDisabled) != 0) EnableButton(skin, id, 0);
    }
}

}  // namespace

void LockScreen(CMainState& state) {
    state.m_bRecording = TRUE;
    for (const int id : kTuningButtons) EnableButton(state.m_skin, id, 1);
    EnableScanCommand(FALSE);
}

void UnlockScreen(CMainState& state) {
    ShowWindow(state.m_hListView, SW_SHOW);
    EndRecordTime(state);
    PutRecordButtonOut(state);
    RepaintRecordButton(state);
    EnableTuning(state.m_skin);
}

void ShowStatusText(CMainState& state) {
    RefreshFrequencyDisplay(state);
}

// One of the two menus has it.
void EnableScanCommand(BOOL enable) {
    for (const HMENU menu : {g_app.hLeftSoftKeyMenu, g_app.hRightSoftKeyMenu}) {
        EnableMenuItem(menu, IDC_AUTOSCAN, MF_BYCOMMAND | (enable ? MF_ENABLED : MF_GRAYED));
    }
}

void PutRecordButtonOut(CMainState& state) {
    SetButtonFrame(state.m_skin, SKIN_RECORD, kIdle);
}

void RepaintRecordButton(CMainState& state) {
    RepaintElements(state.m_skin, state.m_skin.hWnd, FALSE, SKIN_RECORD, kNoElement);
}
