// The host's capture graph builder, asked.
#include "handset/panel/host_builder.h"

#include <windows.h>

#define NO_DSHOW_STRSAFE
#include <dshow.h>

namespace panel {
namespace {

// The device has its builder under the identifier of the desktop's first one.
bool Lacks() {
    void* made = nullptr;
    if (FAILED(CoCreateInstance(CLSID_CaptureGraphBuilder, nullptr, CLSCTX_INPROC_SERVER,
                                IID_ICaptureGraphBuilder2, &made)))
        return true;
    auto* const builder = static_cast<ICaptureGraphBuilder2*>(made);
    // Without a graph there is nothing to control; one that can do it says so in another way.
    const HRESULT result = builder->ControlStream(nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0);
    builder->Release();
    return result == E_NOTIMPL;
}

}  // namespace

bool HostLacksStreamControl() {
    const HRESULT entered = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    const bool lacks = Lacks();
    if (SUCCEEDED(entered)) CoUninitialize();
    return lacks;
}

}  // namespace panel
