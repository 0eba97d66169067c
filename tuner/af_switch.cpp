#include "tuner/af_switch.h"

#include <algorithm>
#include <cstdint>

#include "shell/app_block.h"
#include "shell/layout.h"
#include "shell/messages.h"
#include "tuner/audio.h"
#include "tuner/frequency.h"
#include "tuner/wait_cursor.h"

namespace {

constexpr DWORD kAfterSwitch_ms = 100;
// More than any station sends: a list of RDS holds 25.
constexpr std::int32_t kMostAFs = 100;
constexpr int kStoredTextCapacity = 100;
using AFTable = WCHAR[kMostAFs][kStoredTextCapacity];

void ReadAFTexts(AFTable& table, std::int32_t count) {
    for (std::int32_t i = 0; i < count; ++i) {
        WCHAR text[kAFTextCapacity] = {};
        g_app.pFMDevice->GetAFItem(i, text);
        std::copy(text, text + kAFTextCapacity, table[i]);
    }
}

std::uint32_t FindBest(const AFTable& table, std::int32_t count) {
    std::uint32_t best = 0;
    std::int32_t bestSignal = 0;
    for (std::int32_t i = 0; i < count; ++i) {
        const std::uint32_t channel = ChannelFromAFText(table[i]);
        std::int32_t signal = 0;
        g_app.pFMDevice->SetChannel(channel);
        g_app.pFMDevice->GetSignal(&signal);
        if (i > 0 && signal <= bestSignal) continue;
        best = channel;
        bestSignal = signal;
    }
    return best;
}

void TuneToBest(HWND window, std::int32_t count) {
    const WaitCursor wait;
    AFTable table = {};
    ReadAFTexts(table, count);
    const std::uint32_t best = FindBest(table, count);
    NKDbgPrintfW(L"\nCurrent MAX Frequency: %d\n", best);
    g_app.pFMDevice->SetChannel(best);
    UpdateMainScreen(window);
}

}  // namespace

bool SwitchToBestAF(HWND window) {
    std::int32_t count = 0;
    g_app.pFMDevice->GetAFCount(&count);
    if (count <= 0) return false;
    MuteOnOff(TRUE);
    TuneToBest(window, std::min(count, kMostAFs));
    MuteOnOff(FALSE);
    PostMessageW(window, WM_AF_SWITCHED, 0, 0);
    Sleep(kAfterSwitch_ms);
    return true;
}
