#include "shell/marked_row.h"

#include <commctrl.h>

POINT MarkedRowOnScreen(HWND list) {
    RECT client = {};
    GetClientRect(list, &client);
    const auto row = static_cast<int>(SendMessageW(list, LVM_GETSELECTIONMARK, 0, 0));
    RECT place = {};
    place.left = LVIR_BOUNDS;
    const bool known = row >= 0 && SendMessageW(list, LVM_GETITEMRECT, static_cast<WPARAM>(row),
                                                reinterpret_cast<LPARAM>(&place)) != FALSE;
    RECT shown = client;
    if (!known || !IntersectRect(&shown, &client, &place)) shown = client;
    POINT middle = {(shown.left + shown.right) / 2, (shown.top + shown.bottom) / 2};
    ClientToScreen(list, &middle);
    return middle;
}
