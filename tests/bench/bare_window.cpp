// The peer of the radio's start, memory and rest: a window of the radio's size with an empty list view on it.
#include <windows.h>

#include <commctrl.h>

namespace {

LRESULT CALLBACK Proc(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_DESTROY) PostQuitMessage(0);
    return DefWindowProcW(window, message, wParam, lParam);
}

}  // namespace

int WINAPI WinMain(HINSTANCE instance, HINSTANCE, LPSTR, int) {
    INITCOMMONCONTROLSEX controls = {sizeof controls, ICC_LISTVIEW_CLASSES};
    InitCommonControlsEx(&controls);
    WNDCLASSW windowClass = {};
    windowClass.lpfnWndProc = Proc;
    windowClass.hInstance = instance;
    windowClass.hbrBackground = static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH));
    windowClass.lpszClassName = L"KoraBareWindow";
    RegisterClassW(&windowClass);
    const HWND window = CreateWindowExW(0, L"KoraBareWindow", L"bare", WS_POPUP | WS_VISIBLE, 0, 0, 240, 320,
                                        nullptr, nullptr, instance, nullptr);
    CreateWindowExW(0, WC_LISTVIEWW, L"", WS_CHILD | WS_VISIBLE | LVS_REPORT | LVS_NOCOLUMNHEADER, 0, 105,
                    240, 105, window, nullptr, instance, nullptr);
    UpdateWindow(window);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    return 0;
}
