#include "tuner/auto_scan.h"

#include <commctrl.h>
#include <strsafe.h>
#include <cstdio>

#include "channels/channel_db.h"
#include "resources/resource_ids.h"
#include "shell/app_block.h"
#include "shell/main_state.h"
#include "shell/messages.h"
#include "shell/owned.h"
#include "shell/settings_key.h"
#include "shell/texts.h"
#include "shell/worker_threads.h"
#include "skin/skin_paint.h"
#include "tuner/audio.h"
#include "tuner/frequency.h"
#include "tuner/frequency_display.h"

namespace {

constexpr WCHAR kScanMutex[] = L"MyMutex";
// The walk goes on below this; a station on the band's upper edge is still found.
constexpr std::uint32_t kScanEnd_10kHz = 10801;
constexpr std::uint32_t kFailedSeekSkip_10kHz = 100;
constexpr std::uint32_t kBandWidth_10kHz = kBandHighest_10kHz - kBandLowest_10kHz;
constexpr int kProgressSteps = 10;
// A walk that is over sooner has not heard the whole band, and is made again.
constexpr DWORD kShortScan_ms = 10000;
constexpr int kMostScans = 3;
constexpr std::size_t kPrefixCapacity = 100;
// A box that the scan shows while the program waits for its end is answered after this time at the latest.
constexpr DWORD kLookForBoxes_ms = 50;

// What a station that was found before the scan may still show.
constexpr int kLabelsOfTheStation[] = {TEXT_STEREO,     TEXT_PROGRAM_TYPE, TEXT_PROGRAM_TEXT,
                                       TEXT_RADIO_TEXT, TEXT_RDS,          TEXT_SERVICE_NAME};

// Two digits at least, a leading zero turned into a blank.
struct NumberText {
    WCHAR sz[16] = L"";
    explicit NumberText(int number) {
        StringCchPrintfW(sz, ARRAYSIZE(sz), L"%02d", number);
        for (WCHAR* digit = sz; *digit == L'0'; ++digit) *digit = L' ';
    }
};

std::uint32_t SkipAfterFailedSeek(std::uint32_t current) {
    current += kFailedSeekSkip_10kHz;
    NKDbgPrintfW(L"FM: *** CFMDevice_SeekNext Error, Skip to %d\n", current);
    g_app.pFMDevice->SetChannel(current);
    return current;
}

PropRecord FoundRecord(const WCHAR* group, const WCHAR* prefix, int number, std::uint32_t channel) {
    PropRecord record = {};
    // Kept: the group's name is copied as a format, so a "%" in it is interpreted.
    StringCchPrintfW(record.szCountryName, kChannelTextCapacity, group);
    FormatScannedName(prefix, number, record.szPropRecord_ChannelName, kChannelTextCapacity);
    record.dwPropRecord_ChannelValue = channel;
    return record;
}

void StoreFound(CMainState& state, const PropRecord& record, const WCHAR* prefix, int number) {
    if (state.m_ChannelDB.CEDB_InsertRecord(record) != 0) return;
    NKDbgPrintfW(L"FM: InsertRecord: szChannel = %.16s%.4s, szCountryName = %.27s, uCurrentChannel = %d\n",
                 prefix, NumberText(number).sz, record.szCountryName, record.dwPropRecord_ChannelValue);
    NKDbgPrintfW(L"FM: *** CEDB_InsertRecord() Error!\n");
}

void ShowLevel(CMainState& state, int level) {
    state.m_scan.nLevel = level;
    DrawScanProgress(state.m_skin, level);
}

void ShowProgress(CMainState& state, std::uint32_t channel) {
    constexpr WCHAR kSearching[] = L"Searching...";
    DrawSkinText(state.m_skin, TEXT_CHANNEL_NAME, kSearching);
    DrawSkinText(state.m_skin, TEXT_FREQUENCY, ScreenFrequencyText(channel).sz);
    DrawDial(state.m_skin, channel, PlainFrequencyText(channel).sz, kSearching);
    ShowLevel(state, static_cast<int>((channel - kBandLowest_10kHz) * kProgressSteps / kBandWidth_10kHz));
}

void Walk(CMainState& state, const WCHAR* group, const WCHAR* prefix) {
    std::uint32_t current = kBandLowest_10kHz;
    auto last = static_cast<WORD>(current);
    int number = 0;
    while (current < kScanEnd_10kHz && !state.m_scan.bEndNow) {
        NKDbgPrintfW(L"FM: Scanning Channel: %d\n", last);
        if (g_app.pFMDevice->SeekNext() != 0) {
            current = SkipAfterFailedSeek(current);
        } else {
            g_app.pFMDevice->GetChannel(&current);
            if (last > current) {
                NKDbgPrintfW(L"FM: ulastChannel =%d, uCurrentChannel = %d", last, current);
                NKDbgPrintfW(L"FM: *** ulastChannel > uCurrentChannel!\n");
                break;
            }
            ++number;
            StoreFound(state, FoundRecord(group, prefix, number, current), prefix, number);
            ShowProgress(state, current);
        }
        last = static_cast<WORD>(current);
    }
}

// 1 when a walk was made, 0 when the selected group could not be read.
int ScanOnce(CMainState& state) {
    WCHAR group[kGroupNameCapacity] = L"";
    if (!ReadSelectedGroup(group, kGroupNameCapacity)) {
        NKDbgPrintfW(L"FM: *** Unable to get REGKEY_CURRENT_COUNTRY!\n");
        return 0;
    }
    SendMessageW(state.m_hListView, LVM_DELETEALLITEMS, 0, 0);
    // The window may have been closed before it answered: what is stored by now stays.
    if (state.m_scan.bEndNow) return 1;
    state.m_ChannelDB.CEDB_DeleteGroup(kEmptyGroup, group);
    if (g_app.pFMDevice->SetChannel(kBandLowest_10kHz) != 0) {
        NKDbgPrintfW(L"FM: *** CFMDevice_SetChannel Error.\n");
    }
    ShowLevel(state, 0);
    for (const int label : kLabelsOfTheStation) DrawSkinText(state.m_skin, label, L"");
    // The radio text's field reaches over the bar and the percentage.
    RepaintScanProgress(state);

    WCHAR prefix[kPrefixCapacity] = L"Channel";
    LoadStringW(g_app.hInstance, IDS_CHANNEL_PREFIX, prefix, static_cast<int>(kPrefixCapacity));
    Walk(state, group, prefix);
    ShowLevel(state, kProgressSteps);
    return 1;
}

void ScanUntilLongEnough(CMainState& state) {
    NKDbgPrintfW(L"FM: Start Auto Scan Channels.\n");
    for (int run = 1; run <= kMostScans && !state.m_scan.bEndNow; ++run) {
        const DWORD start = GetTickCount();
        ScanOnce(state);
        // Right also when the count has begun anew meanwhile.
        const DWORD elapsed = GetTickCount() - start;
        NKDbgPrintfW(L"FM: Auto Scan Elapsed = %d\n", elapsed);
        if (elapsed > kShortScan_ms) break;
    }
}

void SelectFirstRow(HWND list) {
    LVITEMW item = {};
    item.state = LVIS_SELECTED | LVIS_FOCUSED;
    item.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    SendMessageW(list, LVM_SETITEMSTATE, 0, reinterpret_cast<LPARAM>(&item));
}

void AskAndScan(CMainState& state, HWND window) {
    MuteOnOff(TRUE);
    SuspendWorker(state.m_hMonitorThread);
    ShowWindow(state.m_hListView, SW_HIDE);
    if (ShowTexts(window, IDS_QUESTION_TEXT, IDS_QUESTION_CAPTION, MB_OKCANCEL | MB_ICONQUESTION) != IDOK)
        return;
    ScanUntilLongEnough(state);
    if (!state.m_scan.bEndNow) {
        ShowText(window, IDS_SCAN_FINISHED, L"FM", MB_OK);
        SelectFirstRow(state.m_hListView);
        state.m_scan.nLevel = -1;
        InvalidateRect(window, nullptr, TRUE);
    }
    NKDbgPrintfW(L"FM: End Auto Scan Channels.\n");
}

DWORD WINAPI ScanStarterProc(LPVOID parameter) {
    auto& state = *static_cast<CMainState*>(parameter);
    const HWND window = state.m_skin.hWnd;
    // Kept: the main state keeps the handle after it was closed; shut-down meets it again, to no effect.
    state.m_hMutex = CreateMutexW(nullptr, FALSE, kScanMutex);
    const bool alone = state.m_hMutex != nullptr && GetLastError() != ERROR_ALREADY_EXISTS;
    state.m_scan.bMutexOpen = state.m_hMutex != nullptr;
    if (alone && !state.m_scan.bEndNow) AskAndScan(state, window);
    ReleaseScanMutex(state);
    // Before the window is told: it may start another scan at once. From here on nothing of the radio is
    // touched.
    EventModify(state.m_scan.hOver, EVENT_SET);
    PostMessageW(window, WM_AUTOSCAN_FINISHED, 0, 0);
    return 0;
}

bool StartThread(CMainState& state) {
    ScanThread& scan = state.m_scan;
    if (scan.hOver == nullptr) scan.hOver = CreateEventW(nullptr, TRUE, TRUE, nullptr);
    if (scan.hOver == nullptr) return false;
    EventModify(scan.hOver, EVENT_RESET);
    const OwnedHandle thread(CreateThread(nullptr, 0, ScanStarterProc, &state, 0, &scan.dwId));
    if (!thread) EventModify(scan.hOver, EVENT_SET);
    return static_cast<bool>(thread);
}

// For EnumWindows, with the scan's thread.
BOOL CALLBACK AnswerBox(HWND window, LPARAM thread) {
    if (GetWindowThreadProcessId(window, nullptr) != static_cast<DWORD>(thread)) return TRUE;
    for (const int button : {IDCANCEL, IDOK}) {
        if (GetDlgItem(window, button) == nullptr) continue;
        PostMessageW(window, WM_COMMAND, static_cast<WPARAM>(button), 0);
        break;
    }
    return TRUE;
}

}  // namespace

