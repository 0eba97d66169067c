#include "handset/aygshell/picker_time.h"

#include <commctrl.h>

#include "handset/base/window_class.h"
#include "handset/coredll/kernel/platform_call.h"

namespace handset {

void SetPickersToHandsetTime(HWND dialog) {
    SYSTEMTIME now = {};
    HandsetLocalTime(&now);
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        if (HasClass(control, DATETIMEPICK_CLASSW)) {
            SendMessageW(control, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&now));
        }
    }
}

}  // namespace handset
