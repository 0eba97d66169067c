// A start while another radio of the handset runs already.
#include "shell/instance.h"

#include "shell/ui.h"
#include "tests/unit/shell/shell_test.h"

static std::vector<HWND> g_broughtForward;

extern "C" {
// The linker sends the program's calls of SetForegroundWindow here.
using ForegroundCall = decltype(SetForegroundWindow);
extern ForegroundCall* g_realForeground __asm__("__real___imp_SetForegroundWindow");
static BOOL WINAPI NotedForeground(HWND window) {
    g_broughtForward.push_back(window);
    return g_realForeground(window);
}
ForegroundCall* g_notedForeground __asm__("__wrap___imp_SetForegroundWindow") = NotedForeground;
}

namespace {

class Instance : public test::ShellTest {
  protected:
    Instance() {
        WNDCLASSW windowClass = {};
        windowClass.lpfnWndProc = DefWindowProcW;
        windowClass.hInstance = g_app.hInstance;
        windowClass.lpszClassName = kMainWindowClass;
        RegisterClassW(&windowClass);
        // The test program has no texts: the title is the empty one.
        running = CreateWindowExW(0, kMainWindowClass, L"", WS_POPUP | WS_VISIBLE, 0, 0, 50, 50, nullptr,
                                  nullptr, g_app.hInstance, nullptr);
        g_broughtForward.clear();
    }
    ~Instance() override {
        DestroyWindow(running);
        UnregisterClassW(kMainWindowClass, g_app.hInstance);
    }
    HWND running;
};

TEST_F(Instance, ASecondOneAsksForTheFirstWithTheWindowsThatItOwns) {
    EXPECT_EQ(test::TraceOf([] { EXPECT_FALSE(InitInstance(g_app.hInstance, SW_SHOW)); }),
              "FM is exist.szWindowClass : Kora");
    const auto withOwned = reinterpret_cast<HWND>(reinterpret_cast<UINT_PTR>(running) | 1);
    EXPECT_THAT(g_broughtForward, testing::ElementsAre(withOwned));
}

}  // namespace
