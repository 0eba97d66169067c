// The AMR narrow-band encoder as a filter.
#pragma once

#include <windows.h>

namespace capture {

HRESULT CreateAmrEncoderFilter(REFIID iid, void** out);

}  // namespace capture
