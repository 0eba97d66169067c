// The handset's switches: what the panel's column and the command line both turn. Each setter writes the
// handset's state or the device's registry and tells the running radio what a handset tells it. Every bool
// result is false when the user's registry refuses the change. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "handset/state/screen_size.h"

namespace panel {

bool HeadsetPlugged();
bool PlugHeadset(bool plugged);

bool InsertCard(bool inserted);

// The system power state, by the power manager's name; those who asked for it are told of a change.
std::wstring PowerState();
bool SetPowerState(const std::wstring& name);
// As a program switches the display off; as the phone's power key does it.
bool SwitchDisplayOff();
bool PressPower();
bool DisplayLit();
// The phone sleeps: its programs are held, and its keys and its display do nothing.
bool PhoneSleeps();

// The radio has asked for all keys (AllKeys): it gets those that the phone would keep to itself, and in the
// dark.
bool RadioHasAllKeys();

// Bluetooth status bits, 0 to 0x1F; the radio knows 0x1 | 0x8 with 0x4 or 0x10.
inline constexpr std::uint32_t kAllBluetoothBits = 0x1F;
std::uint32_t BluetoothBits();
// Also posts them to the radio, as the handset's Bluetooth software does.
bool SetBluetoothBits(std::uint32_t bits);

// The state values SignalLimit and SignalLimitChannel: the station comes in no better than that level, 0 to
// 100. Nothing: as the band is.
struct ReceptionLimit {
    std::uint32_t level;
    std::uint32_t channel;  // units of 10 kHz; 0 = every station
};
std::optional<ReceptionLimit> SignalLimit();
bool SetSignalLimit(std::optional<ReceptionLimit> limit);
// The station that the tuner device was tuned to last; 0 before the first time.
std::uint32_t TunedChannel();

struct ScreenSize {
    int width, height;  // pixels, 160 to 1280
};
// Of a phone that is not turned, as it is delivered.
inline constexpr ScreenSize kUsualScreen = {240, 320};
inline constexpr int kSmallestScreen = handset::kSmallestScreen;
inline constexpr int kLargestScreen = handset::kLargestScreen;
ScreenSize CurrentScreen();
// The panel turns first, so that the radio's windows then find the display where it is.
bool TurnScreen(ScreenSize size);

// Registered window message: the handset's state has changed and the panel draws itself again.
inline constexpr wchar_t kStateChangedMessage[] = L"KoraHandset.StateChanged";
void TellPanel();

}  // namespace panel
