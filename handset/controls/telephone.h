// The handset's telephone as its programs see it: the status bits and the caller's number that the platform
// publishes under HKLM System\State\Phone. Any thread.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "handset/state/phone_status.h"

namespace panel {

using handset::kPhoneCalling;
using handset::kPhoneIncoming;
using handset::kPhoneTalking;

std::uint32_t PhoneStatus();
// Empty when no number is published.
std::wstring CallerNumber();

// A number, when there is one, is published before the status, and taken back after it: a program that is
// told of the status finds the number that belongs to it. A sleeping phone wakes for a call. False when the
// user's registry refuses.
bool CallComesIn(const std::optional<std::wstring>& number);
bool CallGoesOut(const std::optional<std::wstring>& number);
bool CallIsAnswered();
bool CallEnds();

// One word for the status: "none", "incoming", "outgoing", "talking" or "other".
const wchar_t* CallName(std::uint32_t status);

}  // namespace panel
