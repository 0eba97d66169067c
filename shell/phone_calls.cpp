#include "shell/phone_calls.h"

#include <cwchar>

#include "recording/recording_control.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/messages.h"
#include "shell/owned.h"
#include "tuner/audio.h"

namespace {

// Bits of "Status", as the platform's state store has them.
constexpr DWORD kIncomingCall = 0x00010000;
constexpr DWORD kCalling = 0x00020000;
constexpr DWORD kTalking = 0x20000000;

constexpr WCHAR kPhoneKey[] = L"\\System\\State\\Phone";
constexpr WCHAR kCallerNumber[] = L"Caller Number";
constexpr DWORD kNumberSize = 100;  // bytes

constexpr DWORD kUnmutePulse_ms = 100;
constexpr DWORD kBluetoothPause_ms = 1000;

struct CallerNumber {
    WCHAR sz[kNumberSize / sizeof(WCHAR) + 1];
};

bool ReadCallerNumber(CallerNumber& number) {
    OwnedKey key;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE, kPhoneKey, 0, KEY_READ, key.put()) != ERROR_SUCCESS) return false;
    DWORD size = kNumberSize;
    return RegQueryValueExW(key.get(), kCallerNumber, nullptr, nullptr, reinterpret_cast<BYTE*>(number.sz),
                            &size) == ERROR_SUCCESS;
}

void RouteToBluetooth(BOOL on) {
    if (g_app.pFMDevice != nullptr) g_app.pFMDevice->SetBTAudio(on);
}

void MuteForCall(CMainState& state) {
    NKDbgPrintfW(L"FM: Mute Sound................m_BTInUse: %d\r\n", state.m_BTInUse);
    if (state.m_BTInUse) RouteToBluetooth(FALSE);
    MuteOnOff(TRUE);
}

void StopRecording(CMainState& state) {
    if (state.m_bRecording) RequestStopRecording(state);
}

void OnIncomingCall(CMainState& state, HWND) {
    NKDbgPrintfW(L"FM: 1.dwRegKeyMask & SN_PHONEINCOMINGCALL_BITMASK\r\n");
    if (!state.m_bMutedByCall) {
        MuteForCall(state);
        StopRecording(state);
    }
    state.m_bMutedByCall = TRUE;
}

void OnOutgoingCall(CMainState& state, HWND) {
    NKDbgPrintfW(L"FM: 2.SN_PHONECALLCALLING_BITMASK & dwRegKeyMask\r\n");
    CallerNumber number = {};
    if (!ReadCallerNumber(number)) {
        // Kept: what an earlier status muted is then not unmuted at the end of the call.
        NKDbgPrintfW(L"FM: No Caller Number\r\n");
        state.m_bMutedByCall = FALSE;
        return;
    }
    NKDbgPrintfW(L"FM: ### Caller Number %.100s\r\n", number.sz);
    if (!state.m_bMutedByCall) MuteForCall(state);
    StopRecording(state);
    state.m_bMutedByCall = TRUE;
}

void OnCallOver(CMainState& state, HWND window) {
    NKDbgPrintfW(L"FM: 3.(dwRegKeyMask & SN_PHONECALLTALKING_BITMASK)\r\n");
    if (!state.m_bMutedByCall) return;
    NKDbgPrintfW(L"FM: UnMute Sound................m_BTInUse: %d\r\n", state.m_BTInUse);
    // The call left the sound path to itself: the mute is set once more before it is taken back.
    MuteOnOff(TRUE);
    Sleep(kUnmutePulse_ms);
    MuteOnOff(FALSE);
    if (state.m_BTInUse) {
        Sleep(kBluetoothPause_ms);
        RouteToBluetooth(TRUE);
    }
    state.m_bMutedByCall = FALSE;
    // The mute toggle is applied as it stands.
    SendMessageW(window, WM_SKIN_CLICK, SKIN_MUTE, 0);
}

// The first row whose bits are as it wants them counts; a call that is talked in matches none.
struct StatusRow {
    DWORD dwMask, dwBits;
    void (*handler)(CMainState&, HWND);
};
constexpr StatusRow kStatus[] = {
    {kIncomingCall, kIncomingCall, OnIncomingCall},
    {kCalling, kCalling, OnOutgoingCall},
    {kTalking, 0, OnCallOver},
};

}  // namespace

void OnPhoneChanged(CMainState& state, HWND window, DWORD status) {
    for (const StatusRow& row : kStatus) {
        if ((status & row.dwMask) != row.dwBits) continue;
        row.handler(state, window);
        return;
    }
}
