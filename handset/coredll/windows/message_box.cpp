// Message boxes: the host's own, laid out anew so that they stand in the middle of the handset's display,
// below the shell's bar.
#include <algorithm>
#include <vector>

#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/base/window_class.h"
#include "handset/coredll/kernel/call_guard.h"
#include "handset/coredll/kernel/platform_call.h"
#include "handset/coredll/windows/box_title.h"
#include "handset/coredll/windows/dark_display.h"
#include "handset/coredll/windows/dialog_keys.h"
#include "handset/coredll/windows/dialog_scale.h"
#include "handset/coredll/windows/large_font.h"
#include "handset/coredll/windows/modal_owner.h"
#include "handset/coredll/windows/uncovering.h"

namespace {

using coredll::CallKind;
using coredll::CCallGuard;
using handset::HasClass;

constexpr wchar_t kDialogClass[] = L"#32770";
constexpr int kMargin_px = 4;
constexpr UINT_PTR kFrontTimer = 0x4B46;
constexpr UINT kFrontLook_ms = 50;

thread_local HHOOK t_hook = nullptr;

struct Parts {
    HWND text = nullptr;
    HWND icon = nullptr;
    std::vector<HWND> buttons;
};

BOOL CALLBACK Collect(HWND child, LPARAM data) try {
    auto* parts = reinterpret_cast<Parts*>(data);
    const LONG style = GetWindowLongW(child, GWL_STYLE);
    if (HasClass(child, L"Button")) {
        if ((style & WS_VISIBLE) != 0) parts->buttons.push_back(child);
    } else if (HasClass(child, L"Static")) {
        const bool picture = (style & SS_TYPEMASK) == SS_ICON;
        // One host keeps an empty place in a box without a picture.
        if (!picture || SendMessageW(child, STM_GETICON, 0, 0) != 0)
            (picture ? parts->icon : parts->text) = child;
    }
    return TRUE;
} catch (...) {
    return handset::EdgeAnswer(FALSE);
}

SIZE SizeOf(HWND window) {
    RECT rect{};
    if (window != nullptr) GetWindowRect(window, &rect);
    return {rect.right - rect.left, rect.bottom - rect.top};
}

int HeightOfText(HWND text, int width) {
    wchar_t words[2048];
    GetWindowTextW(text, words, std::size(words));
    const handset::CWindowDC dc(text);
    const auto font = reinterpret_cast<HGDIOBJ>(SendMessageW(text, WM_GETFONT, 0, 0));
    const HGDIOBJ previous = font != nullptr ? SelectObject(dc.get(), font) : nullptr;
    RECT rect{0, 0, width, 0};
    DrawTextW(dc.get(), words, -1, &rect,
              DT_CALCRECT | DT_WORDBREAK | DT_EXPANDTABS | DT_NOPREFIX | DT_EDITCONTROL);
    if (previous != nullptr) SelectObject(dc.get(), previous);
    return rect.bottom;
}

// Buttons side by side from the middle; narrower where the row would not fit. Gives the row's lower edge.
int PlaceButtons(const std::vector<HWND>& buttons, int width, int y) {
    if (buttons.empty()) return y;
    const auto count = static_cast<int>(buttons.size());
    const SIZE size = SizeOf(buttons.front());
    const int each = std::min<int>(size.cx, (width - kMargin_px * (count + 1)) / count);
    int x = (width - each * count - kMargin_px * (count - 1)) / 2;
    for (const HWND button : buttons) {
        SetWindowPos(button, nullptr, x, y, each, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
        x += each + kMargin_px;
    }
    return y + size.cy;
}

Parts PartsOf(HWND box) {
    Parts parts;
    EnumChildWindows(box, Collect, reinterpret_cast<LPARAM>(&parts));
    return parts;
}

// Of all boxes, and for the whole run.
HFONT BoxFont(HWND control, int scale) {
    static const HFONT font = [&] {
        LOGFONTW described = {};
        const auto hosts = reinterpret_cast<HGDIOBJ>(SendMessageW(control, WM_GETFONT, 0, 0));
        GetObjectW(hosts != nullptr ? hosts : GetStockObject(DEFAULT_GUI_FONT), sizeof described, &described);
        return coredll::LargeFont(described, scale).release();
    }();
    return font;
}

// On a display of twice the pixels: text and buttons twice as large. Gives the width in which nothing is
// broken that was not broken before.
int Enlarge(HWND box, int scale) {
    const Parts parts = PartsOf(box);
    const auto large = [&](HWND control) {
        SendMessageW(control, WM_SETFONT, reinterpret_cast<WPARAM>(BoxFont(control, scale)), FALSE);
        const SIZE size = SizeOf(control);
        SetWindowPos(control, nullptr, 0, 0, size.cx * scale, size.cy * scale,
                     SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
    };
    for (const HWND button : parts.buttons) large(button);
    if (parts.text != nullptr) large(parts.text);
    return SizeOf(box).cx * scale;
}

// A box of that width, its first `titleRows` left free and the text broken into as many lines as it takes.
// Gives the new size.
SIZE LayOut(HWND box, int boxWidth, int titleRows) {
    const Parts parts = PartsOf(box);
    RECT client;
    GetClientRect(box, &client);
    const SIZE outer = SizeOf(box);
    const int width = boxWidth - (outer.cx - client.right);
    const SIZE icon = SizeOf(parts.icon);
    const int textLeft = kMargin_px + (icon.cx != 0 ? icon.cx + kMargin_px : 0);
    const int textWidth = width - textLeft - kMargin_px;
    const int top = titleRows + kMargin_px;
    const int textHeight = parts.text != nullptr ? HeightOfText(parts.text, textWidth) : 0;
    if (parts.icon != nullptr) {
        SetWindowPos(parts.icon, nullptr, kMargin_px, top, 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    }
    if (parts.text != nullptr) {
        const LONG_PTR style = GetWindowLongPtrW(parts.text, GWL_STYLE);
        SetWindowLongPtrW(parts.text, GWL_STYLE, style | SS_EDITCONTROL);
        SetWindowPos(parts.text, nullptr, textLeft, top, textWidth, textHeight, SWP_NOZORDER);
    }
    const int row = top + kMargin_px * 2 + std::max<int>(textHeight, icon.cy);
    const int foot = PlaceButtons(parts.buttons, width, row) + kMargin_px * 2;
    return {boxWidth, foot + (outer.cy - client.bottom)};
}

void PlaceOnDisplay(HWND box) {
    RECT display;
    HandsetWorkArea(&display);
    const LONG width = display.right - display.left;
    const LONG height = display.bottom - display.top;
    // The device's boxes are left by their buttons alone.
    SetWindowLongPtrW(box, GWL_STYLE, GetWindowLongPtrW(box, GWL_STYLE) & ~static_cast<LONG_PTR>(WS_SYSMENU));
    SIZE size = SizeOf(box);
    const int scale = coredll::DisplayScale();
    const LONG wanted = scale > 1 ? Enlarge(box, scale) : size.cx;
    const int titleRows = scale > 1 ? coredll::GiveLargeTitle(box, scale) : 0;
    if (scale > 1 || wanted > width) size = LayOut(box, std::min(wanted, width), titleRows);
    size.cy = std::min(size.cy, height);
    SetWindowPos(box, nullptr, display.left + (width - size.cx) / 2, display.top + (height - size.cy) / 2,
                 size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    coredll::FitLargeTitle(box);
}

// A box that its program shows before any window comes to the front. Wine does not tell it, and its title
// would stay that of a window behind.
void CALLBACK TellWhenInFront(HWND box, UINT /*message*/, UINT_PTR timer, DWORD /*time_ms*/) try {
    if (GetForegroundWindow() != box) return;
    KillTimer(box, timer);
    SendMessageW(box, WM_NCACTIVATE, TRUE, 0);
} catch (...) {
    handset::EdgeAnswer<void>();
}

// The first dialog that this thread initialises is the box; by then the host has laid it out, and nobody has
// seen it yet.
LRESULT CALLBACK AfterMessage(int code, WPARAM fromThread, LPARAM data) try {
    const HHOOK hook = t_hook;
    const auto* message = reinterpret_cast<const CWPRETSTRUCT*>(data);
    if (code == HC_ACTION && hook != nullptr && message->message == WM_INITDIALOG &&
        HasClass(message->hwnd, kDialogClass)) {
        t_hook = nullptr;
        UnhookWindowsHookEx(hook);
        PlaceOnDisplay(message->hwnd);
        coredll::HideWhileDark(message->hwnd);
        if (GetWindow(message->hwnd, GW_OWNER) == nullptr)
            SetTimer(message->hwnd, kFrontTimer, kFrontLook_ms, TellWhenInFront);
        return 0;
    }
    return CallNextHookEx(hook, code, fromThread, data);
} catch (...) {
    return handset::EdgeAnswer<LRESULT>();
}

}  // namespace

COREDLL_EXPORT int WINAPI DeviceMessageBoxW(HWND owner, const wchar_t* text, const wchar_t* caption,
                                            UINT type) try {
    const CCallGuard guard(CallKind::CallsBack);
    const coredll::CModalOwner kept(owner);
    const coredll::CDialogKeys keys;
    coredll::WatchUncovering();
    t_hook = SetWindowsHookExW(WH_CALLWNDPROCRET, AfterMessage, nullptr, GetCurrentThreadId());
    const int answer = MessageBoxW(owner, text, caption, type);
    if (t_hook != nullptr) {
        UnhookWindowsHookEx(t_hook);
        t_hook = nullptr;
    }
    return answer;
} catch (...) {
    return handset::EdgeAnswer<int>();
}
