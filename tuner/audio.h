// Loudspeaker, mute and the mute by volume. Everything that switches the loudspeaker or the mute does it
// here. Called from the main thread, the monitor thread and the scan thread, without a lock. Without a tuner
// device nothing happens.
#pragma once

#include <windows.h>

// TRUE: loudspeaker, FALSE: headset. Remembered in the application block.
void SpeakerOnOff(BOOL on);

// Mutes (TRUE) or unmutes. A loudspeaker that is on is switched off for the moment of the change: the call
// then takes 30 ms.
void MuteOnOff(BOOL mute);

// TRUE: remembers the volume and sets it to 0; FALSE: sets the remembered volume. The flag that tells which
// of them is in force (ApplicationBlock::bLowSignalMute) is the caller's.
void MuteByVolume(BOOL on);
