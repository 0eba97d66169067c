// Whether the host's own capture graph builder is good enough for recording.
#pragma once

#include <windows.h>

namespace panel {

// True when the host has no capture graph builder, or one whose ControlStream is not implemented, as Wine's.
// The handset's own then takes its place for the radio.
bool HostLacksStreamControl();

// The same, from what the host answered: to the creation of its builder, and to a ControlStream without a
// graph. A builder that can do it refuses that one in another way than E_NOTIMPL.
bool LacksStreamControl(HRESULT created, HRESULT controlled);

}  // namespace panel
