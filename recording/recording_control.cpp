#include "recording/recording_control.h"

#include <cwchar>
#include <new>

#include <strsafe.h>

#include "recording/capture_recorder.h"
#include "recording/free_space.h"
#include "recording/pre_record.h"
#include "recording/record_name.h"
#include "recording/record_screen.h"
#include "recording/record_settings.h"
#include "recording/record_time.h"
#include "recording/storage_card.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/messages.h"
#include "shell/settings_key.h"
#include "shell/texts.h"
#include "skin/skin_access.h"
#include "skin/skin_paint.h"

namespace {

constexpr int kRecording = 2;
constexpr DWORD kAfterRequest_ms = 100;

// A format of the string table with a path filled in.
struct PathText {
    PathText(UINT textId, const WCHAR* fallback, const WCHAR* path) {
        const ResourceText format(textId);
        StringCchPrintfW(sz, ARRAYSIZE(sz), format.sz[0] != L'\0' ? format.sz : fallback, path);
    }
    WCHAR sz[ARRAYSIZE(ResourceText::sz) + kRecordPathCapacity];
};

// False, after a word to the user, for a name on a card that is not in.
bool CheckPath(HWND owner, const WCHAR* path) {
    if (FileExists(kStorageCard) || wcsstr(path, L"Storage Card") == nullptr) {
        NKDbgPrintfW(L"Path OK(%.90s) can Record! \r\n", path);
        return true;
    }
    NKDbgPrintfW(L"Path error(%.90s) ! Can't RECORD \r\n", path);
    MessageBoxW(owner, PathText(IDS_PATH_ERROR, L"Path error(%s)!", path).sz, L"Warning", MB_ICONEXCLAMATION);
    return false;
}

bool NameRecording(CMainState& state, HWND owner, const RecordFormat& format) {
    if (ReadSetting(kSaveFileType) == 0) {
        MakeAutomaticName(state.m_szRecordPath, format.pszExtension);
        return true;
    }
    MakeDefinedName(state.m_szRecordPath, format.pszExtension);
    return CheckPath(owner, state.m_szRecordPath);
}

bool MayWrite(HWND owner, const WCHAR* path, BOOL silent) {
    if (silent || !FileExists(path)) return true;
    return MessageBoxW(owner, PathText(IDS_FILE_EXISTS, L"%s", path).sz, L"FM", MB_YESNO | MB_ICONQUESTION) ==
           IDYES;
}

void RunRecorder(CMainState& state, DWORD format) {
    if (state.m_pRecorder == nullptr) state.m_pRecorder = new (std::nothrow) CaptureRecorder(format);
    if (state.m_pRecorder == nullptr) return;
    // Kept: the recorder has built its graph once already.
    state.m_pRecorder->BuildCaptureGraph();
    state.m_pRecorder->BuildOutputChain(state.m_szRecordPath);
    state.m_pRecorder->StartCapture();
    ResetEvent(state.m_hStopRecordEvent);
    StartRecordTime(state);
}

void StartRecording(CMainState& state, HWND owner, BOOL silent) {
    if (FreeSpaceBytes() < kLeastFreeSpace_bytes) {
        ShowInsufficientSpace(owner);
        PutRecordButtonOut(state);
        RepaintRecordButton(state);
        return;
    }
    LockScreen(state);
    const RecordFormat& format = ReadRecordFormat();
    if (!NameRecording(state, owner, format)) {
        UnlockScreen(state);
        EnableScanCommand(TRUE);
        return;
    }
    if (!MayWrite(owner, state.m_szRecordPath, silent)) {
        // Kept: the scan command stays grey after this answer.
        UnlockScreen(state);
        return;
    }
    g_app.bRecordingActive = 1;
    ShowWindow(state.m_hListView, SW_HIDE);
    RunRecorder(state, format.dwFormat);
}

void EndRecorder(CMainState& state, HWND owner, BOOL bByPreRecord) {
    EndPreRecordWait();
    SetEvent(state.m_hStopRecordEvent);
    state.m_pRecorder->StopCapture();
    state.m_pRecorder->ReleaseAll();
    DiscardRecorder(state);
    const PathText saved(IDS_RECORD_SAVED, L"%s", state.m_szRecordPath);
    if (!bByPreRecord) MessageBoxW(owner, saved.sz, L"FM", MB_OK);
}

}  // namespace

void StartOrStopRecording(CMainState& state, HWND owner, BOOL silent) {
    int button = 0;
    GetButtonFrame(state.m_skin, SKIN_RECORD, &button);
    NKDbgPrintfW(L"[FM_EnCoder]iIndex : %d\n", button);
    if (button == kRecording) {
        StartRecording(state, owner, silent);
    } else {
        stop_record(state, owner, silent);
    }
}

void stop_record(CMainState& state, HWND owner, BOOL bByPreRecord) {
    NKDbgPrintfW(L"FM: stop_record: bByPreRecord = %d\n", bByPreRecord);
    UnlockScreen(state);
    EnableScanCommand(TRUE);
    InvalidateRect(state.m_skin.hWnd, nullptr, TRUE);
    if (state.m_pRecorder != nullptr) EndRecorder(state, owner, bByPreRecord);
    g_app.bRecordingActive = 0;
    // Not before: the look into the list takes its time, in which the file would grow.
    ShowStatusText(state);
}

void RequestStopRecording(CMainState& state) {
    const HWND window = state.m_skin.hWnd;
    PutRecordButtonOut(state);
    InvalidateRect(window, nullptr, TRUE);
    PostMessageW(window, WM_SKIN_CLICK, SKIN_RECORD, 0);
    Sleep(kAfterRequest_ms);
}
