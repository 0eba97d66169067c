// The host's own allocator of sample buffers.
#pragma once

#include "handset/capture/graph/com_reference.h"
#include "handset/capture/graph/direct_show.h"

namespace capture {

// Empty when the host has none.
CRef<IMemAllocator> NewAllocator();

}  // namespace capture
