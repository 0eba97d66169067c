// The handset's switches: what the panel's column and the command line both turn. Each setter writes the
// handset's state or the device's registry and tells the running radio what a handset tells it. Every bool
// result is false when the user's registry refuses the change. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace panel {

bool HeadsetPlugged();
bool PlugHeadset(bool plugged);

bool InsertCard(bool inserted);

// A system power state, by the power manager's name.
struct PowerStateRow {
    const wchar_t* name;
    const wchar_t* meaning;
};
const std::vector<PowerStateRow>& PowerStates();
bool IsPowerState(const std::wstring& name);
std::wstring PowerState();
bool SetPowerState(const std::wstring& name);
// The display is lit in the state "on" alone.
bool DisplayLit();

// Bluetooth status bits, 0 to 0x1F; the radio knows 0x1 | 0x8 with 0x4 or 0x10.
std::uint32_t BluetoothBits();
// Also posts them to the radio, as the handset's Bluetooth software does.
bool SetBluetoothBits(std::uint32_t bits);

// The state value SignalLimit: no station comes in better than this level, 0 to 100. Nothing: as the band is.
std::optional<std::uint32_t> SignalLimit();
bool SetSignalLimit(std::optional<std::uint32_t> level);

struct ScreenSize {
    int width, height;  // pixels, 160 to 1280
};
inline constexpr int kSmallestScreen = 160;
inline constexpr int kLargestScreen = 1280;
ScreenSize CurrentScreen();
// The panel turns first, so that the radio's windows then find the display where it is.
bool TurnScreen(ScreenSize size);

// A fault that the handset can inject, by its name in the state value "Fault".
struct FaultRow {
    const wchar_t* name;
    const wchar_t* meaning;
};
const std::vector<FaultRow>& Faults();
bool IsFault(const std::wstring& name);

// Registered window message: the handset's state has changed and the panel draws itself again.
inline constexpr wchar_t kStateChangedMessage[] = L"KoraHandset.StateChanged";
void TellPanel();

}  // namespace panel
