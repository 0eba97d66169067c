// Events of the file sinks beside the standard ones.
#pragma once

namespace capture {

// The file is complete and closed. First parameter: 0.
inline constexpr long kEventFileWritten = 0x101;
// The file could not be written, or not any more; what could be saved plays. First parameter: why, an
// HRESULT.
inline constexpr long kEventWriteFailed = 0x104;

}  // namespace capture
