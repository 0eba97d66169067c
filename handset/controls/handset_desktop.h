// The host's desktop on which the handset stands: one of its own ("Kora") keeps the phone and the radio's
// windows together whatever the host's window manager does.
#pragma once

#include <string>

namespace panel {

// Puts the calling thread on the handset's own desktop when there is one, so that it sees the windows there.
// Before the thread's first window.
void JoinHandsetDesktop();

// Makes the handset's own desktop at least this large, as far as the display under it allows; false when the
// thread is on no such desktop: another one is not the handset's to change.
bool GrowHandsetDesktop(int width, int height);

// Name of the desktop that the calling thread is on.
std::wstring CurrentDesktop();

}  // namespace panel
