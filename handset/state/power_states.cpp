// The table of power states and the present one.
#include "handset/state/power_states.h"

#include <algorithm>
#include <cwchar>

#include "handset/base/rows.h"
#include "handset/state/handset_state.h"

namespace handset {

const std::vector<PowerStateRow>& PowerStates() {
    // clang-format off
    static const std::vector<PowerStateRow> kRows = {
        {L"on",           kPowerOn,         L"display and programs on"},
        {L"idle",         kPowerIdle,       L"display off; the phone suspends when nothing keeps it awake"},
        {L"screenoff",    kPowerIdle,       L"the same by another name"},
        {L"unattended",   kPowerUnattended, L"display off, programs run on"},
        {L"useridle",     kPowerUserIdle,   L"nobody has touched the phone for a while"},
        {L"backlightoff", kPowerUserIdle,   L"the same by another name"},
        {L"suspend",      kPowerSuspend,    L"asleep; programs are held"},
        {L"shutdown",     kPowerOff,        L"switched off"},
        {L"critical",     kPowerCritical,   L"switched off for lack of power"},
        {L"boot",         kPowerBoot,       L"starting"},
        {L"reboot",       kPowerReset,      L"starting again"},
    };
    // clang-format on
    return kRows;
}

const PowerStateRow* PowerStateNamed(const std::wstring& name) {
    for (const PowerStateRow& row : PowerStates()) {
        if (_wcsicmp(row.name, name.c_str()) == 0) return &row;
    }
    return nullptr;
}

const PowerStateRow* PowerStateWithFlags(std::uint32_t flags) {
    return RowWith(PowerStates(), &PowerStateRow::flags, flags);
}

PowerState CurrentPowerState() {
    PowerState state{StateString(L"PowerState", L"on"), 0};
    const PowerStateRow* row = PowerStateNamed(state.name);
    if (row == nullptr) return state;
    // Further flags are kept beside the name; those of another state do not count.
    state.flags = StateDword(L"PowerFlags", row->flags);
    if ((state.flags & row->flags) != row->flags) state.flags = row->flags;
    return state;
}

bool DisplayLit(const PowerState& state) {
    return (state.flags & (kPowerOn | kPowerUserIdle)) != 0;
}

}  // namespace handset
