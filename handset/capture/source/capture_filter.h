// The audio capture filter: the radio's sound as a source of a graph.
#pragma once

#include <windows.h>

namespace capture {

HRESULT CreateCaptureFilter(REFIID iid, void** out);

}  // namespace capture