void FormatScannedName(const WCHAR* prefix, int number, WCHAR* name, std::size_t capacity) {
    StringCchPrintfW(name, capacity, L"%s %s", prefix, NumberText(number).sz);
}

void StartAutoScan(CMainState& state, HWND window) {
    DrawSkinText(state.m_skin, TEXT_CHANNEL_NAME, L"");
    if (StartThread(state)) {
        EnableWindow(window, FALSE);
    } else {
        RefreshFrequencyDisplay(state);
    }
}

void RepaintScanProgress(CMainState& state) {
    DrawScanProgress(state.m_skin, state.m_scan.nLevel);
}

void EndAutoScan(CMainState& state) {
    ScanThread& scan = state.m_scan;
    scan.bEndNow = true;
    if (scan.hOver == nullptr) return;
    do {
        // The window is being destroyed, and takes with it only those boxes that its own thread shows.
        EnumWindows(AnswerBox, static_cast<LPARAM>(scan.dwId));
    } while (!WaitAnswering(scan.hOver, kLookForBoxes_ms));
    CloseHandle(scan.hOver);
    scan.hOver = nullptr;
}

void ReleaseScanMutex(CMainState& state) {
    if (!state.m_scan.bMutexOpen.exchange(false)) return;
    ReleaseMutex(state.m_hMutex);
    CloseHandle(state.m_hMutex);
}
