// A window without a client area. It has no pixels that could tell what was painted, so what counts is
// whether a device context of it was asked for: nothing is painted without one.
#include <atomic>

#include "skin/skin_paint.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

std::atomic<int> g_deviceContexts{0};

HDC WINAPI CountedGetDC(HWND window) {
    using GetDCCall = HDC(WINAPI*)(HWND);
    static const auto platformCall = reinterpret_cast<GetDCCall>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"COREDLL.dll"), "GetDC")));
    ++g_deviceContexts;
    return platformCall(window);
}

}  // namespace

// Stands where the import of GetDC would: every call of this program goes through it.
extern "C" HDC(WINAPI* const g_importedGetDC)(HWND) __asm__("__imp_GetDC");
HDC(WINAPI* const g_importedGetDC)(HWND) = CountedGetDC;

namespace {

class EmptyClient : public SkinOnScreen {
  protected:
    // Moves the skin to a child of that size.
    void UseChild(int cx, int cy) {
        if (m_screenWindow == nullptr) {
            m_screenWindow = m_skin.hWnd;
        } else {
            DestroyWindow(m_skin.hWnd);
        }
        m_skin.hWnd = CreateWindowExW(0, L"STATIC", L"", WS_CHILD | WS_VISIBLE, 0, 0, cx, cy, m_screenWindow,
                                      nullptr, GetModuleHandleW(nullptr), nullptr);
        ASSERT_NE(m_skin.hWnd, nullptr);
        RECT client = {};
        ASSERT_TRUE(GetClientRect(m_skin.hWnd, &client));
        ASSERT_EQ(client.right, cx);
        ASSERT_EQ(client.bottom, cy);
    }

    // How many device contexts all text fields and the signal indicator ask for.
    int PaintTextsAndSignal() {
        const int before = g_deviceContexts;
        for (const TextLayout& field : kTextLayout) DrawSkinText(m_skin, field.id, L"Ab 1");
        DrawSignal(m_skin, 70);
        return g_deviceContexts - before;
    }

    void TearDown() override {
        if (m_screenWindow == nullptr) return;
        DestroyWindow(m_skin.hWnd);
        m_skin.hWnd = m_screenWindow;
    }

    HWND m_screenWindow = nullptr;
};

TEST_P(EmptyClient, AMinimisedOrZeroSizedClientAreaPaintsNoTextFieldAndNoSignalIndicator) {
    for (const SIZE size : {SIZE{0, 0}, SIZE{0, 100}, SIZE{100, 0}}) {
        SCOPED_TRACE(::testing::Message() << size.cx << " by " << size.cy);
        UseChild(size.cx, size.cy);
        EXPECT_EQ(PaintTextsAndSignal(), 0);
    }
}

TEST_P(EmptyClient, ASmallClientAreaIsPainted) {
    UseChild(1, 1);
    EXPECT_EQ(PaintTextsAndSignal(), 14) << "13 text fields and the signal";
}

TEST_P(EmptyClient, AWindowThatIsGoneIsNotPainted) {
    const HWND window = m_skin.hWnd;
    m_skin.hWnd = nullptr;
    EXPECT_EQ(PaintTextsAndSignal(), 0);
    m_skin.hWnd = window;
}

INSTANTIATE_TEST_SUITE_P(Screens, EmptyClient, ::testing::Values(kPortrait, kLandscape), NameOfScreen);

}  // namespace
