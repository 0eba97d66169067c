// The desktop of the handset.
#include "handset/panel/handset_desktop.h"

#include <windows.h>

namespace panel {
namespace {

constexpr wchar_t kDesktopName[] = L"Kora";

}  // namespace

void JoinHandsetDesktop() {
    // Stays open: it is the thread's for as long as it runs.
    const HDESK desktop = OpenDesktopW(kDesktopName, 0, FALSE, GENERIC_READ | GENERIC_WRITE);
    if (desktop != nullptr && !SetThreadDesktop(desktop)) CloseDesktop(desktop);
}

std::wstring CurrentDesktop() {
    wchar_t name[256] = {};
    GetUserObjectInformationW(GetThreadDesktop(GetCurrentThreadId()), UOI_NAME, name, sizeof name, nullptr);
    return name;
}

}  // namespace panel
