// The handset's switches, over its state and the device's registry.
#include "handset/panel/switches.h"

#include <windows.h>

#include <algorithm>

#include "handset/panel/device_registry.h"
#include "handset/panel/radio_windows.h"
#include "handset/state/handset_protocol.h"
#include "handset/state/handset_state.h"

namespace panel {
namespace {

constexpr wchar_t kHardwareKey[] = L"HKLM\\System\\State\\Hardware";
// What the handset's Bluetooth software posts to the radio; wParam = status bits.
constexpr UINT kBluetoothChanged = 0xA402;
constexpr UINT kTellTimeout_ms = 2000;

template <typename Rows>
bool Holds(const Rows& rows, const std::wstring& name) {
    return std::any_of(rows.begin(), rows.end(), [&](const auto& row) { return name == row.name; });
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

const std::vector<PowerStateRow>& PowerStates() {
    static const std::vector<PowerStateRow> kRows = {
        {L"on", L"display and radio on"},
        {L"unattended", L"display off, programs run on"},
        {L"idle", L"display off, little to do"},
        {L"useridle", L"nobody has touched the handset for a while"},
        {L"suspend", L"asleep"},
        {L"off", L"switched off"},
        {L"critical", L"switched off for lack of power"},
        {L"boot", L"starting"},
        {L"reset", L"starting again"},
    };
    return kRows;
}

bool IsPowerState(const std::wstring& name) {
    return Holds(PowerStates(), name);
}

std::wstring PowerState() {
    return handset::StateString(L"PowerState", L"on");
}

bool SetPowerState(const std::wstring& name) {
    const bool written = handset::SetStateString(L"PowerState", name);
    TellPanel();
    return written;
}

bool DisplayLit() {
    return PowerState() == L"on";
}

std::uint32_t BluetoothBits() {
    return DeviceDword(kHardwareKey, L"Bluetooth", 0);
}

bool SetBluetoothBits(std::uint32_t bits) {
    const bool written = SetDeviceDword(kHardwareKey, L"Bluetooth", bits);
    if (const HWND radio = RadioMainWindow()) PostMessageW(radio, kBluetoothChanged, bits, 0);
    return written;
}

std::optional<std::uint32_t> SignalLimit() {
    const auto limit = handset::StateQword(L"SignalLimit");
    if (!limit) return std::nullopt;
    return static_cast<std::uint32_t>(*limit);
}

bool SetSignalLimit(std::optional<std::uint32_t> level) {
    if (level) return handset::SetStateDword(L"SignalLimit", *level);
    handset::DeleteStateValue(L"SignalLimit");  // false when there was none, which is as well
    return true;
}

ScreenSize CurrentScreen() {
    return {static_cast<int>(handset::StateDword(L"ScreenWidth", 240)),
            static_cast<int>(handset::StateDword(L"ScreenHeight", 320))};
}

bool TurnScreen(ScreenSize size) {
    const bool written = handset::SetStateDword(L"ScreenWidth", static_cast<std::uint32_t>(size.width)) &&
                         handset::SetStateDword(L"ScreenHeight", static_cast<std::uint32_t>(size.height));
    TellPanel();
    for (const HWND window : RadioWindows()) {
        SendMessageTimeoutW(window, WM_SETTINGCHANGE, handset::kSettingChangeReset, 0, SMTO_ABORTIFHUNG,
                            kTellTimeout_ms, nullptr);
    }
    return written;
}

const std::vector<FaultRow>& Faults() {
    static const std::vector<FaultRow> kRows = {
        {L"initialize", L"the tuner device does not start"},
        {L"create", L"the tuner device cannot be created"},
        {L"seek", L"every seek fails"},
        {L"monitor", L"reading the signal crashes once"},
        {L"msgqueue", L"no message queue can be made"},
        {L"database-write", L"no record can be written"},
    };
    return kRows;
}

bool IsFault(const std::wstring& name) {
    return Holds(Faults(), name);
}

void TellPanel() {
    const HWND window = FindWindowW(handset::kPanelClass, nullptr);
    if (window == nullptr) return;
    SendMessageTimeoutW(window, RegisterWindowMessageW(kStateChangedMessage), 0, 0, SMTO_ABORTIFHUNG,
                        kTellTimeout_ms, nullptr);
}

}  // namespace panel
