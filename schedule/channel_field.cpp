#include "schedule/channel_field.h"

#include <commctrl.h>

#include <cwchar>

#include "channels/frequency_edit.h"
#include "channels/frequency_input.h"
#include "resources/resource_ids.h"
#include "schedule/booking_rule.h"
#include "shell/app_block.h"
#include "tuner/frequency.h"

namespace {

LRESULT Arrows(HWND dialog, UINT message, WPARAM wParam = 0, LPARAM lParam = 0) {
    return SendDlgItemMessageW(dialog, IDC_SCHEDULE_CHANNEL_SPIN, message, wParam, lParam);
}

std::uint32_t Position(HWND dialog) {
    return static_cast<std::uint32_t>(Arrows(dialog, UDM_GETPOS32));
}

std::uint32_t TunedChannel() {
    std::uint32_t channel = 0;
    if (g_app.pFMDevice != nullptr) g_app.pFMDevice->GetChannel(&channel);
    return channel;
}

}  // namespace

void SetUpChannelField(HWND dialog) {
    const HWND edit = GetDlgItem(dialog, IDC_SCHEDULE_CHANNEL);
    Arrows(dialog, UDM_SETBUDDY, reinterpret_cast<WPARAM>(edit));
    Arrows(dialog, UDM_SETRANGE32, kBandLowest_10kHz, kBandHighest_10kHz);
    UDACCEL step = {0, kTuningStep_10kHz};
    Arrows(dialog, UDM_SETACCEL, 1, reinterpret_cast<LPARAM>(&step));
    SubclassFrequencyEdit(edit);
    Arrows(dialog, UDM_SETPOS32, 0, static_cast<LPARAM>(TunedChannel()));
    ShowChannelPosition(dialog);
}

void SeatChannelArrows(HWND dialog) {
    const LRESULT edit = Arrows(dialog, UDM_GETBUDDY);
    if (edit != 0) Arrows(dialog, UDM_SETBUDDY, static_cast<WPARAM>(edit));
}

void ReleaseChannelField(HWND dialog) {
    RestoreFrequencyEdit(GetDlgItem(dialog, IDC_SCHEDULE_CHANNEL));
}

void ShowChannelPosition(HWND dialog) {
    SetDlgItemTextW(dialog, IDC_SCHEDULE_CHANNEL, PlainFrequencyText(Position(dialog)).sz);
}

void FollowChannelText(HWND dialog) {
    WCHAR text[kBookingTextCapacity] = L"";
    GetDlgItemTextW(dialog, IDC_SCHEDULE_CHANNEL, text, ARRAYSIZE(text));
    // The text has no hundredths: one that the arrows themselves gave is not to cost them theirs.
    if (wcscmp(text, PlainFrequencyText(Position(dialog)).sz) == 0) return;
    std::uint32_t channel = 0;
    if (ReadFrequency(text, &channel) != FrequencyInput::kValid) return;
    Arrows(dialog, UDM_SETPOS32, 0, static_cast<LPARAM>(channel));
}
