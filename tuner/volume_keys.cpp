#include "tuner/volume_keys.h"

#include <algorithm>

#include "resources/resource_ids.h"
#include "shell/main_state.h"
#include "shell/messages.h"
#include "skin/skin_access.h"

void StepVolume(HWND window, CMainState& state, int delta) {
    const int current = static_cast<int>(SendMessageW(window, WM_SKIN_GETPOS, SKIN_VOLUME, 0));
    const int wanted = std::clamp(current + delta, 0, GetSliderMax(state.m_skin, SKIN_VOLUME));
    SendMessageW(window, WM_SKIN_SETPOS, SKIN_VOLUME, wanted);
}
