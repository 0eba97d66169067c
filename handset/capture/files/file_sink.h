// The filters at the end of a recording: they write what they receive to a file.
#pragma once

#include <windows.h>

namespace capture {

// The WAV writer: PCM sound into a WAV file.
HRESULT CreateWavSink(REFIID iid, void** out);
// The multiplexer: AMR frames into an MP4-style file.
HRESULT CreateAmrSink(REFIID iid, void** out);

}  // namespace capture
