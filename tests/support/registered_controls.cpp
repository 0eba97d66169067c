#include "tests/support/registered_controls.h"

#include <commctrl.h>

namespace test {
std::vector<DWORD> g_registeredControls;
std::function<void(DWORD)> g_onRegisterControls;
}  // namespace test

extern "C" {
extern BOOL(WINAPI* g_realInitCommonControls)(const INITCOMMONCONTROLSEX*) __asm__(
    "__real___imp_InitCommonControlsEx");
static BOOL WINAPI NotedInitCommonControls(const INITCOMMONCONTROLSEX* classes) {
    test::g_registeredControls.push_back(classes->dwICC);
    if (test::g_onRegisterControls) test::g_onRegisterControls(classes->dwICC);
    return g_realInitCommonControls(classes);
}
BOOL(WINAPI* g_notedInitCommonControls)
(const INITCOMMONCONTROLSEX*)__asm__("__wrap___imp_InitCommonControlsEx") = NotedInitCommonControls;
}
