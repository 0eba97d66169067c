#include "handset/coredll/windows/top_bar_state.h"

#include <algorithm>
#include <cstring>
#include <cwchar>
#include <iterator>

#include "handset/state/handset_state.h"
#include "handset/state/phone_status.h"
#include "handset/state/stored_value.h"

extern "C" void WINAPI DeviceGetLocalTime(SYSTEMTIME* time);

namespace coredll {
namespace {

constexpr DWORD kAnyCall = handset::kPhoneIncoming | handset::kPhoneCalling | handset::kPhoneTalking;
constexpr DWORD kFullSignal_percent = 100;

DWORD Published(const wchar_t* key, const wchar_t* name, DWORD fallback) {
    const auto value =
        handset::ReadStoredValue(handset::DeviceRegistryRootPath(HKEY_LOCAL_MACHINE) + key, name);
    DWORD number = 0;
    if (!value || value->type != REG_DWORD || value->data.size() != sizeof number) return fallback;
    std::memcpy(&number, value->data.data(), sizeof number);
    return number;
}

std::wstring ClockText() {
    SYSTEMTIME now = {};
    DeviceGetLocalTime(&now);
    wchar_t text[8] = {};
    std::swprintf(text, std::size(text), L"%u:%02u", static_cast<unsigned>(now.wHour),
                  static_cast<unsigned>(now.wMinute));
    return text;
}

// Any reception at all is one bar.
int BarsOf(DWORD percent) {
    const auto capped = static_cast<int>(std::min(percent, kFullSignal_percent));
    return (capped * kSignalBars + static_cast<int>(kFullSignal_percent) - 1) /
           static_cast<int>(kFullSignal_percent);
}

}  // namespace

TopBarState CurrentTopBarState() {
    constexpr wchar_t kPhone[] = L"\\System\\State\\Phone";
    TopBarState state = {};
    state.clock = ClockText();
    state.signal_bars = BarsOf(Published(kPhone, L"Signal Strength", kFullSignal_percent));
    state.headset = Published(L"\\System\\State\\Hardware", L"Headset", 0) != 0;
    state.call = (Published(kPhone, L"Status", 0) & kAnyCall) != 0;
    return state;
}

}  // namespace coredll
