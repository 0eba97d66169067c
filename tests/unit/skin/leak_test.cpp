// Every paint frees what it made, counted by the handset.
#include "skin/skin_paint.h"
#include "skin/skin_window.h"
#include "tests/unit/skin/skin_on_screen.h"

namespace {

constexpr int kRounds = 5;

class Leaks : public SkinOnScreen {
  protected:
    // Live graphics objects that were made through COREDLL.
    using Count = DWORD(WINAPI*)();
    static Count Counter() {
        return reinterpret_cast<Count>(reinterpret_cast<void*>(
            GetProcAddress(GetModuleHandleW(L"COREDLL.dll"), "HandsetGdiObjectCount")));
    }

    void PaintEverything() {
        for (const TextLayout& field : kTextLayout) DrawSkinText(m_skin, field.id, L"Ab 1");
        for (int level = -1; level <= 11; ++level) DrawScanProgress(m_skin, level);
        for (int value = 0; value <= 70; value += 10) DrawSignal(m_skin, value);
        for (const DWORD look : {1u, 2u, 5u, 10u}) {
            for (const ButtonLayout& button : kButtonLayout) Button(button.id).dwLook = look;
            RepaintElements(m_skin, m_skin.hWnd, TRUE, 201, 210);
            Paint([this](HDC dc) { DrawButtons(m_skin, dc, TRUE, -1); });
        }
        InvalidateRect(m_skin.hWnd, nullptr, FALSE);
        UpdateWindow(m_skin.hWnd);
    }
};

TEST_P(Leaks, PaintingEverythingAgainAndAgainLeavesNoGraphicsObjectBehind) {
    const Count count = Counter();
    ASSERT_NE(count, nullptr) << "COREDLL does not count graphics objects";
    m_dispatching = true;
    PaintEverything();
    const DWORD before = count();
    for (int i = 0; i < kRounds; ++i) PaintEverything();
    EXPECT_EQ(count(), before);
}

TEST_P(Leaks, PaintingWhileTheBackgroundIsTakenLeavesNoGraphicsObjectBehind) {
    const Count count = Counter();
    ASSERT_NE(count, nullptr) << "COREDLL does not count graphics objects";
    const HBITMAP image = screen().portrait ? m_skin.pBitmaps[0].hPortrait : m_skin.pBitmaps[0].hLandscape;
    const OwnedMemoryDC other(CreateCompatibleDC(nullptr));
    const SelectObjectGuard taken(other.get(), image);
    const DWORD before = count();
    for (int i = 0; i < kRounds; ++i) PaintEverything();
    EXPECT_EQ(count(), before);
}

INSTANTIATE_TEST_SUITE_P(Screens, Leaks, ::testing::Values(kPortrait, kWideLandscape), NameOfScreen);

}  // namespace
