// The system power states: their names, their flags and what the power manager keeps of the present one. Host
// code only; any thread.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace handset {

// Flags, as pm.h gives them to the device's programs (POWER_STATE_…).
inline constexpr std::uint32_t kPowerOn = 0x00010000;
inline constexpr std::uint32_t kPowerOff = 0x00020000;
inline constexpr std::uint32_t kPowerCritical = 0x00040000;
inline constexpr std::uint32_t kPowerBoot = 0x00080000;
inline constexpr std::uint32_t kPowerIdle = 0x00100000;
inline constexpr std::uint32_t kPowerSuspend = 0x00200000;
inline constexpr std::uint32_t kPowerUnattended = 0x00400000;
inline constexpr std::uint32_t kPowerReset = 0x00800000;
inline constexpr std::uint32_t kPowerUserIdle = 0x01000000;

struct PowerStateRow {
    const wchar_t* name;
    std::uint32_t flags;
    const wchar_t* meaning;
};
// A state that is asked for by flags is the first one that has exactly them.
const std::vector<PowerStateRow>& PowerStates();
// Null when there is none.
const PowerStateRow* PowerStateNamed(const std::wstring& name);
const PowerStateRow* PowerStateWithFlags(std::uint32_t flags);

struct PowerState {
    std::wstring name;
    std::uint32_t flags;
    bool operator==(const PowerState& other) const { return name == other.name && flags == other.flags; }
};
// As the state values PowerState and PowerFlags have it. The flags are 0 for a name that there is not.
PowerState CurrentPowerState();
// The display is lit in "on", and in the states in which only the light behind it is off.
bool DisplayLit(const PowerState& state);

}  // namespace handset
