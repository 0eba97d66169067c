// Painting the main screen, whole and one element, against a plain copy of the same pixels. A program of its
// own, because it is built as the application is: against the device's calls. It prints one row a line, the
// columns parted by tabs.
#include <windows.h>

#include <cstdio>
#include <functional>

#include "resources/resource_ids.h"
#include "shell/owned.h"
#include "skin/skin_load.h"
#include "skin/skin_paint.h"
#include "skin/skin_window.h"
#include "tests/bench/table.h"

namespace {

constexpr int kRounds = 400;

CSkin g_skin;
HBITMAP g_picture = nullptr;
bool g_paintsSkin = true;

double Now_us() {
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return 1e6 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

void CopyPicture(HWND window, int x, int y, int width, int height) {
    const HDC dc = GetDC(window);
    const HDC memory = CreateCompatibleDC(dc);
    const HGDIOBJ previous = SelectObject(memory, g_picture);
    BitBlt(dc, x, y, width, height, memory, x, y, SRCCOPY);
    SelectObject(memory, previous);
    DeleteDC(memory);
    ReleaseDC(window, dc);
}

LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_PAINT) return DefWindowProcW(window, message, wParam, lParam);
    if (g_paintsSkin) return SkinWindowProc(g_skin, window, message, wParam, lParam);
    PAINTSTRUCT paint;
    const HDC dc = BeginPaint(window, &paint);
    const HDC memory = CreateCompatibleDC(dc);
    const HGDIOBJ previous = SelectObject(memory, g_picture);
    BitBlt(dc, 0, 0, 240, 320, memory, 0, 0, SRCCOPY);
    SelectObject(memory, previous);
    DeleteDC(memory);
    EndPaint(window, &paint);
    return 0;
}

HWND CreateScreen() {
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = Proc;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = L"KoraBenchScreen";
    RegisterClassW(&windowClass);
    const HWND window = CreateWindowExW(0, L"KoraBenchScreen", L"", WS_POPUP | WS_VISIBLE, 0, 0, 240, 320,
                                        nullptr, nullptr, windowClass.hInstance, nullptr);
    static_cast<SkinTables&>(g_skin) = MainScreenTables();
    g_skin.hInstance = windowClass.hInstance;
    g_skin.hWnd = window;
    LoadSkinBitmaps(g_skin);
    g_picture = g_skin.pBitmaps[0].hPortrait;
    return window;
}

double Each(const std::function<void()>& paint) {
    std::vector<double> times;
    const WindowDC screen(g_skin.hWnd);
    for (int round = 0; round < kRounds; ++round) {
        const double start = Now_us();
        paint();
        // Drawing is gathered in batches; reading a pixel back ends the batch.
        GetPixel(screen.get(), 0, 0);
        times.push_back(Now_us() - start);
    }
    return bench::Median(times);
}

double Full(HWND window, bool skin) {
    g_paintsSkin = skin;
    return Each([window] { RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW); });
}

void PrintRow(const char* what, double ours, double copy) {
    std::fprintf(stdout, "%s\t%f\tBitBlt of the same pixels\t%f\n", what, ours, copy);
}

}  // namespace

int main() {
    const HWND window = CreateScreen();
    const double fullCopy = Full(window, false);
    PrintRow("repaint, whole screen", Full(window, true), fullCopy);
    PrintRow("repaint, one label", Each([] { DrawSkinText(g_skin, TEXT_FREQUENCY, L"98.5 MHz"); }),
             Each([window] { CopyPicture(window, 123, 30, 117, 35); }));
    PrintRow("repaint, a label that is unchanged",
             Each([] { ShowSkinText(g_skin, TEXT_SERVICE_NAME, L"KORA ONE"); }),
             Each([window] { CopyPicture(window, 143, 52, 95, 18); }));
    PrintRow("repaint, one button",
             Each([window] { RepaintElements(g_skin, window, FALSE, SKIN_SEEK_UP, -1); }),
             Each([window] { CopyPicture(window, 120, 236, 37, 30); }));
    DestroyWindow(window);
    return 0;
}
