// The tone in a WAV file, wherever in it the sound lies. Portable.
#pragma once

#include <istream>
#include <optional>

#include "tests/bench/ether/tone_watch.h"

namespace bench {

// Of its first side; nothing for what is no PCM of 16 bits. That a recording fades in is no flaw.
[[nodiscard]] std::optional<ToneRecord> WatchFile(std::istream* wav, double tone_Hz);

}  // namespace bench
