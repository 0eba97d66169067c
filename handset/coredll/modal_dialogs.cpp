// Modal dialogs: the host's own.
#include "handset/coredll/call_guard.h"
#include "handset/coredll/modal_owner.h"
#include "handset/coredll/uncovering.h"

COREDLL_EXPORT INT_PTR WINAPI DeviceDialogBoxIndirectParamW(HINSTANCE module, const DLGTEMPLATE* layout,
                                                            HWND owner, DLGPROC procedure, LPARAM parameter) {
    const coredll::CallGuard guard(coredll::CallKind::CallsBack);
    const coredll::ModalOwner kept(owner);
    coredll::WatchUncovering();
    return DialogBoxIndirectParamW(module, layout, owner, procedure, parameter);
}
