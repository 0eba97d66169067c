// Modal dialogs: the host's own, worked with the phone's keys, and as large as the display has them.
#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/windows/dialog_keys.h"
#include "handset/coredll/windows/dialog_scale.h"
#include "handset/coredll/windows/modal_owner.h"
#include "handset/coredll/windows/uncovering.h"

COREDLL_EXPORT INT_PTR WINAPI DeviceDialogBoxIndirectParamW(HINSTANCE module, const DLGTEMPLATE* layout,
                                                            HWND owner, DLGPROC procedure,
                                                            LPARAM parameter) try {
    const coredll::CCallGuard guard(coredll::CallKind::CallsBack);
    const coredll::CModalOwner kept(owner);
    const coredll::CDialogKeys keys;
    coredll::WatchUncovering();
    const std::vector<BYTE> scaled =
        layout != nullptr ? coredll::ScaledTemplate(*layout, coredll::DisplayScale()) : std::vector<BYTE>();
    const auto* const shown = scaled.empty() ? layout : reinterpret_cast<const DLGTEMPLATE*>(scaled.data());
    return DialogBoxIndirectParamW(module, shown, owner, procedure, parameter);
} catch (...) {
    return handset::EdgeAnswer<INT_PTR>(-1);
}
