// The tuned frequency and its channel's name on the main screen.
#pragma once

class CMainState;

// Asks the tuner for its frequency and shows it in TEXT_FREQUENCY, and in TEXT_CHANNEL_NAME the name under
// which the selected group keeps it, or "Unknown"; both also on the dial of a wide screen. Without a tuner
// device nothing is shown. Any thread that may paint.
void RefreshFrequencyDisplay(CMainState& state);
