// The host's own allocator of sample buffers.
#include "handset/capture/graph/allocator.h"

namespace capture {

CRef<IMemAllocator> NewAllocator() {
    void* made = nullptr;
    CRef<IMemAllocator> allocator;
    if (SUCCEEDED(
            CoCreateInstance(CLSID_MemoryAllocator, nullptr, CLSCTX_INPROC_SERVER, IID_IMemAllocator, &made)))
        *allocator.Put() = static_cast<IMemAllocator*>(made);
    return allocator;
}

}  // namespace capture
