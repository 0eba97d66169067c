#include "handset/coredll/windows/box_title.h"

#include <iterator>

#include "handset/base/module_edge.h"
#include "handset/base/owned.h"
#include "handset/coredll/windows/large_font.h"

namespace coredll {
namespace {

constexpr wchar_t kTitleClass[] = L"KoraHandset.BoxTitle";
// Beside the words, and above and below them, at the usual size.
constexpr int kBeside_px = 4, kAround_px = 2;

handset::OwnedFont TitleFont(int scale) {
    return LargeFont(HostFont(&NONCLIENTMETRICSW::lfCaptionFont), scale);
}

int ScaleOf(HWND title) {
    return static_cast<int>(GetWindowLongPtrW(title, GWLP_USERDATA));
}

void Paint(HWND title, HDC dc) {
    RECT place = {};
    wchar_t words[256] = L"";
    GetClientRect(title, &place);
    GetWindowTextW(title, words, static_cast<int>(std::size(words)));
    const int scale = ScaleOf(title);
    const handset::OwnedFont font = TitleFont(scale);
    const handset::CSelectedObject selected(dc, font.get());
    FillRect(dc, &place, GetSysColorBrush(COLOR_ACTIVECAPTION));
    SetTextColor(dc, GetSysColor(COLOR_CAPTIONTEXT));
    SetBkMode(dc, TRANSPARENT);
    InflateRect(&place, -kBeside_px * scale, 0);
    DrawTextW(dc, words, -1, &place, DT_SINGLELINE | DT_VCENTER | DT_END_ELLIPSIS | DT_NOPREFIX);
}

LRESULT CALLBACK TitleProc(HWND title, UINT message, WPARAM wParam, LPARAM lParam) try {
    if (message == WM_PAINT) {
        PAINTSTRUCT paint = {};
        Paint(title, BeginPaint(title, &paint));
        EndPaint(title, &paint);
        return 0;
    }
    return DefWindowProcW(title, message, wParam, lParam);
} catch (...) {
    return handset::EdgeAnswer<LRESULT>();
}

int RowsOf(int scale) {
    const handset::OwnedMemoryDC dc(CreateCompatibleDC(nullptr));
    const handset::OwnedFont font = TitleFont(scale);
    const handset::CSelectedObject selected(dc.get(), font.get());
    TEXTMETRICW metrics = {};
    GetTextMetricsW(dc.get(), &metrics);
    return metrics.tmHeight + 2 * kAround_px * scale;
}

}  // namespace

int GiveLargeTitle(HWND box, int scale) {
    const LONG_PTR style = GetWindowLongPtrW(box, GWL_STYLE);
    if ((style & WS_CAPTION) != WS_CAPTION) return 0;
    SetWindowLongPtrW(box, GWL_STYLE, (style & ~static_cast<LONG_PTR>(WS_CAPTION)) | WS_DLGFRAME);
    SetWindowPos(box, nullptr, 0, 0, 0, 0,
                 SWP_NOMOVE | SWP_NOSIZE | SWP_NOZORDER | SWP_NOACTIVATE | SWP_FRAMECHANGED);
    WNDCLASSW described = {};
    described.lpfnWndProc = TitleProc;
    described.hInstance = GetModuleHandleW(L"COREDLL.dll");
    described.lpszClassName = kTitleClass;
    RegisterClassW(&described);
    wchar_t words[256] = L"";
    GetWindowTextW(box, words, static_cast<int>(std::size(words)));
    const HWND title = CreateWindowExW(0, kTitleClass, words, WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, box, nullptr,
                                       described.hInstance, nullptr);
    SetWindowLongPtrW(title, GWLP_USERDATA, scale);
    return RowsOf(scale);
}

void FitLargeTitle(HWND box) {
    const HWND title = FindWindowExW(box, nullptr, kTitleClass, nullptr);
    if (title == nullptr) return;
    RECT client = {};
    GetClientRect(box, &client);
    SetWindowPos(title, nullptr, 0, 0, client.right, RowsOf(ScaleOf(title)), SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace coredll
