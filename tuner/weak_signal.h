// The mute while reception is weak. Works at the change alone: a mute in force is never repeated.
#pragma once

#include <cstdint>

class CMainState;

// 15 is the highest level of weak reception.
bool IsWeakSignal(std::int32_t level);

// Mutes by the volume at the change from normal to weak and restores it at the change back; TEXT_LOW_SIGNAL
// says which. Monitor thread.
void MuteWhileWeak(CMainState& state, std::int32_t level);

// While the mute is in force its notice is painted again after anything was painted over it. Monitor thread.
void KeepWeakNotice(CMainState& state);
