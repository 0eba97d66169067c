// The simulated ether of this handset: a program that serves what band.ini says as a receiver stick's server
// would, and that other programs start, find and end.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "handset/controls/console.h"
#include "handset/ether/stream.h"

namespace panel {

// Serves until StopEther is called; the port (0: any that is free) becomes the state value EtherPort. An
// antenna of the handset that is still this ether is the simulated band again afterwards. Result: an empty
// text, or why not.
std::wstring RunEther(std::uint16_t port, const ether::StreamOptions& options, CConsole& console);

// The port of the one that runs. What one that was killed has left in the state is put right.
std::optional<std::uint16_t> EtherPort();
// Starts one, if none runs, as a program of its own. Its port; nothing when it did not come up.
std::optional<std::uint16_t> StartEther();
// True when none runs afterwards.
bool StopEther();

// The antenna that an ether at that port is.
std::wstring EtherAntenna(std::uint16_t port);

}  // namespace panel
