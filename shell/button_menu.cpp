#include "shell/button_menu.h"

#include "resources/resource_ids.h"
#include "shell/main_state.h"
#include "skin/skin_access.h"
#include "skin/skin_window.h"

namespace {

constexpr int kButtons[] = {SKIN_RECORD,    SKIN_MUTE,    SKIN_OUTPUT,  SKIN_SEEK_DOWN,      SKIN_SEEK_UP,
                            SKIN_STEP_DOWN, SKIN_STEP_UP, SKIN_AF_LIST, SKIN_RDS_INFORMATION};

}  // namespace

void ShowButtonStates(const CMainState& state, HMENU menu) {
    for (const int id : kButtons) {
        const UINT command = IDC_CONTROL_0 + static_cast<UINT>(id);
        int frame = 0;
        GetButtonFrame(state.m_skin, id, &frame);
        CheckMenuItem(menu, command, MF_BYCOMMAND | (frame != 0 ? MF_CHECKED : MF_UNCHECKED));
        EnableMenuItem(menu, command,
                       MF_BYCOMMAND | (IsButtonEnabled(state.m_skin, id) ? MF_ENABLED : MF_GRAYED));
    }
}

bool TapButtonOf(CMainState& state, HWND window, WORD command) {
    for (const int id : kButtons) {
        if (command != IDC_CONTROL_0 + id) continue;
        TapButton(state.m_skin, window, id);
        return true;
    }
    return false;
}
