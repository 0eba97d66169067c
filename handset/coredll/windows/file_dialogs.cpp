// The file dialogs: opened in a folder of the device, and the choice given as a path of the device.
#include <windows.h>

#include <commdlg.h>

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <string>

#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/state/handset_state.h"

namespace {

using coredll::CallKind;
using coredll::CCallGuard;
using handset::CDevicePath;
using handset::OnDevice;

// Device differs: the host's dialog also shows what lies outside the device; a choice there counts as none.
BOOL Choose(OPENFILENAMEW* request, BOOL(WINAPI* dialog)(OPENFILENAMEW*)) {
    if (request == nullptr || request->lpstrFile == nullptr || request->nMaxFile == 0) return FALSE;
    const CDevicePath folder =
        OnDevice(request->lpstrInitialDir != nullptr ? request->lpstrInitialDir : L"\\");
    const CDevicePath proposed = OnDevice(request->lpstrFile);
    std::wstring choice = request->lpstrFile[0] != L'\0' && proposed ? proposed.host() : L"";
    choice.resize(handset::kLongestHostPath);

    OPENFILENAMEW host{};
    std::memcpy(&host, request, std::min<std::size_t>(request->lStructSize, sizeof host));
    host.lStructSize = sizeof host;
    host.lpstrInitialDir = folder ? folder.host() : nullptr;
    host.lpstrFile = choice.data();
    host.nMaxFile = handset::kLongestHostPath;
    if (!dialog(&host)) return FALSE;

    const std::wstring chosen = choice.substr(0, choice.find(L'\0'));
    const std::wstring device = handset::DevicePathOf(chosen);
    if (device.empty() || device.size() >= request->nMaxFile) return FALSE;
    std::wmemcpy(request->lpstrFile, device.c_str(), device.size() + 1);
    const auto shift = static_cast<WORD>(chosen.size() - device.size());
    request->nFileOffset = static_cast<WORD>(host.nFileOffset - shift);
    request->nFileExtension = static_cast<WORD>(host.nFileExtension != 0 ? host.nFileExtension - shift : 0);
    request->nFilterIndex = host.nFilterIndex;
    request->Flags = host.Flags;
    return TRUE;
}

}  // namespace

COREDLL_EXPORT BOOL WINAPI DeviceGetOpenFileNameW(OPENFILENAMEW* request) try {
    const CCallGuard guard(CallKind::CallsBack);
    return Choose(request, GetOpenFileNameW);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

COREDLL_EXPORT BOOL WINAPI DeviceGetSaveFileNameW(OPENFILENAMEW* request) try {
    const CCallGuard guard(CallKind::CallsBack);
    return Choose(request, GetSaveFileNameW);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}
