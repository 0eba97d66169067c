// The suspended phone: while it sleeps, every thread of every program is held at its next platform call.
#pragma once

namespace coredll {

// True while the phone sleeps. Any thread.
bool PhoneSleeps();
// Begins to follow the phone's power state, once in a process. Called by the first platform call.
void FollowPhone();

}  // namespace coredll
