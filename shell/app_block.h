// The process-wide application block: one static instance that every folder reads.
#pragma once

#include <windows.h>

#include <aygshell.h>

#include <cstdint>

#include "tuner/digit_entry.h"
#include "tuner/fm_device.h"

class CMainState;

struct ApplicationBlock {
    HINSTANCE hInstance;     // also the module of the templates and strings
    CFMDevice* pFMDevice;    // null before creation and again after shut-down
    CMainState* pMainState;  // the object that the main window keeps in GWL_USERDATA
    HMENU hLeftSoftKeyMenu;
    HMENU hRightSoftKeyMenu;  // holds the sleep-timer items
    DWORD dwSleepStart_s;
    DWORD dwSleepLength_s;  // 0 = off
    DWORD dwSleepLastTick_s;
    BYTE SpeakerOn;               // last value passed to SetSpeaker
    BYTE bRecordingActive;        // a recorder runs
    BYTE bLowSignalMute;          // the volume is at 0 because reception is weak
    std::uint32_t dwSavedVolume;  // percent to go back to after the weak-signal mute
    SHACTIVATEINFO activateInfo;
    DigitEntry digitEntry;
    std::int32_t lLastSignal;  // last level that the monitor thread showed
};

inline ApplicationBlock g_app = {};
