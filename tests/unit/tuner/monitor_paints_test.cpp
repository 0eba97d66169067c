// What a round of the monitor paints: the labels whose texts have changed, or that something was painted
// over.
#include "skin/skin_paint.h"
#include "tests/unit/tuner/monitor_test.h"

namespace {

using BitBltCall = BOOL(WINAPI*)(HDC, int, int, int, int, HDC, int, int, DWORD);

std::vector<SkinRect> g_copies;
HWND g_copiesTo = nullptr;

// Notes what is copied to the window itself; what a paint composes out of sight does not count.
BOOL WINAPI NotedBitBlt(HDC to, int x, int y, int cx, int cy, HDC from, int xFrom, int yFrom,
                        DWORD operation) {
    static const auto platformCall = reinterpret_cast<BitBltCall>(
        reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"COREDLL.dll"), "BitBlt")));
    if (g_copiesTo != nullptr && WindowFromDC(to) == g_copiesTo) g_copies.push_back({x, y, cx, cy});
    return platformCall(to, x, y, cx, cy, from, xFrom, yFrom, operation);
}

}  // namespace

// Stands where the import of BitBlt would: every call of this program goes through it.
extern "C" const BitBltCall g_importedBitBlt __asm__("__imp_BitBlt");
const BitBltCall g_importedBitBlt = NotedBitBlt;

namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr int kSignal = -1;
constexpr SkinRect kSignalPlace = {5, 10, 24, 11};

class MonitorPaints : public MonitorTest {
  protected:
    MonitorPaints() {
        settings.Set(kEnableMute, 1);
        settings.Set(kEnableRDSPSPTY, 1);
        device.ptyText = L"News";
        device.signal = g_app.lLastSignal = 60;
        UpdateWindow(window);
        g_copiesTo = window;
        PaintedByRound();
    }
    ~MonitorPaints() override { g_copiesTo = nullptr; }

    // The labels that a round paints when the station says this, and the signal's bars, in their order.
    std::vector<int> PaintedByRound(std::int32_t kind = kRdsServiceNameWithAF,
                                    const WCHAR* text = L"KORA ONE") {
        device.rdsData = {{kind, text}};
        g_copies.clear();
        Round();
        std::vector<int> fields;
        for (const SkinRect& copy : g_copies) fields.push_back(FieldAt(copy));
        return fields;
    }

  private:
    int FieldAt(const SkinRect& place) const {
        const CSkin& skin = state->m_skin;
        if (place.x == kSignalPlace.x && place.y == kSignalPlace.y) return kSignal;
        for (int row = 0; row < skin.nTexts; ++row) {
            const SkinRect& field = skin.pTexts[row].portrait;
            if (field.x == place.x && field.y == place.y) return skin.pTexts[row].nId;
        }
        return 0;
    }
};

TEST_F(MonitorPaints, ARoundInWhichNothingHasChangedPaintsNothing) {
    for (int round = 0; round < 3; ++round) EXPECT_THAT(PaintedByRound(), IsEmpty());
}

TEST_F(MonitorPaints, ATextThatHasChangedIsPaintedAlone) {
    device.stereo = !device.stereo;
    EXPECT_THAT(PaintedByRound(), ElementsAre(TEXT_STEREO));
    device.ptyText = L"Jazz music";
    EXPECT_THAT(PaintedByRound(), ElementsAre(TEXT_PROGRAM_TYPE));
    EXPECT_THAT(PaintedByRound(kRdsProgramText, L"Gardens"), ElementsAre(TEXT_PROGRAM_TEXT));
    EXPECT_THAT(PaintedByRound(kRdsProgramText, L"Gardens"), IsEmpty());
}

TEST_F(MonitorPaints, WhatLiesAboveAChangedTextIsPaintedAfterItAndWhatLiesUnderItIsNot) {
    EXPECT_THAT(PaintedByRound(kRdsServiceNameWithAF, L"KORA TWO"),
                ElementsAre(TEXT_SERVICE_NAME, TEXT_PROGRAM_TYPE));
    EXPECT_THAT(PaintedByRound(kRdsServiceNameWithAF, L"KORA TWO"), IsEmpty());
    // The upper edge of the radio text lies under four others; two of them came before it in this round.
    EXPECT_THAT(PaintedByRound(kRdsRadioText, L"Good morning"),
                ElementsAre(TEXT_RADIO_TEXT, TEXT_PROGRAM_TYPE));
    EXPECT_THAT(PaintedByRound(kRdsServiceNameWithAF, L"KORA TWO"),
                ElementsAre(TEXT_STEREO, TEXT_RDS, TEXT_AF));
    EXPECT_THAT(PaintedByRound(kRdsRadioText, L"Good morning"), IsEmpty());
}

TEST_F(MonitorPaints, ALabelIsPaintedAgainWhenTheFrequencyUnderItWas) {
    DrawSkinText(state->m_skin, TEXT_FREQUENCY, L"98.5 MHz");
    EXPECT_THAT(PaintedByRound(), ElementsAre(TEXT_SERVICE_NAME, TEXT_PROGRAM_TYPE));
    EXPECT_THAT(PaintedByRound(), IsEmpty());
}

TEST_F(MonitorPaints, ALabelThatSomebodyElseClearedIsPaintedAgain) {
    DrawSkinText(state->m_skin, TEXT_PROGRAM_TEXT, L"");
    EXPECT_THAT(PaintedByRound(kRdsProgramText, L""), ElementsAre(TEXT_PROGRAM_TEXT));
}

TEST_F(MonitorPaints, TheSignalAndEveryLabelArePaintedAgainAfterTheWindowWas) {
    InvalidateRect(window, nullptr, FALSE);
    UpdateWindow(window);
    EXPECT_THAT(PaintedByRound(),
                ElementsAre(kSignal, TEXT_STEREO, TEXT_RDS, TEXT_SERVICE_NAME, TEXT_AF, TEXT_PROGRAM_TYPE));
    EXPECT_THAT(PaintedByRound(), IsEmpty());
}

TEST_F(MonitorPaints, ASignalThatHasChangedIsPaintedAlone) {
    device.signal = 30;
    EXPECT_THAT(PaintedByRound(), ElementsAre(kSignal));
    EXPECT_THAT(PaintedByRound(), IsEmpty());
}

TEST_F(MonitorPaints, WithoutDataTheLabelsAreClearedOnce) {
    device.results["GetRDSData"] = E_FAIL;
    EXPECT_THAT(PaintedByRound(), ElementsAre(TEXT_RDS, TEXT_PROGRAM_TYPE, TEXT_PROGRAM_TEXT, TEXT_RADIO_TEXT,
                                              TEXT_SERVICE_NAME, TEXT_AF));
    // Those above the radio text that came before it.
    EXPECT_THAT(PaintedByRound(), ElementsAre(TEXT_STEREO, TEXT_RDS, TEXT_PROGRAM_TYPE));
    EXPECT_THAT(PaintedByRound(), IsEmpty());
}

}  // namespace
