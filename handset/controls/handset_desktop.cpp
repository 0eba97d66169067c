// The desktop of the handset.
#include "handset/controls/handset_desktop.h"

#include <windows.h>

#include <cstdint>

namespace panel {
namespace {

constexpr wchar_t kDesktopName[] = L"Kora";

}  // namespace

void JoinHandsetDesktop() {
    // Stays open: it is the thread's for as long as it runs.
    const HDESK desktop = OpenDesktopW(kDesktopName, 0, FALSE, GENERIC_READ | GENERIC_WRITE);
    if (desktop != nullptr && !SetThreadDesktop(desktop)) CloseDesktop(desktop);
}

bool GrowHandsetDesktop(int width, int height) {
    if (CurrentDesktop() != kDesktopName) return false;
    // The smallest of its sizes that has room; otherwise the largest one.
    DEVMODEW best = {};
    DEVMODEW mode = {};
    mode.dmSize = sizeof mode;
    const auto fits = [&](const DEVMODEW& m) {
        return static_cast<int>(m.dmPelsWidth) >= width && static_cast<int>(m.dmPelsHeight) >= height;
    };
    const auto area = [](const DEVMODEW& m) { return std::uint64_t{m.dmPelsWidth} * m.dmPelsHeight; };
    for (DWORD i = 0; EnumDisplaySettingsW(nullptr, i, &mode); ++i) {
        const std::uint64_t size = area(mode), bestSize = area(best);
        if (fits(best) ? fits(mode) && size < bestSize : fits(mode) || bestSize < size) best = mode;
    }
    best.dmFields = DM_PELSWIDTH | DM_PELSHEIGHT;
    return best.dmSize != 0 && ChangeDisplaySettingsW(&best, 0) == DISP_CHANGE_SUCCESSFUL;
}

std::wstring CurrentDesktop() {
    wchar_t name[256] = {};
    GetUserObjectInformationW(GetThreadDesktop(GetCurrentThreadId()), UOI_NAME, name, sizeof name, nullptr);
    return name;
}

}  // namespace panel
