// The capture graph builder, for a host whose own has no stream control.
#pragma once

#include <windows.h>

namespace capture {

HRESULT CreateGraphBuilder(REFIID iid, void** out);

}  // namespace capture
