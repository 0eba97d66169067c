// The host's capture graph builder, asked.
#include "handset/setup/host_builder.h"

#include <windows.h>

#define NO_DSHOW_STRSAFE
#include <dshow.h>

namespace panel {
namespace {

// The device has its builder under the identifier of the desktop's first one.
bool AskHost() {
    void* made = nullptr;
    const HRESULT created = CoCreateInstance(CLSID_CaptureGraphBuilder, nullptr, CLSCTX_INPROC_SERVER,
                                             IID_ICaptureGraphBuilder2, &made);
    if (FAILED(created)) return LacksStreamControl(created, created);
    auto* const builder = static_cast<ICaptureGraphBuilder2*>(made);
    const HRESULT controlled = builder->ControlStream(nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0);
    builder->Release();
    return LacksStreamControl(created, controlled);
}

}  // namespace

bool HostLacksStreamControl() {
    const HRESULT entered = CoInitializeEx(nullptr, COINIT_MULTITHREADED);
    const bool lacks = AskHost();
    if (SUCCEEDED(entered)) CoUninitialize();
    return lacks;
}

bool LacksStreamControl(HRESULT created, HRESULT controlled) {
    return FAILED(created) || controlled == E_NOTIMPL;
}

}  // namespace panel
