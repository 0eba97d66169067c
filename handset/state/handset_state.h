// The state of one handset as its stand-in keeps it: what belongs to the stand-in alone lies under one key of
// the user's registry, and an environment variable KORA_<NAME> wins over the value of that name. Host code
// only: the application never sees this.
#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>

#include "handset/base/device_path.h"

namespace handset {

// The key of this handset under HKEY_CURRENT_USER: "Software\Kora Handset", or what the environment variable
// KORA_STATEKEY names, so that several handsets can stand side by side.
std::wstring StateKeyPath();

// The name of a kernel object (mutex, event) that the programs of this handset share.
std::wstring StateObjectName(const std::wstring& name);

// A value of the state, read at the moment of the call. Any thread. `name` is the value's name, such as
// L"ScreenWidth"; its environment variable is KORA_SCREENWIDTH. Numbers may be decimal or 0x…. What is no
// number, one that is too large for the type, or no text counts as missing.
std::uint32_t StateDword(const wchar_t* name, std::uint32_t fallback);
// For a value that every write of covers with a CCountedWrite: seen by the next question after such a write,
// and after another's within two milliseconds.
std::uint32_t CountedStateDword(const wchar_t* name, std::uint32_t fallback);
std::optional<std::uint64_t> StateQword(const wchar_t* name);
std::wstring StateString(const wchar_t* name, const std::wstring& fallback);

// Write a value, for the next reader in any process. False when the registry refuses. An environment variable
// of the reader's still wins.
bool SetStateDword(const wchar_t* name, std::uint32_t value);
bool SetStateQword(const wchar_t* name, std::uint64_t value);
bool SetStateString(const wchar_t* name, const std::wstring& value);
bool SetStateBinary(const wchar_t* name, const void* data, std::size_t size);
bool DeleteStateValue(const wchar_t* name);

// The faults to be injected, parted by blanks: the value "Fault".
std::wstring InjectedFaults();
bool FaultIn(const std::wstring& faults, const wchar_t* fault);
// True when they hold `fault`.
bool FaultInjected(const wchar_t* fault);
// How often a fault is to come that is given with a number ("suspend:3"): once without one, 0 when it is not
// there.
std::uint32_t FaultCount(const wchar_t* fault);

// The host folder that is the root of the device's file system, without a trailing backslash.
std::wstring DeviceRoot();
bool StorageCardPresent();

// A path on the handset as it stands, as a program of the device gives it. When it cannot be reached, the
// last error is ERROR_PATH_NOT_FOUND.
CDevicePath OnDevice(const wchar_t* path);
// Its place on the host. The storage card's files have a host folder even while the card is out.
std::wstring HostPath(const wchar_t* devicePath);
// The device path of a host path below the device's root; empty for any other.
std::wstring DevicePathOf(const std::wstring& hostPath);

// The key path, below HKEY_CURRENT_USER, that stands for a root of the device's registry (HKEY_CLASSES_ROOT,
// HKEY_LOCAL_MACHINE, HKEY_CURRENT_USER, HKEY_USERS); empty for anything else.
std::wstring DeviceRegistryRootPath(HKEY root);

}  // namespace handset
