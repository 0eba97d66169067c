// The main state object: one per process, made by WinMain before the window exists and never deleted. The
// main window keeps its pointer in GWL_USERDATA; every handler reaches it from there.
#pragma once

#include <windows.h>

#include <regext.h>
#include <cstdint>

#include "channels/channel_db.h"
#include "recording/record_name.h"
#include "schedule/command_line.h"
#include "skin/skin.h"
#include "tuner/auto_scan.h"

class CaptureRecorder;

class CMainState {
  public:
    // `tables` are the main screen's (skin/skin_tables.h). Their bitmaps are loaded here.
    CMainState(HINSTANCE hInstance, const SkinTables& tables);
    CMainState(const CMainState&) = delete;
    CMainState& operator=(const CMainState&) = delete;

    // What the user did on the skin: WM_SKIN_SLIDER, WM_SKIN_REPEAT and WM_SKIN_CLICK. The first virtual
    // operation, by which the window procedure calls it. Defined in control_handler.cpp.
    virtual LRESULT OnControl(HWND window, UINT message, WPARAM wParam, LPARAM lParam);
    virtual ~CMainState() = default;

    CChannelDB m_ChannelDB;  // fills the list at the start, and is the scan's from then on
    HINSTANCE m_hInstance;
    CSkin m_skin;

    // Tuning and sound (tuner/). The four words start at 0.
    BOOL m_bSpeakerSelected = FALSE;  // the selector stands on the loudspeaker
    BOOL m_BTInUse = FALSE;           // sound goes to a Bluetooth link; nothing sets it to 1 yet
    BOOL m_bMuted = FALSE;            // the mute toggle is on
    BOOL m_bMutedByCall = FALSE;
    BOOL m_bDigitSinceTick = FALSE;        // a digit was typed since the digit timer's last tick
    std::uint32_t m_uSelectedChannel = 0;  // frequency of the list row that waits to be tuned

    // Recording (recording/).
    BOOL m_bRecording = FALSE;               // keys are ignored while it is set
    HANDLE m_hStopRecordEvent;               // auto-reset, made with this object
    CaptureRecorder* m_pRecorder = nullptr;  // null when nothing is recorded
    RecordPath m_szRecordPath = L"";         // full name of the file being written
    DWORD m_dwRecordings = 0;                // made since the start

    // Worker threads and what stops them (both events auto-reset, made by the creation handler).
    HANDLE m_hMutex = nullptr;  // "MyMutex", from the start of an automatic scan on
    ScanThread m_scan;
    HANDLE m_hPowerThread = nullptr;
    HANDLE m_hPowerStopEvent = nullptr;
    HANDLE m_hMonitorThread = nullptr;
    HANDLE m_hMonitorStopEvent = nullptr;

    // Registry notifications.
    HREGNOTIFY m_hHeadsetNotify = nullptr;
    HREGNOTIFY m_hPhoneNotify = nullptr;

    // Windows and their drawing objects.
    HWND m_hMenuBar = nullptr;
    HWND m_hListView = nullptr;
    HBITMAP m_hListBackground = nullptr;
    UINT m_uListBackgroundId = 0;  // of the resource that it shows; a turned screen has another one
    HFONT m_hListFont = nullptr;

    CommandLineRequest m_request = {};  // what a scheduled start asked for
};

// The main state of the main window; null before its creation handler ran.
CMainState* MainStateOf(HWND window);
