#include "handset/aygshell/picker_time.h"

#include <commctrl.h>

#include <cwchar>
#include <iterator>

#include "handset/coredll/kernel/platform_call.h"

namespace handset {
namespace {

bool IsPicker(HWND control) {
    wchar_t name[32] = L"";
    GetClassNameW(control, name, static_cast<int>(std::size(name)));
    return _wcsicmp(name, DATETIMEPICK_CLASSW) == 0;
}

}  // namespace

void SetPickersToHandsetTime(HWND dialog) {
    SYSTEMTIME now = {};
    HandsetLocalTime(&now);
    for (HWND control = GetWindow(dialog, GW_CHILD); control != nullptr;
         control = GetWindow(control, GW_HWNDNEXT)) {
        if (IsPicker(control)) {
            SendMessageW(control, DTM_SETSYSTEMTIME, GDT_VALID, reinterpret_cast<LPARAM>(&now));
        }
    }
}

}  // namespace handset
