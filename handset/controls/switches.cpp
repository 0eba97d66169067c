// The handset's switches, over its state and the device's registry.
#include "handset/controls/switches.h"

#include <windows.h>

#include <algorithm>

#include "handset/controls/device_registry.h"
#include "handset/controls/radio_windows.h"
#include "handset/state/handset_protocol.h"
#include "handset/state/handset_state.h"
#include "handset/state/own_windows.h"
#include "handset/state/power_manager.h"
#include "handset/state/screen_size.h"
#include "handset/state/tuner_values.h"

namespace panel {
namespace {

constexpr wchar_t kHardwareKey[] = L"HKLM\\System\\State\\Hardware";
// What the handset's Bluetooth software posts to the radio; wParam = status bits.
constexpr UINT kBluetoothChanged = 0xA402;
constexpr UINT kTellTimeout_ms = 2000;
constexpr std::uint64_t kStrongestSignal = 100;

// The bar and then the windows from the front backwards; the other way round when the display gets smaller. A
// window that goes before the one above it covers its new place would be uncovered for a moment, and Wine
// brings what is uncovered to the front.
std::vector<HWND> WindowsToTell(bool smaller) {
    std::vector<HWND> told = {RadioTopBar()};
    for (const HWND window : RadioWindows()) told.push_back(window);
    if (smaller) std::reverse(told.begin(), told.end());
    return told;
}

}  // namespace

bool HeadsetPlugged() {
    return DeviceDword(kHardwareKey, L"Headset", 0) != 0;
}

bool PlugHeadset(bool plugged) {
    return SetDeviceDword(kHardwareKey, L"Headset", plugged ? 1 : 0);
}

bool InsertCard(bool inserted) {
    return handset::SetStateDword(L"StorageCard", inserted ? 1 : 0);
}

std::wstring PowerState() {
    return handset::CurrentPowerState().name;
}

bool SetPowerState(const std::wstring& name) {
    return handset::ChangePowerState(name) == ERROR_SUCCESS;
}

bool SwitchDisplayOff() {
    return handset::ChangePowerState(handset::kPowerIdle) == ERROR_SUCCESS;
}

bool PressPower() {
    return handset::PressPowerKey() == ERROR_SUCCESS;
}

bool DisplayLit() {
    return handset::DisplayLit(handset::CurrentPowerState());
}

bool PhoneSleeps() {
    return (handset::CurrentPowerState().flags & handset::kPowerSuspend) != 0;
}

bool RadioHasAllKeys() {
    return handset::AllKeysWanted();
}

std::uint32_t BluetoothBits() {
    return DeviceDword(kHardwareKey, L"Bluetooth", 0);
}

bool SetBluetoothBits(std::uint32_t bits) {
    const bool written = SetDeviceDword(kHardwareKey, L"Bluetooth", bits);
    if (const HWND radio = RadioMainWindow()) PostMessageW(radio, kBluetoothChanged, bits, 0);
    return written;
}

std::optional<ReceptionLimit> SignalLimit() {
    const auto level = handset::StateQword(L"SignalLimit");
    if (!level) return std::nullopt;
    return ReceptionLimit{static_cast<std::uint32_t>(std::min(*level, kStrongestSignal)),
                          handset::StateDword(L"SignalLimitChannel", 0)};
}

bool SetSignalLimit(std::optional<ReceptionLimit> limit) {
    if (limit) {
        return handset::SetStateDword(L"SignalLimitChannel", limit->channel) &&
               handset::SetStateDword(L"SignalLimit", limit->level);
    }
    // False when there was none, which is as well.
    for (const wchar_t* name : {L"SignalLimit", L"SignalLimitChannel"}) handset::DeleteStateValue(name);
    return true;
}

std::uint32_t TunedChannel() {
    return handset::StateDword(handset::kTunedChannel, 0);
}

ScreenSize CurrentScreen() {
    return {static_cast<int>(handset::ScreenWidth()), static_cast<int>(handset::ScreenHeight())};
}

bool TurnScreen(ScreenSize size) {
    const ScreenSize before = CurrentScreen();
    const bool written = handset::SetScreenSize(static_cast<std::uint32_t>(size.width),
                                                static_cast<std::uint32_t>(size.height));
    TellPanel();
    const std::vector<HWND> told = WindowsToTell(size.width * size.height < before.width * before.height);
    for (const HWND window : told) {
        if (window == nullptr) continue;
        SendMessageTimeoutW(window, WM_SETTINGCHANGE, handset::kSettingChangeReset, 0, SMTO_ABORTIFHUNG,
                            kTellTimeout_ms, nullptr);
    }
    return written;
}

void TellPanel() {
    const HWND window = handset::FindOwnWindow(handset::kPanelClass);
    if (window == nullptr) return;
    SendMessageTimeoutW(window, RegisterWindowMessageW(kStateChangedMessage), 0, 0, SMTO_ABORTIFHUNG,
                        kTellTimeout_ms, nullptr);
}

}  // namespace panel
