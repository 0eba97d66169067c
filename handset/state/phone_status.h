// The telephone's published status: HKLM System\State\Phone, "Status".
#pragma once

#include <cstdint>

namespace handset {

// State and notification bits of Windows Mobile (snapi).
inline constexpr std::uint32_t kPhoneIncoming = 0x00010000;
inline constexpr std::uint32_t kPhoneCalling = 0x00020000;
inline constexpr std::uint32_t kPhoneTalking = 0x20000000;

}  // namespace handset
