#include "shell/display_power.h"

#include <cstdio>

#include "shell/main_state.h"

namespace {

constexpr DWORD kPowerNameCapacity = 100;

DWORD PowerFlags() {
    WCHAR name[kPowerNameCapacity] = L"";
    DWORD flags = 0;
    GetSystemPowerState(name, kPowerNameCapacity, &flags);
    return flags;
}

struct GateCase {
    bool bDark, bReturn;
    const char* pszTrace;
    int nPasses;
};

constexpr GateCase kGateCases[] = {
    {true, true, "********1.Screen ON**********\n", 1},
    {true, false, "********2.Screen OFF**********\n", 0},
    {false, true, "********3.Screen OFF**********\n", 0},
    {false, false, "********4.Screen ON**********\n", 1},
};

}  // namespace

int ScreenGate(WPARAM virtualKey) {
    const bool dark = (PowerFlags() & POWER_STATE_IDLE) != 0;
    for (const GateCase& row : kGateCases) {
        if (row.bDark != dark || row.bReturn != (virtualKey == VK_RETURN)) continue;
        std::printf("%s", row.pszTrace);
        return row.nPasses;
    }
    return 0;
}

void ToggleDisplay(CMainState& state) {
    if ((PowerFlags() & POWER_STATE_ON) == 0) {
        AllKeys(FALSE);
        SetFocus(state.m_hListView);
        SetSystemPowerState(nullptr, POWER_STATE_ON, 0);
    } else {
        // The hardware keys must keep reaching the radio while the display is dark.
        AllKeys(TRUE);
        SetSystemPowerState(nullptr, POWER_STATE_IDLE, 0);
    }
}
