#include "tuner/digit_entry.h"

#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "skin/skin_paint.h"
#include "tuner/frequency_display.h"

namespace {

constexpr UINT kDigitTimerPeriod_ms = 2000;

void ShowEcho(CMainState& state, HWND window, const DigitStep& step) {
    if (step.echo == DigitEcho::kOutOfBand) {
        RefreshFrequencyDisplay(state);
        return;
    }
    const bool whole = step.bComplete;
    if (whole) KillTimer(window, TIMER_DIGIT_ENTRY);
    DrawSkinText(state.m_skin, TEXT_FREQUENCY, DigitLabel(g_app.digitEntry, step.echo).sz);
    if (step.echo == DigitEcho::kFirst || step.echo == DigitEcho::kSecond) {
        DrawSkinText(state.m_skin, TEXT_CHANNEL_NAME, L"");
    }
}

void Commit(CMainState& state, HWND window, const DigitStep& step) {
    NKDbgPrintfW(L"Frequency:%3d\n ", step.uChannel);
    if (!step.bTune) return;
    KillTimer(window, TIMER_DIGIT_ENTRY);
    NKDbgPrintfW(L"uChannelFrequency:%3d\n ", step.uChannel);
    if (g_app.pFMDevice != nullptr) g_app.pFMDevice->SetChannel(step.uChannel);
    RefreshFrequencyDisplay(state);
}

}  // namespace

void OnDigitKey(CMainState& state, HWND window, WPARAM virtualKey) {
    if (virtualKey < '0' || virtualKey > '9') return;
    state.m_bDigitSinceTick = TRUE;
    const DigitStep step = TakeDigit(g_app.digitEntry, static_cast<std::uint32_t>(virtualKey - '0'));
    if (!step.bTaken) return;
    NKDbgPrintfW(L"FM: %d:%d--", step.uPosition, step.uDigit);
    // Also behind an entry that was abandoned, whose timer is gone and whose place this digit has taken.
    SetTimer(window, TIMER_DIGIT_ENTRY, kDigitTimerPeriod_ms, DigitEntryTimerProc);
    ShowEcho(state, window, step);
    if (step.bComplete) Commit(state, window, step);
}

void CALLBACK DigitEntryTimerProc(HWND window, UINT, UINT_PTR idEvent, DWORD) {
    CMainState* state = MainStateOf(window);
    if (state == nullptr) return;
    // Kept: the count of digits taken stays, so a digit typed after an abandoned entry goes on at its place.
    if (!state->m_bDigitSinceTick) {
        RefreshFrequencyDisplay(*state);
        KillTimer(window, idEvent);
    }
    state->m_bDigitSinceTick = FALSE;
}
