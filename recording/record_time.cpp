#include "recording/record_time.h"

#include <strsafe.h>

#include "recording/capture_recorder.h"
#include "recording/free_space.h"
#include "resources/resource_ids.h"
#include "shell/main_state.h"
#include "shell/messages.h"
#include "shell/owned.h"
#include "skin/skin_paint.h"

namespace {

constexpr DWORD kShowPeriod_ms = 500;

// Guards m_pRecorder against its end while the thread asks it for the time, and the field on the screen
// against a time that comes after it was cleared.
class RecorderLock {
  public:
    RecorderLock() { EnterCriticalSection(&Section()); }
    ~RecorderLock() { LeaveCriticalSection(&Section()); }
    RecorderLock(const RecorderLock&) = delete;
    RecorderLock& operator=(const RecorderLock&) = delete;

  private:
    static CRITICAL_SECTION& Section() {
        static Made section;
        return section.section;
    }
    struct Made {
        Made() { InitializeCriticalSection(&section); }
        CRITICAL_SECTION section;
    };
};

void ShowTime(CMainState& state, DWORD elapsed_ms) {
    const DWORD s = elapsed_ms / 1000;
    WCHAR text[32];
    StringCchPrintfW(text, ARRAYSIZE(text), L"Rec %02d:%02d:%02d", s / 3600, s % 3600 / 60, s % 60);
    // Half of the time it stands there already.
    ShowSkinText(state.m_skin, TEXT_RECORD_TIME, text);
}

// False when the recording of that number is over.
bool ShowRecordTime(CMainState& state, DWORD recording) {
    const RecorderLock lock;
    if (state.m_pRecorder == nullptr || state.m_dwRecordings != recording || !state.m_bRecording)
        return false;
    DWORD elapsed_ms = 0;
    state.m_pRecorder->ElapsedMs(&elapsed_ms);
    ShowTime(state, elapsed_ms);
    return true;
}

DWORD WINAPI RecordTimeThread(LPVOID parameter) {
    auto& state = *static_cast<CMainState*>(parameter);
    const HWND window = state.m_skin.hWnd;
    const DWORD recording = state.m_dwRecordings;
    while (WaitForSingleObject(state.m_hStopRecordEvent, kShowPeriod_ms) == WAIT_TIMEOUT) {
        // The next recording takes the stop event's signal back, if it starts soon enough.
        if (!ShowRecordTime(state, recording)) break;
        if (FreeSpaceBytes() >= kLeastFreeSpace_bytes) continue;
        SendMessageW(window, WM_SKIN_CLICK, SKIN_STOP_RECORD, 0);
        ShowInsufficientSpace(window);
    }
    return 0;
}

}  // namespace

void StartRecordTime(CMainState& state) {
    ++state.m_dwRecordings;
    const OwnedHandle thread(CreateThread(nullptr, 0, RecordTimeThread, &state, 0, nullptr));
}

void EndRecordTime(CMainState& state) {
    const RecorderLock lock;
    state.m_bRecording = FALSE;
    DrawSkinText(state.m_skin, TEXT_RECORD_TIME, L"");
}

void DiscardRecorder(CMainState& state) {
    const RecorderLock lock;
    delete state.m_pRecorder;
    state.m_pRecorder = nullptr;
}
