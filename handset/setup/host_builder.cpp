// The host's capture graph builder, asked.
#include "handset/setup/host_builder.h"

#include <windows.h>

#define NO_DSHOW_STRSAFE
#include <dshow.h>

#include "handset/base/com_reference.h"

namespace panel {
namespace {

// The device has its builder under the identifier of the desktop's first one.
bool AskHost() {
    handset::CRef<ICaptureGraphBuilder2> builder;
    const HRESULT created =
        CoCreateInstance(CLSID_CaptureGraphBuilder, nullptr, CLSCTX_INPROC_SERVER, IID_ICaptureGraphBuilder2,
                         reinterpret_cast<void**>(builder.Put()));
    if (FAILED(created)) return LacksStreamControl(created, created);
    return LacksStreamControl(created,
                              builder->ControlStream(nullptr, nullptr, nullptr, nullptr, nullptr, 0, 0));
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
