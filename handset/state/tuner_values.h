// State values in which the tuner remembers where it stands. The first is read by whoever wants to know what
// is tuned, too.
#pragma once

namespace handset {

inline constexpr wchar_t kTunedChannel[] = L"TunedChannel";  // units of 10 kHz
inline constexpr wchar_t kTunerVolume[] = L"TunerVolume";    // percent

}  // namespace handset
