// Whether the host's own capture graph builder is good enough for recording.
#pragma once

namespace panel {

// True when the host has no capture graph builder, or one whose ControlStream is not implemented, as Wine's.
// The handset's own then takes its place for the radio.
bool HostLacksStreamControl();

}  // namespace panel
