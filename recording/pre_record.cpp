#include "recording/pre_record.h"

#include "resources/resource_ids.h"
#include "shell/main_state.h"
#include "shell/messages.h"
#include "shell/owned.h"
#include "skin/skin_access.h"

namespace {

constexpr WCHAR kStopEvent[] = L"Stop_PreRecord";
constexpr DWORD kSettling_ms = 5000;  // tuner and main screen after the start
constexpr DWORD kMinute_ms = 60000;
constexpr DWORD kPosted_ms = 100;
constexpr LPARAM kSilent = -1;
constexpr int kIdle = 0;
constexpr int kRecording = 2;

void SetRecordButton(CMainState& state, HWND window, int frame) {
    SetButtonFrame(state.m_skin, SKIN_RECORD, frame);
    InvalidateRect(window, nullptr, TRUE);
}

}  // namespace

DWORD WINAPI PreRecordThread(LPVOID mainWindow) {
    const auto window = static_cast<HWND>(mainWindow);
    CMainState* state = MainStateOf(window);
    if (state == nullptr) return 1;
    Sleep(kSettling_ms);
    SetRecordButton(*state, window, kRecording);
    SendMessageW(window, WM_SKIN_CLICK, SKIN_RECORD, kSilent);

    // Kept: the event is made after the start, so a recording that ends in that very moment is not noticed
    // here.
    const OwnedHandle stop(CreateEventW(nullptr, FALSE, FALSE, kStopEvent));
    if (WaitForSingleObject(stop.get(), state->m_request.uDuration_min * kMinute_ms) == WAIT_TIMEOUT) {
        NKDbgPrintfW(L"** Pre-Record Time Out **\n");
        SetRecordButton(*state, window, kIdle);
        PostMessageW(window, WM_SKIN_CLICK, SKIN_RECORD, kSilent);
        Sleep(kPosted_ms);
        PostMessageW(window, WM_CLOSE, 0, 0);
    }
    Sleep(kPosted_ms);
    return 1;
}

void EndPreRecordWait() {
    // Kept: this handle stays open.
    const HANDLE stop = OwnedHandle(OpenEventW(EVENT_ALL_ACCESS, FALSE, kStopEvent)).release();
    if (stop != nullptr) SetEvent(stop);
}
