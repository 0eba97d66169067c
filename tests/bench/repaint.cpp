// Painting the main screen, whole and one element, against the same drawing calls written out bare. A program
// of its own, because it is built as the application is: against the device's calls. It prints one row a
// line, the columns parted by tabs.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <vector>

#include "resources/resource_ids.h"
#include "shell/owned.h"
#include "skin/skin_load.h"
#include "skin/skin_paint.h"
#include "skin/skin_window.h"
#include "tests/bench/bare_painting.h"
#include "tests/bench/table.h"

namespace {

constexpr int kRounds = 400;

CSkin g_skin;
BarePictures g_pictures = {};
bool g_paintsSkin = true;

double Now_us() {
    LARGE_INTEGER count, frequency;
    QueryPerformanceCounter(&count);
    QueryPerformanceFrequency(&frequency);
    return 1e6 * static_cast<double>(count.QuadPart) / static_cast<double>(frequency.QuadPart);
}

LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message != WM_PAINT) return DefWindowProcW(window, message, wParam, lParam);
    if (g_paintsSkin) return SkinWindowProc(g_skin, window, message, wParam, lParam);
    PAINTSTRUCT paint;
    PaintBareScreen(BeginPaint(window, &paint), g_pictures);
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
    const auto portrait = [](int row) { return g_skin.pBitmaps[row].hPortrait; };
    g_pictures = {portrait(kBitmapBackground), portrait(kBitmapThumb), portrait(kBitmapOutput),
                  portrait(kBitmapRecord), portrait(kBitmapMute)};
    return window;
}

using Work = std::function<void()>;

double Took_us(const WindowDC& screen, const Work& paint) {
    const double start = Now_us();
    paint();
    // Drawing is gathered in batches; reading a pixel back ends the batch.
    GetPixel(screen.get(), 0, 0);
    return Now_us() - start;
}

// What the window shows after a paint over nothing: every third pixel.
std::vector<COLORREF> Shown(const WindowDC& screen, const Work& paint) {
    PatBlt(screen.get(), 0, 0, 240, 320, BLACKNESS);
    paint();
    std::vector<COLORREF> pixels;
    for (int place = 0; place < 240 * 320; place += 3)
        pixels.push_back(GetPixel(screen.get(), place % 240, place / 240));
    return pixels;
}

// A peer that draws something else is none.
void Check(const char* what, const Work& skin, const Work& bare) {
    const WindowDC screen(g_skin.hWnd);
    if (Shown(screen, skin) == Shown(screen, bare)) return;
    std::fprintf(stderr, "%s: the bare calls draw something else\n", what);
    std::exit(1);
}

// By turns, so that a machine with other work to do is the same for both.
void Measure(const char* what, const Work& skin, const Work& bare) {
    std::vector<double> ours, theirs;
    const WindowDC screen(g_skin.hWnd);
    for (int round = 0; round < kRounds; ++round) {
        ours.push_back(Took_us(screen, skin));
        theirs.push_back(Took_us(screen, bare));
    }
    std::fprintf(stdout, "%s\t%f\tthe same calls, bare\t%f\t1.2 x\n", what, bench::Median(ours),
                 bench::Median(theirs));
}

Work Full(HWND window, bool skin) {
    return [window, skin] {
        g_paintsSkin = skin;
        RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_UPDATENOW);
    };
}

}  // namespace

int main() {
    const HWND window = CreateScreen();
    const HBITMAP background = g_pictures.hBackground;
    const Work screen = Full(window, true), bareScreen = Full(window, false);
    const Work label = [] { DrawSkinText(g_skin, TEXT_FREQUENCY, L"98.5 MHz"); };
    const Work bareLabel = [=] { PaintBareFrequency(window, background, L"98.5 MHz"); };
    const Work button = [window] { RepaintElements(g_skin, window, FALSE, SKIN_SEEK_UP, -1); };
    const Work bareButton = [=] { PaintBareSeekUp(window, background); };
    Check("whole screen", screen, bareScreen);
    Check("one label", label, bareLabel);
    Check("one button", button, bareButton);
    Measure("repaint, whole screen", screen, bareScreen);
    Measure("repaint, one label", label, bareLabel);
    const Work unchanged = [] { ShowSkinText(g_skin, TEXT_SERVICE_NAME, L"KORA ONE"); };
    Measure("repaint, a label that is unchanged", unchanged, bareLabel);
    Measure("repaint, one button", button, bareButton);
    DestroyWindow(window);
    return 0;
}
