// Opening the menu of a soft key.
#include "handset/aygshell/soft_key_menu.h"

namespace handset {

void TrackSoftKeyMenu(HMENU popup, HWND owner, HWND bar, BarSide side) {
    TPMPARAMS keepFree = {};
    keepFree.cbSize = sizeof keepFree;
    GetWindowRect(bar, &keepFree.rcExclude);
    const bool left = side == BarSide::Left;
    const UINT flags = TPM_BOTTOMALIGN | TPM_VERTICAL | (left ? TPM_LEFTALIGN : TPM_RIGHTALIGN);
    TrackPopupMenuEx(popup, flags, left ? keepFree.rcExclude.left : keepFree.rcExclude.right,
                     keepFree.rcExclude.top, owner, &keepFree);
}

}  // namespace handset
