// The tuned frequency and its channel's name on the main screen.
#pragma once

#include <cstdint>

class CMainState;

// Shows a frequency (10 kHz) in TEXT_FREQUENCY, the name, which is not null, in TEXT_CHANNEL_NAME, and both
// on the dial of a wide screen. Any thread that may paint.
void ShowFrequency(CMainState& state, std::uint32_t channel, const wchar_t* name);

// Asks the tuner for its frequency and shows it in TEXT_FREQUENCY, and in TEXT_CHANNEL_NAME the name under
// which the selected group keeps it, or "Unknown". Without a tuner device nothing is shown. Any thread that
// may paint.
void RefreshFrequencyDisplay(CMainState& state);
