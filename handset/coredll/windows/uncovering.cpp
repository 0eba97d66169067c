#include "handset/coredll/windows/uncovering.h"

#include <windows.h>

#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/base/window_class.h"

namespace coredll {
namespace {

thread_local HHOOK t_hook = nullptr;

// A dialog that ends is hidden before it goes.
bool HasCovered(HWND window) {
    const bool child = (GetWindowLongW(window, GWL_STYLE) & WS_CHILD) != 0;
    return !child && (IsWindowVisible(window) || handset::HasClass(window, L"#32770"));
}

// What is left of a window that goes, while the windows behind it are looked at from the front to the back.
class CBareArea {
  public:
    explicit CBareArea(HWND gone) : gone_(gone) {
        RECT place{};
        GetWindowRect(gone, &place);
        area_.reset(CreateRectRgnIndirect(&place));
    }

    // False when nothing is left.
    bool Paint(HWND window) const {
        RECT place;
        DWORD process = 0;
        GetWindowThreadProcessId(window, &process);
        // Device differs: another program's windows keep what they show, and cover nothing of this one's.
        if (window == gone_ || process != GetCurrentProcessId()) return true;
        if (!IsWindowVisible(window) || !GetWindowRect(window, &place)) return true;
        SetRectRgn(part_.get(), place.left, place.top, place.right, place.bottom);
        const int common = CombineRgn(part_.get(), area_.get(), part_.get(), RGN_AND);
        if (common == NULLREGION || common == ERROR) return true;
        const int left = CombineRgn(area_.get(), area_.get(), part_.get(), RGN_DIFF);
        POINT origin = {0, 0};
        ClientToScreen(window, &origin);
        OffsetRgn(part_.get(), -origin.x, -origin.y);
        RedrawWindow(window, nullptr, part_.get(), RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
        return left != NULLREGION;
    }

  private:
    HWND gone_;
    handset::OwnedRegion area_;  // on the screen
    handset::OwnedRegion part_{CreateRectRgn(0, 0, 0, 0)};
};

BOOL CALLBACK PaintBehind(HWND window, LPARAM area) try {
    return reinterpret_cast<const CBareArea*>(area)->Paint(window);
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

LRESULT CALLBACK BeforeItGoes(int code, WPARAM window, LPARAM data) try {
    const auto gone = reinterpret_cast<HWND>(window);
    if (code == HCBT_DESTROYWND && HasCovered(gone)) {
        const CBareArea area(gone);
        EnumWindows(PaintBehind, reinterpret_cast<LPARAM>(&area));
    }
    return CallNextHookEx(t_hook, code, window, data);
} catch (...) {
    return handset::EdgeAnswer<LRESULT>();
}

}  // namespace

void WatchUncovering() {
    if (t_hook == nullptr) t_hook = SetWindowsHookExW(WH_CBT, BeforeItGoes, nullptr, GetCurrentThreadId());
}

}  // namespace coredll
