// Modal dialogs: the host's own.
#include "handset/base/module_edge.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/windows/modal_owner.h"
#include "handset/coredll/windows/uncovering.h"

COREDLL_EXPORT INT_PTR WINAPI DeviceDialogBoxIndirectParamW(HINSTANCE module, const DLGTEMPLATE* layout,
                                                            HWND owner, DLGPROC procedure,
                                                            LPARAM parameter) try {
    const coredll::CCallGuard guard(coredll::CallKind::CallsBack);
    const coredll::CModalOwner kept(owner);
    coredll::WatchUncovering();
    return DialogBoxIndirectParamW(module, layout, owner, procedure, parameter);
} catch (...) {
    return handset::EdgeAnswer<INT_PTR>(-1);
}
